#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "format/Names.h"
#include "fuzz/ByteSource.h"
#include "fuzz/PluginUnderTest.h"
#include "platform/kelcore/Strings.h"

// Feeds the plug-in well-formed documents that use the names of the format anywhere, with arbitrary
// values. It must read each one without a message from the parser, or refuse it because of
// something the host reports.

namespace {

constexpr std::u16string_view kNames[] = {
#define FUZZ_NAME(name) tses::names::name,
    TSES_NAMES(FUZZ_NAME)
#undef FUZZ_NAME
};

// Elements with children, so that documents become deep.
constexpr std::u16string_view kWayDown[] = {
    u"session",   u"tracks",       u"audioTrack", u"instrumentTrack", u"busTrack",
    u"audioClip", u"effectsRack",  u"slot",       u"component",       u"parameter",
    u"sendList",  u"channelMap",   u"sendSlot",   u"metronome",       u"globalTrackInfo",
    u"files",     u"sessionState", u"clipGroups", u"properties",      u"parameterKeyframes",
};

constexpr std::string_view kValues[] = {
    "0",      "1",      "-1",          "2",
    "7",      "true",   "false",       "",
    "0.5",    "1e308",  "1e999",       "4294967295",
    "nan",    "-inf",   "-2147483649", "9223372036854775807",
    "log",    "audio",  "12,5",        " 3",
    "stereo", "mono",   "clipGain",    "trackPan",
    "sine",   "5.1",    "QUJD",        "timecode",
    "&#10;",  "&#x85;", "&#xD;&#x9;",  "\xF0\x9F\x8E\xB5",
};

class Document {
public:
    explicit Document(fuzz::ByteSource& source) : source_(source) {}

    std::string Make() {
        text_ = source_.Choose(16) == 1 ? "<?xml version=\"1.1\"?>" : "";
        text_ += "<orvo>";
        Content(1);
        return text_ + "</orvo>";
    }

private:
    void Content(int depth) {
        while (!source_.IsEmpty() && text_.size() < 1 << 16) {
            switch (source_.Choose(8)) {
                case 0:
                    return;
                case 1:
                    text_ += source_.OneOf(kValues);
                    break;
                case 2:
                    text_ += "<![CDATA[" + kelcore::UTF16to8(source_.OneOf(kNames)) + "]]>";
                    break;
                default:
                    Element(depth);
            }
        }
    }

    void Element(int depth) {
        const std::string name = kelcore::UTF16to8(source_.Choose(2) == 0 ? source_.OneOf(kWayDown)
                                                                          : source_.OneOf(kNames));
        text_ += "<" + name;
        Attributes();
        text_ += ">";
        if (depth < 40) {
            Content(depth + 1);
        }
        text_ += "</" + name + ">";
    }

    void Attributes() {
        std::string seen = " ";
        for (std::size_t count = source_.Choose(8); count > 0; --count) {
            const std::string name = kelcore::UTF16to8(source_.OneOf(kNames));
            if (seen.find(" " + name + " ") == std::string::npos) {
                seen += name + " ";
                text_ += " " + name + "=\"" + std::string(source_.OneOf(kValues)) + "\"";
            }
        }
    }

    fuzz::ByteSource& source_;
    std::string text_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::ByteSource source(data, size);
    const refhost::ReadResult read = fuzz::ReadDocument(Document(source).Make());
    if (!read.messages.empty()) {
        fuzz::Fail("a well-formed document was refused as malformed");
    }
    return 0;
}
