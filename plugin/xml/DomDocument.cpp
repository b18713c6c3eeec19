#include <optional>
#include <utility>
#include <vector>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "format/Names.h"
#include "plugin/xml/ContentTarget.h"
#include "plugin/xml/DocumentTexts.h"
#include "plugin/xml/SerialiserSettings.h"
#include "plugin/xml/SessionDocument.h"
#include "plugin/xml/XercesPlatform.h"

namespace tses {
namespace {

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

class DomDocument final : public SessionDocument {
public:
    DomDocument(LibraryPointer<xercesc::DOMDocument> document, NodeMaker makeNodes)
        : document_(std::move(document)), texts_(*document_, makeNodes) {
        open_.push_back(document_->getDocumentElement());
    }

    void SetRootAttributes(const AttributeMap& attributes) override {
        texts_.SetAttributes(*document_->getDocumentElement(), attributes);
    }

    void StartElement(std::u16string_view name, const AttributeMap& attributes) override {
        open_.push_back(&texts_.AppendElement(*open_.back(), name, attributes));
    }

    void Text(std::u16string_view text) override {
        if (NeedsXml11(text)) {
            document_->setXmlVersion(xercesc::XMLUni::fgVersion1_1);
        }
        texts_.AppendText(*open_.back(), text);
    }

    void Characters(std::u16string_view text) override {
        texts_.AppendSections(*open_.back(), text);
    }

    void EndElement() override { open_.pop_back(); }

    std::optional<std::span<const kelcore::byte>> Serialise() override {
        texts_.Settle();
        content_.Clear();
        if (!tses::Serialise(*document_, content_)) {
            return std::nullopt;
        }
        return content_.Bytes();
    }

private:
    LibraryPointer<xercesc::DOMDocument> document_;
    DocumentTexts texts_;
    std::vector<xercesc::DOMElement*> open_;  ///< from the document element to the innermost one
    ContentTarget content_;
};

std::unique_ptr<SessionDocument> MakeDocument(NodeMaker makeNodes) {
    auto document = CreateDocument();
    return document ? std::make_unique<DomDocument>(std::move(document), makeNodes) : nullptr;
}

}  // namespace

std::unique_ptr<SessionDocument> MakeDomDocument() {
    return MakeDocument(kNodeMaker);
}

std::unique_ptr<SessionDocument> MakePublicDomDocument() {
    return MakeDocument(MakePublicNodes);
}

}  // namespace tses
