#include "plugin/xml/SessionXMLWriter.h"

#include <algorithm>
#include <boost/thread/lock_guard.hpp>
#include <optional>
#include <utility>
#include <vector>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "format/Limits.h"
#include "format/Names.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/ContentTarget.h"
#include "plugin/xml/DocumentTexts.h"
#include "plugin/xml/SerialiserSettings.h"
#include "plugin/xml/XercesPlatform.h"

namespace tses {
namespace {

using Guard = boost::lock_guard<boost::recursive_mutex>;

constexpr std::u16string_view kCoreFeature = u"Core";
constexpr std::u16string_view kLineFeed = u"\n";

struct ReleaseToLibrary {
    template <class Resource>
    void operator()(Resource* resource) const {
        resource->release();
    }
};

template <class Resource>
using LibraryPointer = std::unique_ptr<Resource, ReleaseToLibrary>;

xercesc::DOMImplementation* CoreImplementation() {
    return xercesc::DOMImplementationRegistry::getDOMImplementation(kCoreFeature.data());
}

LibraryPointer<xercesc::DOMDocument> CreateDocument() {
    if (!IsXercesStarted()) {
        return nullptr;
    }
    return LibraryPointer<xercesc::DOMDocument>(
        CoreImplementation()->createDocument(nullptr, names::orvo.data(), nullptr));
}

bool NeedsXml11(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit <= 0x84) || (unit >= 0x86 && unit <= 0x9F);
}

constexpr kelcore::uint64 kLongestReference = 8;  // that of the line separator
constexpr kelcore::uint64 kOtherReference = 6;

/// The longest that the text may get as the value of an attribute: every unit as a reference.
kelcore::uint64 LongestValue(std::u16string_view text) {
    return kLongestReference * text.size();
}

kelcore::uint64 LengthOf(char16_t unit) {
    const bool isPlain =
        unit >= 0x20 && unit < 0x7F && unit != u'&' && unit != u'<' && unit != u'>' && unit != u'"';
    if (isPlain) {
        return 1;
    }
    constexpr kelcore::uint64 kBytesOfUnit = 3;
    return unit < 0xA0 ? kOtherReference : unit == u'\u2028' ? kLongestReference : kBytesOfUnit;
}

/// The text's length as a value, enough for any version that the document gets in the end.
kelcore::uint64 ValueLength(std::u16string_view text) {
    kelcore::uint64 length = 0;
    for (const char16_t unit : text) {
        length += LengthOf(unit);
    }
    return length;
}

template <class Measure>
bool FitsTag(const AttributeMap& attributes, Measure measure) {
    constexpr kelcore::uint64 kName = 64;  // with quotes and separators
    kelcore::uint64 length = kName;
    for (const auto& attribute : attributes) {
        length += kName + measure(attribute.value);
    }
    return length <= limits::kTagBytes;
}

/// Whether a reader accepts the tag.
bool IsReadable(const AttributeMap& attributes) {
    return FitsTag(attributes, LongestValue) || FitsTag(attributes, ValueLength);
}

/// The DOM throws if it refuses something; the writer's operation then reports failure.
template <class Operation>
bool Attempt(Operation&& operation) {
    try {
        operation();
        return true;
    } catch (const xercesc::DOMException& refusal) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory,
                              TranscodeMessage(refusal.getMessage()));
        return false;
    }
}

bool Serialise(const xercesc::DOMDocument& document, xercesc::XMLFormatTarget& target) {
    xercesc::DOMImplementation* const implementation = CoreImplementation();
    xercesc::MemoryManager* const memory = xercesc::XMLPlatformUtils::fgMemoryManager;

    const LibraryPointer<xercesc::DOMLSSerializer> serializer(
        implementation->createLSSerializer(memory));
    serializer->setNewLine(kLineFeed.data());
    ConfigureSerialiser(*serializer->getDomConfig());

    const LibraryPointer<xercesc::DOMLSOutput> output(implementation->createLSOutput(memory));
    output->setByteStream(&target);
    return serializer->write(&document, output.get());
}

/// Whether a reader accepts the file.
bool IsReadable(const ContentTarget& content) {
    const bool readable = content.Bytes().size() <= limits::kFileBytes;
    if (!readable) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory, "the session is larger than 2 GiB");
    }
    return readable;
}

bool WriteFile(const std::u16string& path, const ContentTarget& content) {
    kelcore::File file(path);
    try {
        file.Create();
        kelcore::OPlatformByteStream stream(file);
        if (!content.Bytes().empty()) {
            stream.WriteBlock(content.Bytes().data(), content.Bytes().size());
        }
        stream.Close();
        if (content.Bytes().empty()) {
            kelcore::trace::Write(kelcore::trace::kWriterCategory,
                                  "the XML library gave an empty document: the file is empty now");
            return false;
        }
        return true;
    } catch (const kelcore::file_exception& failure) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory, failure.MessageFor(file.FullPath()));
        return false;
    }
}

}  // namespace

class SessionXMLWriter::State {
public:
    State(std::u16string outputPath, WriterFault writerFault, NodeMaker makeNodes)
        : document(CreateDocument()), path(std::move(outputPath)), fault(writerFault) {
        if (document != nullptr) {
            open.push_back(document->getDocumentElement());
            texts.emplace(*document, makeNodes);
        }
    }

    LibraryPointer<xercesc::DOMDocument> document;
    std::optional<DocumentTexts> texts;      // empty without a document
    std::vector<xercesc::DOMElement*> open;  // from the document element to the current one
    std::u16string path;
    WriterFault fault;
    std::size_t operations = 0;
    kelcore::uint64 items = 0;
    bool refused = false;
};

SessionXMLWriter::SessionXMLWriter(std::u16string path, WriterFault fault, NodeMaker makeNodes)
    : state_(std::make_unique<State>(std::move(path), fault, makeNodes)) {}

SessionXMLWriter::~SessionXMLWriter() = default;

bool SessionXMLWriter::Step() {
    if (state_->document == nullptr) {
        return Refuse("cannot write: the XML library did not start");
    }
    return state_->operations++ != state_->fault.atOperation && !state_->refused;
}

bool SessionXMLWriter::Refuse(std::string_view reason) {
    if (!state_->refused) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory, reason);
    }
    state_->refused = true;
    return false;
}

bool SessionXMLWriter::TakesItems(kelcore::uint32 count) {
    const Guard guard(lock_);
    state_->items += count;
    return state_->items <= limits::kItems ||
           Refuse("the lists of the session have more than 16777216 entries");
}

bool SessionXMLWriter::TakesChannels(kelcore::uint32 count) {
    const Guard guard(lock_);
    return count <= limits::kChannels || Refuse("a channel map has more than 1024 channels");
}

bool SessionXMLWriter::TakesBlock(kelcore::uint32 bytes) {
    const Guard guard(lock_);
    return bytes <= limits::kBlockBytes ||
           Refuse("a block of events or of an effect's state is larger than 1 GiB");
}

bool SessionXMLWriter::TakesAttributes(const AttributeMap& attributes) {
    return IsReadable(attributes) || Refuse("the attributes of an element are longer than 1 MiB");
}

bool SessionXMLWriter::SetRootAttributes(const AttributeMap& attributes) {
    const Guard guard(lock_);
    if (!Step() || !TakesAttributes(attributes)) {
        return false;
    }
    return Attempt(
        [&] { state_->texts->SetAttributes(*state_->document->getDocumentElement(), attributes); });
}

bool SessionXMLWriter::StartElement(std::u16string_view name, const AttributeMap& attributes) {
    const Guard guard(lock_);
    if (!Step() || !TakesAttributes(attributes)) {
        return false;
    }
    return Attempt([&] {
        state_->open.push_back(
            &state_->texts->AppendElement(*state_->open.back(), name, attributes));
    });
}

bool SessionXMLWriter::Text(std::u16string_view text) {
    const Guard guard(lock_);
    if (!Step()) {
        return false;
    }
    return Attempt([&] {
        if (std::any_of(text.begin(), text.end(), NeedsXml11)) {
            state_->document->setXmlVersion(xercesc::XMLUni::fgVersion1_1);
        }
        state_->texts->AppendText(*state_->open.back(), text);
    });
}

bool SessionXMLWriter::Characters(std::u16string_view text) {
    const Guard guard(lock_);
    if (!Step()) {
        return false;
    }
    return Attempt([&] { state_->texts->AppendSections(*state_->open.back(), text); });
}

bool SessionXMLWriter::EndElement() {
    const Guard guard(lock_);
    if (!Step()) {
        return false;
    }
    if (state_->open.size() == 1) {
        return false;
    }
    state_->open.pop_back();
    return true;
}

bool SessionXMLWriter::Save() {
    const Guard guard(lock_);
    if (!Step()) {
        return false;
    }
    state_->texts->Settle();
    ContentTarget content;
    bool serialised = Serialise(*state_->document, content);
    if (state_->fault.serialiser != WriterFault::Serialiser::Works) {
        serialised = state_->fault.serialiser == WriterFault::Serialiser::WritesNothing;
        content.Clear();
    }
    if (!serialised) {
        return Refuse("cannot write: the XML library could not put the session into XML");
    }
    return IsReadable(content) && WriteFile(state_->path, content);
}

}  // namespace tses
