#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "format/Names.h"
#include "fuzz/ByteSource.h"
#include "fuzz/PluginUnderTest.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/SessionDocument.h"
#include "plugin/xml/XercesPlatform.h"

// Writes a document by operations in any order, with any texts: once as a DOM that the XML library
// serialises, once streamed. Both must give the same bytes and the same trace.

namespace {

/// Parts of texts that serialisers treat in different ways: markup, white space, and characters
/// that one version of XML, or each, cannot carry as they are.
constexpr std::u16string_view kParts[] = {
    u"a",      u"name",   u" ",      u"  ",     u"\t",         u"\n",     u"\r",     u"\n    ",
    u"\r\n",   u"&",      u"<",      u">",      u"\"",         u"'",      u"]]>",    u"]]",
    u"]",      u"\u0001", u"\u001F", u"\u007F", u"\u0080",     u"\u0085", u"\u009F", u"\u00E9",
    u"\u2028", u"\uFFFD", u"\uFFFE", u"\u20AC", u"\U0001F3B5", u"&amp;",
};

constexpr std::u16string_view kElements[] = {tses::names::session, tses::names::tracks,
                                             tses::names::audioTrack, tses::names::name,
                                             tses::names::xmpMetadata};
constexpr std::u16string_view kAttributes[] = {tses::names::id, tses::names::name, tses::names::hue,
                                               tses::names::version};

std::u16string DrawText(fuzz::ByteSource& source) {
    std::u16string text;
    for (std::size_t parts = source.Choose(5); parts > 0; --parts) {
        switch (source.Choose(8)) {
            case 0:
                text += source.Text();
                break;
            case 1:  // half of a pair
                text += static_cast<char16_t>(0xD800 + source.Choose(256) * 8);
                break;
            default:
                text += source.OneOf(kParts);
                break;
        }
    }
    return text;
}

tses::AttributeMap DrawAttributes(fuzz::ByteSource& source) {
    tses::AttributeMap attributes;
    for (std::size_t count = source.Choose(4); count > 0; --count) {
        const std::u16string_view name = source.OneOf(kAttributes);
        attributes.Set(name, DrawText(source));
    }
    return attributes;
}

/// What a document gives: its bytes each time it is serialised, and what it traces.
struct Outcome {
    std::string bytes;
    std::string trace;

    bool operator==(const Outcome&) const = default;
};

void Serialise(tses::SessionDocument& document, Outcome& outcome) {
    const auto content = document.Serialise();
    outcome.bytes += content ? std::string(content->begin(), content->end()) : "nothing";
    outcome.bytes += '\0';
}

Outcome Run(tses::DocumentMaker makeDocument, fuzz::ByteSource source) {
    Outcome outcome;
    kelcore::trace::SetOutput([&](std::string_view, std::string_view text) {
        outcome.trace += text;
        outcome.trace += '\n';
    });
    const auto document = makeDocument();
    for (std::size_t depth = 0; !source.IsEmpty();) {
        switch (source.Choose(16)) {
            case 0:
                document->SetRootAttributes(DrawAttributes(source));
                break;
            case 1:
                document->Characters(DrawText(source));
                break;
            case 2:
                Serialise(*document, outcome);
                break;
            case 3:
            case 4:
            case 5:
            case 6:
                document->Text(DrawText(source));
                break;
            case 7:
            case 8:
            case 9:
            case 10:
                if (depth > 0) {
                    document->EndElement();
                    --depth;
                }
                break;
            default: {
                const std::u16string_view name = source.OneOf(kElements);
                document->StartElement(name, DrawAttributes(source));
                ++depth;
            }
        }
    }
    Serialise(*document, outcome);
    kelcore::trace::SetOutput({});
    return outcome;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool started = tses::StartXerces();
    if (!started) {
        fuzz::Fail("the XML library did not start");
    }
    const fuzz::ByteSource source(data, size);
    const Outcome built = Run(tses::MakeDomDocument, source);
    const Outcome streamed = Run(tses::MakeStreamedDocument, source);
    if (built.bytes != streamed.bytes) {
        fuzz::Fail("--- built\n" + built.bytes + "\n--- streamed\n" + streamed.bytes);
    }
    if (built.trace != streamed.trace) {
        fuzz::Fail("--- built traces\n" + built.trace + "--- streamed traces\n" + streamed.trace);
    }
    return 0;
}
