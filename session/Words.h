#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>

#include <orvo/AudioTrack.h>
#include <orvo/Automation.h>
#include <orvo/EditorState.h>
#include <orvo/Lookup.h>
#include <orvo/Message.h>
#include <orvo/Metronome.h>
#include "format/Keywords.h"
#include "format/clips/ClipStretch.h"
#include "format/clips/Fade.h"
#include "format/effects/Parameter.h"
#include "format/state/Metronome.h"
#include "format/state/TimeFormat.h"

/// The words of the enumerations: those of the session format, where it has any.
namespace orvo {

/// A value of an enumeration and its word.
template <class Code>
struct Word {
    std::string_view text;
    Code code;
};

/// Not every compiler deduces it for an aggregate.
template <class Code>
Word(std::string_view, Code) -> Word<Code>;

/// For each enumeration: its words, as `kTable`.
template <class Code>
struct Words;

template <class Code>
concept HasWords = requires {
    Words<Code>::kTable;
};

/// The word of a value; no value if it has no word.
template <HasWords Code>
constexpr std::optional<std::string_view> WordOf(Code code) {
    for (const Word<Code>& word : Words<Code>::kTable) {
        if (word.code == code) {
            return word.text;
        }
    }
    return std::nullopt;
}

/// The value of a word; no value if the text is not one of the words.
template <HasWords Code>
constexpr std::optional<Code> CodeOf(std::string_view text) {
    for (const Word<Code>& word : Words<Code>::kTable) {
        if (word.text == text) {
            return word.code;
        }
    }
    return std::nullopt;
}

/// The words of a table of the format, which are ASCII, in UTF-8. Of adjacent rows with the same
/// word the first one counts.
template <class Code, const auto& Keywords>
class KeywordsAs {
    static constexpr auto kTexts = tses::kWordsOf<Keywords>;

    static consteval std::size_t CountLetters() {
        std::size_t count = 0;
        for (const std::u16string_view text : kTexts) {
            count += text.size();
        }
        return count;
    }

    static constexpr auto kLetters = [] {
        std::array<char, CountLetters()> letters{};
        auto next = letters.begin();
        for (const std::u16string_view text : kTexts) {
            next = std::ranges::transform(text, next, [](char16_t letter) {
                       return letter < 0x80 ? static_cast<char>(letter) : throw "not ASCII";
                   }).out;
        }
        return letters;
    }();

public:
    static constexpr auto kTable = [] {
        std::array<Word<Code>, kTexts.size()> words{};
        std::size_t begin = 0;
        for (std::size_t i = 0; i < words.size(); ++i) {
            words[i] = {std::string_view(kLetters.data() + begin, kTexts[i].size()),
                        Code{*tses::FindValue(Keywords, kTexts[i])}};
            begin += kTexts[i].size();
        }
        return words;
    }();
};

/// Two tables as one.
template <class Code, std::size_t OneSize, std::size_t OtherSize>
consteval auto JoinedWords(const std::array<Word<Code>, OneSize>& one,
                           const std::array<Word<Code>, OtherSize>& other) {
    std::array<Word<Code>, OneSize + OtherSize> words{};
    std::ranges::copy(other, std::ranges::copy(one, words.begin()).out);
    return words;
}

template <>
struct Words<FadeType> : KeywordsAs<FadeType, tses::kFadeTypes> {};
template <>
struct Words<CrossFadeLink> : KeywordsAs<CrossFadeLink, tses::kLinkTypes> {};
template <>
struct Words<StretchMode> : KeywordsAs<StretchMode, tses::kStretchModes> {};
template <>
struct Words<StretchType> : KeywordsAs<StretchType, tses::kStretchTypes> {};
template <>
struct Words<StretchQuality> : KeywordsAs<StretchQuality, tses::kStretchQualities> {};
template <>
struct Words<KeyframeType> : KeywordsAs<KeyframeType, tses::kKeyframeTypes> {};
template <>
struct Words<SoundSet> : KeywordsAs<SoundSet, tses::kSoundSets> {};
template <>
struct Words<Beat> : KeywordsAs<Beat, tses::kBeats> {};

template <>
struct Words<Severity> {
    static constexpr std::array kTable{
        Word{"error", Severity::Error},
        Word{"warning", Severity::Warning},
    };
};

template <>
struct Words<FeedTarget> {
    static constexpr std::array kTable{
        Word{"nowhere", FeedTarget::Nowhere},
        Word{"track", FeedTarget::Track},
        Word{"port", FeedTarget::Port},
    };
};

/// In a session file the kind is the name of the track's element.
template <>
struct Words<TrackKind> {
    static constexpr std::array kTable{
        Word{"audio", TrackKind::Audio},           Word{"bus", TrackKind::Bus},
        Word{"master", TrackKind::Master},         Word{"metronome", TrackKind::Metronome},
        Word{"instrument", TrackKind::Instrument},
    };
};

/// `notSaid` never stands in a file: the attribute is absent.
template <>
struct Words<ChannelType> {
    static constexpr auto kTable =
        JoinedWords(std::array{Word{"notSaid", ChannelType::NotSaid}},
                    KeywordsAs<ChannelType, tses::kChannelLayouts>::kTable);
};

/// A session file has one keyword for every kind of timecode.
template <>
struct Words<TimeDisplay> {
    static constexpr auto kTable =
        JoinedWords(KeywordsAs<TimeDisplay, tses::kTimeFormats>::kTable,
                    std::array{
                        Word{"timeFormatNTSC30", TimeDisplay::Ntsc30},
                        Word{"timeFormatNTSC30DropFrame", TimeDisplay::Ntsc30Drop},
                        Word{"timeFormatNTSC60", TimeDisplay::Ntsc60},
                        Word{"timeFormatNTSC60DropFrame", TimeDisplay::Ntsc60Drop},
                        Word{"timeFormatNTSC24", TimeDisplay::Ntsc24},
                    });
};

}  // namespace orvo
