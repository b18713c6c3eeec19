#include "session/json/JsonReader.h"

#include <algorithm>
#include <bitset>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "session/json/JsonInput.h"
#include "session/json/LoneSurrogates.h"
#include "session/json/MessageText.h"

namespace orvo::json {
namespace {

/// What the library says of a marked text, without the name of its own error and without the place,
/// which it counts in bytes. It may quote a text or number of any length.
std::string Told(std::string_view message) {
    constexpr std::size_t kLongest = 300;
    const std::size_t place = message.find(", column ");
    const std::size_t front =
        place == message.npos ? message.find("] ") : message.find(": ", place);
    message.remove_prefix(front == message.npos ? 0 : front + 2);
    return Shortened(UnmarkedDocument(message), kLongest);
}

/// An object or a list that has not ended, and where in it the parser is.
class Level {
public:
    explicit Level(const Target& target) : value_(target.value), form_(target.form) {}

    /// The element that begins in a list, or the value of the key of an object.
    Target Next() {
        if (form_->addElement != nullptr) {
            ++elements_;
            next_ = form_->addElement(value_);
        }
        return next_;
    }

    /// @throws WrongValue
    void Begin(std::string& key) {
        key_.swap(key);
        next_ = form_->addEntry != nullptr ? form_->addEntry(value_, key_) : FindMember();
        if (next_.value == nullptr) {
            throw WrongValue("this key appears twice; remove one");
        }
    }

    /// As a step of a JSON pointer.
    std::string Step() const {
        return form_->addElement != nullptr ? "/" + std::to_string(elements_ - 1)
                                            : PointerStep(key_);
    }

private:
    /// Keys mostly come in schema order. Returns no target for a key that was there before.
    Target FindMember() {
        std::size_t index = nextMember_;
        if (index == form_->members.size() || !form_->members[index].Is(key_)) {
            index = IndexOfMember();
        }
        nextMember_ = index + 1;
        if (found_[index]) {
            return {};
        }
        found_[index] = true;
        return form_->members[index].of(value_);
    }

    std::size_t IndexOfMember() const {
        const auto found = std::ranges::find_if(
            form_->members, [this](const Member& member) { return member.Is(key_); });
        if (found == form_->members.end()) {
            FailAtUnknownKey();
        }
        return static_cast<std::size_t>(found - form_->members.begin());
    }

    [[noreturn]] void FailAtUnknownKey() const {
        std::string known;
        for (const Member& member : form_->members) {
            known += (known.empty() ? "" : ", ") + std::string(member.key);
        }
        throw WrongValue("unknown key; the keys here are " + known);
    }

    void* value_;
    const Form* form_;
    Target next_{};             // of an object
    std::string key_;           // of an object: the latest
    std::size_t elements_ = 0;  // of a list: how many have begun
    std::size_t nextMember_ = 0;
    std::bitset<kMostMembers> found_;
};

/// Whether a form's values are objects or lists; null for those without parts.
ParsedJson::value_t PartsOf(const Form& form) {
    if (form.addElement != nullptr) {
        return ParsedJson::value_t::array;
    }
    return form.addEntry != nullptr || !form.members.empty() ? ParsedJson::value_t::object
                                                             : ParsedJson::value_t::null;
}

/// Receives the parser's events and fills the values directly; the library's own builder would hold
/// the whole document. After a wrong value it ignores everything else, because malformed JSON
/// further on is the better error.
class Filler final : public nlohmann::json_sax<ParsedJson> {
public:
    Filler(const Target& root, const JsonInput& input) : root_(root), input_(input) {}

    /// @throws JsonError for the first wrong value that there was
    void Finish() const {
        if (failure_) {
            throw JsonError(*failure_);
        }
    }

    bool null() override { return Take(nullptr); }
    bool boolean(bool value) override { return Take(value); }
    bool number_integer(number_integer_t value) override { return Take(value); }
    bool number_unsigned(number_unsigned_t value) override { return Take(value); }
    bool number_float(number_float_t value, const string_t& text) override {
        return value == 0 && !MeansZero(text) ? RefuseNearZero(text) : Take(value);
    }
    bool binary(binary_t& value) override { return Take(std::move(value)); }

    bool string(string_t& value) override {
        // The same two buffers for all texts.
        text_.get_ref<std::string&>().swap(value);
        return Take(text_);
    }

    bool start_object(std::size_t) override { return Open(ParsedJson::value_t::object); }
    bool start_array(std::size_t) override { return Open(ParsedJson::value_t::array); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(string_t& key) override {
        return AtPlace([&] { open_.back().Begin(key); });
    }

    bool parse_error(std::size_t position, const std::string&,
                     const ParsedJson::exception& error) override {
        throw JsonError(Told(error.what()) + "; correct the text there",
                        input_.PlaceOf(position - std::min<std::size_t>(position, 1)));
    }

private:
    Target Next() { return open_.empty() ? root_ : open_.back().Next(); }

    bool Take(const ParsedJson& json) {
        return AtPlace([&] {
            const Target target = Next();
            target.form->take(target.value, json);
        });
    }

    static bool MeansZero(std::string_view number) {
        const std::string_view digits = number.substr(0, number.find_first_of("eE"));
        return digits.find_first_of("123456789") == digits.npos;
    }

    bool RefuseNearZero(const std::string& number) {
        constexpr std::size_t kLongest = 40;
        return AtPlace([&] {
            Next();
            throw WrongValue("this is the number " + Shortened(number, kLongest) +
                             "; give 0 or a number that is at least 2.5e-324 away from it");
        });
    }

    bool Open(ParsedJson::value_t kind) {
        return AtPlace([&] {
            Target target = Next();
            if (target.form->open != nullptr) {
                target = target.form->open(target.value);
            }
            if (PartsOf(*target.form) != kind) {
                target.form->take(target.value, ParsedJson(kind));
            }
            open_.emplace_back(target);
        });
    }

    bool Close() {
        return AtPlace([&] { open_.pop_back(); });
    }

    /// Does it unless there was a wrong value. Always true, so that the parser goes on.
    template <class Action>
    bool AtPlace(const Action& action) {
        if (failure_) {
            return true;
        }
        try {
            action();
        } catch (const WrongValue& wrong) {
            const std::string pointer = Pointer();
            failure_ = (pointer.empty() ? "the whole document" : pointer) + ": " + wrong.what();
        }
        return true;
    }

    std::string Pointer() const {
        std::string pointer;
        for (const Level& level : open_) {
            pointer += level.Step();
        }
        return pointer;
    }

    Target root_;
    const JsonInput& input_;
    std::vector<Level> open_;
    ParsedJson text_ = std::string();
    std::optional<std::string> failure_;
};

}  // namespace

void ReadDocument(const TextSource& source, const ByteProgress& progress, Target value) {
    JsonInput input(source, progress);
    Filler filler(value, input);
    ParsedJson::sax_parse(input.begin(), input.end(), &filler);
    filler.Finish();
}

std::string_view WholeText::operator()() {
    constexpr std::size_t kBlockSize = std::size_t{64} * 1024;
    const std::string_view block = rest_.substr(0, kBlockSize);
    rest_.remove_prefix(block.size());
    return block;
}

}  // namespace orvo::json
