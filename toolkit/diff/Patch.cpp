#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <orvo/Diff.h>
#include "session/Schema.h"
#include "session/json/Defaults.h"
#include "session/json/Encode.h"
#include "toolkit/diff/Order.h"

namespace orvo {
namespace {

/// Whether two values have the same JSON.
template <class Value>
bool IsSame(const Value& one, const Value& other) {
    if constexpr (std::is_floating_point_v<Value>) {
        return (one == other && std::signbit(one) == std::signbit(other)) ||
               (std::isnan(one) && std::isnan(other));
    } else {
        return one == other;
    }
}

template <class Element>
concept HasId = requires(const Element& element) {
    element.id;
};

class Patch {
public:
    std::string Take() { return text_.empty() ? "[]" : "[\n" + text_ + "\n]"; }

    template <class Value>
    void Compare(const Value& one, const Value& other) {
        if (!IsSame(one, other)) {
            Put("replace", other);
        }
    }

    void Compare(const std::vector<std::uint8_t>& one, const std::vector<std::uint8_t>& other) {
        if (one != other) {
            Put("replace", other);
        }
    }

    template <HasSchema Struct>
    void Compare(const Struct& one, const Struct& other) {
        ForEachRow<Struct>([&](const auto& row) {
            CompareMember(row.key, one.*row.member, other.*row.member,
                          json::DefaultOf<Struct>().*row.member);
        });
    }

    template <class Held>
    void Compare(const std::optional<Held>& one, const std::optional<Held>& other) {
        if (one && other) {
            Compare(*one, *other);
        } else if (one || other) {
            Put("replace", other);
        }
    }

    template <class Held>
    void Compare(const std::map<std::uint32_t, Held>& one,
                 const std::map<std::uint32_t, Held>& other) {
        for (const auto& [number, value] : one) {
            const Step step(*this, std::to_string(number));
            if (const auto found = other.find(number); found != other.end()) {
                Compare(value, found->second);
            } else {
                Remove();
            }
        }
        for (const auto& [number, value] : other) {
            if (!one.contains(number)) {
                const Step step(*this, std::to_string(number));
                Put("add", value);
            }
        }
    }

    template <class Element>
    void Compare(const std::vector<Element>& one, const std::vector<Element>& other) {
        if constexpr (HasId<Element>) {
            if (CompareById(one, other)) {
                return;
            }
        }
        CompareInPlace(one, other);
    }

private:
    /// Makes the path longer as long as it lives.
    class Step {
    public:
        Step(Patch& patch, std::string_view key) : path_(patch.path_), length_(path_.size()) {
            path_ += '/';
            path_ += key;
        }
        Step(Patch& patch, std::size_t index) : Step(patch, std::to_string(index)) {}
        ~Step() { path_.resize(length_); }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        std::string& path_;
        std::size_t length_;
    };

    /// A member at its default may be left out of the JSON, so what is in it cannot be addressed,
    /// and the member cannot be replaced. Adding it does both.
    template <class Member>
    void CompareMember(std::string_view key, const Member& one, const Member& other,
                       const Member& standard) {
        const Step step(*this, key);
        if (!json::IsDefault(one, standard)) {
            Compare(one, other);
        } else if (!json::IsDefault(other, standard)) {
            Put("add", other);
        }
    }

    /// Elements that keep their order by id stay; others are removed and added.
    /// @return whether the ids are good for that
    template <class Element>
    bool CompareById(const std::vector<Element>& one, const std::vector<Element>& other) {
        using Id = decltype(Element::id);
        std::unordered_map<Id, std::size_t> places;
        for (std::size_t i = 0; i < other.size(); ++i) {
            if (!places.emplace(other[i].id, i).second) {
                return false;
            }
        }
        std::vector<std::size_t> known;
        std::vector<std::size_t> sequence;
        std::unordered_map<Id, std::size_t> seen;
        for (std::size_t i = 0; i < one.size(); ++i) {
            if (!seen.emplace(one[i].id, i).second) {
                return false;
            }
            if (const auto found = places.find(one[i].id); found != places.end()) {
                known.push_back(i);
                sequence.push_back(found->second);
            }
        }
        if (known.empty()) {
            return false;
        }
        ComparePairs(one, other, known, sequence);
        return true;
    }

    template <class Element>
    void ComparePairs(const std::vector<Element>& one, const std::vector<Element>& other,
                      const std::vector<std::size_t>& known,
                      const std::vector<std::size_t>& sequence) {
        std::vector<std::optional<std::size_t>> partner(other.size());
        std::vector<bool> stays(one.size());
        const std::vector<bool> keeps = diff::KeepsOrder(sequence);
        for (std::size_t i = 0; i < known.size(); ++i) {
            if (keeps[i]) {
                stays[known[i]] = true;
                partner[sequence[i]] = known[i];
            }
        }
        for (std::size_t i = one.size(); i-- > 0;) {
            if (!stays[i]) {
                const Step step(*this, i);
                Remove();
            }
        }
        for (std::size_t i = 0; i < other.size(); ++i) {
            const Step step(*this, i);
            if (partner[i]) {
                Compare(one[*partner[i]], other[i]);
            } else {
                Put("add", other[i]);
            }
        }
    }

    /// What is alike at both ends stays.
    template <class Element>
    void CompareInPlace(const std::vector<Element>& one, const std::vector<Element>& other) {
        const std::size_t shorter = std::min(one.size(), other.size());
        std::size_t begin = 0;
        while (begin < shorter && IsSame(one[begin], other[begin])) {
            ++begin;
        }
        std::size_t end = 0;
        while (end < shorter - begin &&
               IsSame(one[one.size() - 1 - end], other[other.size() - 1 - end])) {
            ++end;
        }
        for (std::size_t i = begin; i < shorter - end; ++i) {
            const Step step(*this, i);
            Compare(one[i], other[i]);
        }
        for (std::size_t i = one.size() - end; i > shorter - end; --i) {
            const Step step(*this, i - 1);
            Remove();
        }
        for (std::size_t i = shorter - end; i < other.size() - end; ++i) {
            const Step step(*this, i);
            Put("add", other[i]);
        }
    }

    void Begin(std::string_view operation) {
        text_ += text_.empty() ? "  " : ",\n  ";
        text_ += R"({"op": ")";
        text_ += operation;
        text_ += R"(", "path": ")";
        text_ += path_;
        text_ += '"';
    }

    void Remove() {
        Begin("remove");
        text_ += '}';
    }

    template <class Value>
    void Put(std::string_view operation, const Value& value) {
        Begin(operation);
        text_ += R"(, "value": )";
        text_ += json::Encoded(value, {json::JsonWriter::Layout::Compact});
        text_ += '}';
    }

    std::string path_;
    std::string text_;
};

}  // namespace

std::string JsonPatch(const Session& before, const Session& after) {
    Patch patch;
    patch.Compare(before, after);
    return patch.Take();
}

}  // namespace orvo
