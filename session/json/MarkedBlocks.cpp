#include "session/json/MarkedBlocks.h"

#include <algorithm>
#include <array>
#include <limits>

#include "session/json/LoneSurrogates.h"

namespace orvo::json {
namespace {

/// A mark takes at most twice the room of what it stands for.
constexpr std::size_t kGrowth = 2;

enum class Kind : unsigned char {
    Other,
    Blank,
    Bracket,  ///< or comma or colon
    BeginOfNumber,
    Quote,
    MayBecomeMark
};

constexpr auto kKinds = [] {
    std::array<Kind, std::numeric_limits<unsigned char>::max() + 1> kinds{};
    const auto set = [&](std::string_view characters, Kind kind) {
        for (const char character : characters) {
            kinds[static_cast<unsigned char>(character)] = kind;
        }
    };
    set(" \t\r\n", Kind::Blank);
    set("{}[],:", Kind::Bracket);
    set("-0123456789", Kind::BeginOfNumber);
    set("\"", Kind::Quote);
    set(kFirstOfMarked, Kind::MayBecomeMark);
    return kinds;
}();

inline Kind KindOf(char character) {
    return kKinds[static_cast<unsigned char>(character)];
}

/// Writes the characters of a block.
struct Characters {
    char* next;

    void Put(const char* at) { *next++ = *at; }
    void Put(char character, const char* /*origin*/) { *next++ = character; }
};

/// Writes where each character of a block comes from.
struct Origins {
    const char** next;

    void Put(const char* at) { *next++ = at; }
    void Put(char /*character*/, const char* origin) { *next++ = origin; }
};

/// Goes over a piece of JSON.
template <class Out>
class Maker {
public:
    Maker(std::string_view json, bool isEnd, bool inText, Out out)
        : at_(json.data()), end_(at_ + json.size()), isEnd_(isEnd), inText_(inText), out_(out) {}

    void Make() {
        bool isKnown = true;
        while (isKnown && at_ != end_) {
            isKnown = inText_ ? MakeText() : MakeLayout() && MakeWord();
        }
    }

    const char* At() const { return at_; }
    bool InText() const { return inText_; }
    Out Written() const { return out_; }

private:
    /// To its end. False if more must be known of what follows.
    bool MakeText() {
        Out out = out_;
        const char* at = at_;
        while (at != end_ && KindOf(*at) != Kind::Quote && KindOf(*at) != Kind::MayBecomeMark) {
            out.Put(at++);
        }
        at_ = at;
        out_ = out;
        if (at_ == end_) {
            return true;
        }
        if (KindOf(*at_) == Kind::MayBecomeMark) {
            return Replace();
        }
        out_.Put(at_++);
        inText_ = false;
        return true;
    }

    bool Replace() {
        const auto replacement = ReplaceBegin({at_, end_}, isEnd_);
        if (!replacement) {
            return false;
        }
        for (std::size_t i = 0; i < replacement->text.size(); ++i) {
            out_.Put(replacement->text[i], at_ + std::min(i, replacement->size - 1));
        }
        at_ += replacement->size;
        return true;
    }

    /// What stands between texts, numbers and words.
    bool MakeLayout() {
        Out all = out_;
        Out compact = out_;
        const char* at = at_;
        for (; at != end_; ++at) {
            const Kind kind = KindOf(*at);
            if (kind == Kind::Bracket || (kind == Kind::Blank && at == at_)) {
                compact.Put(at);
            } else if (kind != Kind::Blank) {
                break;
            }
        }
        const bool isCompact =
            at != end_ && (KindOf(*at) == Kind::Quote || KindOf(*at) == Kind::BeginOfNumber);
        for (const char* kept = at_; !isCompact && kept != at; ++kept) {
            all.Put(kept);
        }
        out_ = isCompact ? compact : all;
        at_ = at;
        return true;
    }

    /// A number, or what is neither that nor a text, or the begin of a text.
    bool MakeWord() {
        while (at_ != end_ && !inText_ && KindOf(*at_) != Kind::Blank &&
               KindOf(*at_) != Kind::Bracket) {
            inText_ = KindOf(*at_) == Kind::Quote;
            out_.Put(at_++);
        }
        return true;
    }

    const char* at_;
    const char* end_;
    bool isEnd_;
    bool inText_;
    Out out_;
};

}  // namespace

MarkedBlocks::Block MarkedBlocks::Make(std::string_view json, bool isEnd) {
    text_.resize(std::max(text_.size(), kGrowth * json.size()));
    beganInText_ = inText_;
    Maker maker(json, isEnd, inText_, Characters{text_.data()});
    maker.Make();
    inText_ = maker.InText();
    return {{text_.data(), static_cast<std::size_t>(maker.Written().next - text_.data())},
            static_cast<std::size_t>(maker.At() - json.data())};
}

std::size_t MarkedBlocks::OriginOf(std::string_view json, std::size_t offset) const {
    std::vector<const char*> origins(kGrowth * json.size() + 1);
    Maker maker(json, true, beganInText_, Origins{origins.data()});
    maker.Make();
    const char* const origin =
        origins.data() + offset < maker.Written().next ? origins[offset] : maker.At();
    return static_cast<std::size_t>(origin - json.data());
}

}  // namespace orvo::json
