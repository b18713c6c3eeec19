#include "toolkit/interchange/otio/Document.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "session/json/LoneSurrogates.h"
#include "session/json/MessageText.h"
#include "toolkit/interchange/Failure.h"

namespace toolkit::interchange::otio {
namespace {

[[noreturn]] void RefuseText(const std::filesystem::path& file, std::string_view text,
                             std::size_t offset, const std::string& what) {
    const std::string_view before = text.substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1;
    throw Failure({.file = file.string(),
                   .line = static_cast<std::uint64_t>(std::ranges::count(before, '\n')) + 1,
                   .column = before.size() - lineStart + 1,
                   .what = what});
}

/// Prepares a text for the JSON library in one pass: checks its size, and replaces what the library
/// refuses.
class Preparation {
public:
    Preparation(std::string_view text, const std::filesystem::path& file,
                const DocumentLimits& limits)
        : text_(text), file_(file), limits_(limits) {
        prepared_.reserve(text.size() + 1);
    }

    std::string Run() {
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        at_ = text_.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
        while (at_ < text_.size()) {
            Step(text_[at_]);
        }
        return std::move(prepared_);
    }

private:
    void Step(char c) {
        switch (c) {
            case '"':
                TakeText();
                return;
            case '[':
            case '{':
                Refuse(++depth_ > limits_.depth, "levels of nesting", limits_.depth);
                [[fallthrough]];
            case ',':
                Refuse(++values_ > limits_.values, "values", limits_.values);
                break;
            case ']':
            case '}':
                depth_ -= depth_ > 0 ? 1 : 0;
                break;
            case 'N':
            case 'I':
            case '-':
                if (TakeNoNumber()) {
                    return;
                }
                break;
            default:
                break;
        }
        prepared_ += c;
        ++at_;
    }

    void Refuse(bool isTooMuch, std::string_view what, std::size_t limit) {
        if (isTooMuch) {
            RefuseText(file_, text_, at_, fmt::format("has more than {} {}", limit, what));
        }
    }

    void TakeText() {
        constexpr std::string_view kSpecial = "\"\\\xEF";
        prepared_ += text_[at_++];
        while (true) {
            const std::size_t special = std::min(text_.find_first_of(kSpecial, at_), text_.size());
            prepared_ += text_.substr(at_, special - at_);
            at_ = special;
            if (at_ == text_.size()) {
                return;
            }
            if (text_[at_] == '"') {
                prepared_ += text_[at_++];
                return;
            }
            const auto replaced = orvo::json::ReplaceBegin(text_.substr(at_), true);
            prepared_ += replaced->text;
            at_ += replaced->size;
        }
    }

    bool TakeNoNumber() {
        constexpr std::array<std::string_view, 5> kTokens = {"NaN", "Infinity", "-Infinity", "Inf",
                                                             "-Inf"};
        const auto* const token = std::ranges::find_if(
            kTokens, [this](std::string_view name) { return text_.substr(at_).starts_with(name); });
        if (token == kTokens.end()) {
            return false;
        }
        prepared_ += "null";
        at_ += token->size();
        return true;
    }

    std::string_view text_;
    const std::filesystem::path& file_;
    const DocumentLimits& limits_;
    std::string prepared_;
    std::size_t at_ = 0;
    std::size_t depth_ = 0;
    std::size_t values_ = 0;
};

}  // namespace

ParsedJson ParseDocument(std::string text, const std::filesystem::path& file,
                         const DocumentLimits& limits) {
    if (text.size() > limits.bytes) {
        throw Failure(
            {.file = file.string(),
             .what = fmt::format("has {} bytes; {} are taken", text.size(), limits.bytes)});
    }
    const std::string prepared = Preparation(text, file, limits).Run();
    std::string().swap(text);
    try {
        return ParsedJson::parse(prepared);
    } catch (const ParsedJson::parse_error& error) {
        RefuseText(file, prepared, error.byte == 0 ? 0 : error.byte - 1, "is no JSON");
    } catch (const ParsedJson::exception&) {
        throw Failure({.file = file.string(), .what = "has a number that is too large"});
    }
}

Node::Node(const ParsedJson& value, std::string place, const std::filesystem::path& file)
    : value_(&value), place_(std::move(place)), file_(&file) {
    if (!value.is_object()) {
        Refuse("is no object");
    }
}

std::string_view Node::Schema() const {
    const ParsedJson* const schema = Find("OTIO_SCHEMA");
    if (schema == nullptr || !schema->is_string()) {
        return {};
    }
    const std::string_view name = schema->get_ref<const std::string&>();
    return name.substr(0, name.find('.'));
}

const ParsedJson* Node::Find(std::string_view key) const {
    const auto member = value_->find(key);
    return member != value_->end() && !member->is_null() ? &*member : nullptr;
}

std::optional<Node> Node::Object(std::string_view key) const {
    const ParsedJson* const member = Find(key);
    return member != nullptr
               ? std::optional<Node>(std::in_place, *member,
                                     fmt::format("{}/{}", place_, orvo::json::PointerStep(key)),
                                     *file_)
               : std::nullopt;
}

std::vector<Node> Node::Objects(std::string_view key) const {
    std::vector<Node> nodes;
    const ParsedJson* const list = Find(key);
    if (list == nullptr) {
        return nodes;
    }
    if (!list->is_array()) {
        Refuse(fmt::format("\"{}\" is no list", key));
    }
    nodes.reserve(list->size());
    for (std::size_t i = 0; i < list->size(); ++i) {
        nodes.emplace_back((*list)[i], fmt::format("{}/{}/{}", place_, key, i), *file_);
    }
    return nodes;
}

std::string Node::Text(std::string_view key) const {
    const ParsedJson* const member = Find(key);
    return member != nullptr && member->is_string()
               ? orvo::json::UnmarkedText(member->get_ref<const std::string&>())
               : std::string();
}

bool Node::Flag(std::string_view key) const {
    const ParsedJson* const member = Find(key);
    return member == nullptr || !member->is_boolean() || member->get<bool>();
}

std::optional<double> Node::Number(std::string_view key) const {
    const ParsedJson* const member = Find(key);
    if (member == nullptr || !member->is_number()) {
        return std::nullopt;
    }
    const double number = member->get<double>();
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

void Node::Refuse(const std::string& what) const {
    throw Failure({.file = file_->string(),
                   .what = fmt::format("{}: {}", place_.empty() ? "/" : place_, what)});
}

std::optional<long double> SamplesOf(const Node& time, const Rate& samples) {
    const std::optional<double> value = time.Number("value");
    const std::optional<double> rate = time.Number("rate");
    if (!value || !rate) {
        time.Refuse("a time needs a value and a rate that are numbers");
    }
    const std::optional<Rate> counts = Rate::Of(*rate);
    if (!counts) {
        return std::nullopt;
    }
    const long double count = counts->To(samples, static_cast<long double>(*value));
    if (std::abs(count) > static_cast<long double>(kMostCounted)) {
        time.Refuse("the time is too large");
    }
    return count;
}

std::optional<TimeRange> RangeOf(const Node& owner, std::string_view key, const Rate& samples) {
    const std::optional<Node> range = owner.Object(key);
    if (!range) {
        return std::nullopt;
    }
    const std::optional<Node> start = range->Object("start_time");
    const std::optional<Node> duration = range->Object("duration");
    if (!start || !duration) {
        range->Refuse("a range needs a start_time and a duration");
    }
    const std::optional<long double> startCount = SamplesOf(*start, samples);
    const std::optional<long double> durationCount = SamplesOf(*duration, samples);
    if (!startCount || !durationCount) {
        return std::nullopt;
    }
    if (*durationCount < 0) {
        duration->Refuse("the duration is negative");
    }
    return TimeRange{.start = *startCount, .duration = *durationCount};
}

}  // namespace toolkit::interchange::otio
