#include "bench/BareWriter.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/kelcore/Paths.h"

namespace bench {
namespace {

using Kind = DocumentParts::Kind;

// Taking apart

bool IsLayout(std::u16string_view text) {
    return text.find_first_not_of(u" \t\r\n") == std::u16string_view::npos;
}

class Collector final : public xercesc::DefaultHandler {
public:
    explicit Collector(DocumentParts& document) : document_(document) {}

    void startElement(const XMLCh*, const XMLCh*, const XMLCh* name,
                      const xercesc::Attributes& attributes) override {
        TakeText();
        document_.parts.push_back({Kind::Start, document_.Keep(name), document_.attributes.size(),
                                   attributes.getLength()});
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            document_.attributes.push_back(
                {document_.Keep(attributes.getQName(i)), document_.Keep(attributes.getValue(i))});
        }
    }
    void endElement(const XMLCh*, const XMLCh*, const XMLCh*) override {
        TakeText();
        document_.parts.push_back({.kind = Kind::End});
    }
    void characters(const XMLCh* text, XMLSize_t length) override { text_.append(text, length); }
    void startCDATA() override { TakeText(); }
    void endCDATA() override {
        document_.parts.push_back({.kind = Kind::Section, .text = document_.Keep(text_)});
        text_.clear();
    }

private:
    void TakeText() {
        if (!IsLayout(text_)) {
            document_.parts.push_back({.kind = Kind::Text, .text = document_.Keep(text_)});
        }
        text_.clear();
    }

    DocumentParts& document_;
    std::u16string text_;
};

bool SaysXml11(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string declaration;
    std::getline(file, declaration);
    return declaration.find("version=\"1.1\"") != std::string::npos;
}

// Building and saving

struct ReleaseToLibrary {
    template <class Resource>
    void operator()(Resource* resource) const {
        resource->release();
    }
};

template <class Resource>
using LibraryPointer = std::unique_ptr<Resource, ReleaseToLibrary>;

xercesc::DOMImplementation* CoreImplementation() {
    return xercesc::DOMImplementationRegistry::getDOMImplementation(u"Core");
}

class Builder {
public:
    Builder(const DocumentParts& parts, xercesc::DOMDocument& document)
        : parts_(parts), document_(document) {}

    void Build() {
        for (const DocumentParts::Part& part : parts_.parts) {
            Add(part);
        }
    }

private:
    void Add(const DocumentParts::Part& part) {
        switch (part.kind) {
            case Kind::Start:
                Start(part);
                return;
            case Kind::Text:
                current_->appendChild(document_.createTextNode(part.text));
                return;
            case Kind::Section:
                current_->appendChild(document_.createCDATASection(part.text));
                return;
            case Kind::End:
                current_ = current_->getParentNode();
                return;
        }
    }

    // The document element exists already.
    void Start(const DocumentParts::Part& part) {
        xercesc::DOMElement* const element = current_ == &document_
                                                 ? document_.getDocumentElement()
                                                 : document_.createElement(part.text);
        for (std::size_t i = 0; i < part.attributeCount; ++i) {
            const DocumentParts::Attribute& attribute = parts_.attributes[part.firstAttribute + i];
            element->setAttribute(attribute.name, attribute.value);
        }
        if (current_ != &document_) {
            current_->appendChild(element);
        }
        current_ = element;
    }

    const DocumentParts& parts_;
    xercesc::DOMDocument& document_;
    xercesc::DOMNode* current_ = &document_;
};

void Serialise(const xercesc::DOMDocument& document, xercesc::XMLFormatTarget& target) {
    const LibraryPointer<xercesc::DOMLSSerializer> serializer(
        CoreImplementation()->createLSSerializer());
    serializer->setNewLine(u"\n");
    xercesc::DOMConfiguration& configuration = *serializer->getDomConfig();
    configuration.setParameter(xercesc::XMLUni::fgDOMWRTFormatPrettyPrint, true);
    configuration.setParameter(xercesc::XMLUni::fgDOMWRTBOM, true);
    configuration.setParameter(xercesc::XMLUni::fgDOMXMLDeclaration, true);
    const LibraryPointer<xercesc::DOMLSOutput> output(CoreImplementation()->createLSOutput());
    output->setByteStream(&target);
    serializer->write(&document, output.get());
}

bool WriteBytes(const std::string& path, const xercesc::MemBufFormatTarget& content) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool written =
        std::fwrite(content.getRawBuffer(), 1, content.getLen(), file) == content.getLen();
    return std::fclose(file) == 0 && written;
}

}  // namespace

const XMLCh* DocumentParts::Keep(std::u16string_view text) {
    constexpr std::size_t kShort = 32;
    constexpr std::size_t kBlock = std::size_t{256} * 1024;
    if (text.size() <= kShort) {
        if (const auto known = short_.find(std::u16string(text)); known != short_.end()) {
            return known->second;
        }
    }
    const std::size_t needed = text.size() + 1;
    if (blocks_.empty() || blocks_.back().capacity() - blocks_.back().size() < needed) {
        blocks_.emplace_back().reserve(std::max(kBlock, needed));
    }
    std::u16string& block = blocks_.back();
    const std::size_t begin = block.size();
    block.append(text).push_back(u'\0');
    const XMLCh* const kept = block.data() + begin;
    if (text.size() <= kShort) {
        short_.emplace(text, kept);
    }
    return kept;
}

DocumentParts TakeApart(const std::string& path) {
    DocumentParts document;
    document.isXml11 = SaysXml11(path);
    Collector collector(document);
    xercesc::SAX2XMLReaderImpl parser;
    parser.setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    parser.setContentHandler(&collector);
    parser.setErrorHandler(&collector);
    parser.setLexicalHandler(&collector);
    try {
        parser.parse(xercesc::LocalFileInputSource(kelcore::PathFromBytes(path).c_str()));
    } catch (const xercesc::SAXParseException&) {
        throw std::runtime_error(path + " is not well-formed");
    }
    return document;
}

bool WriteWithDom(const DocumentParts& parts, const std::string& path) {
    const LibraryPointer<xercesc::DOMDocument> document(
        CoreImplementation()->createDocument(nullptr, parts.parts.front().text, nullptr));
    if (parts.isXml11) {
        document->setXmlVersion(xercesc::XMLUni::fgVersion1_1);
    }
    Builder(parts, *document).Build();
    constexpr XMLSize_t kInitialBufferSize = 10000;  // the plug-in's
    xercesc::MemBufFormatTarget content(kInitialBufferSize);
    Serialise(*document, content);
    return WriteBytes(path, content);
}

}  // namespace bench
