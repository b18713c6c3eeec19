#include "bench/BareParsers.h"

#include <expat.h>
#include <libxml/parser.h>

#include <cstdio>
#include <memory>
#include <pugixml.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/kelcore/Paths.h"

namespace bench {
namespace {

class ElementCounter final : public xercesc::DefaultHandler {
public:
    void startElement(const XMLCh*, const XMLCh*, const XMLCh*,
                      const xercesc::Attributes&) override {
        ++count;
    }

    std::uint64_t count = 0;
};

bool Parse(const std::string& path, xercesc::DefaultHandler& handler) {
    xercesc::SAX2XMLReaderImpl parser;
    parser.setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    parser.setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, true);
    parser.setContentHandler(&handler);
    parser.setErrorHandler(&handler);
    const std::u16string name = kelcore::PathFromBytes(path);
    try {
        parser.parse(xercesc::LocalFileInputSource(name.c_str()));
        return true;
    } catch (const xercesc::SAXParseException&) {
        return false;
    } catch (const xercesc::XMLException&) {
        return false;
    }
}

// Expat

void IgnoreStart(void*, const XML_Char*, const XML_Char**) {}
void IgnoreEnd(void*, const XML_Char*) {}
void IgnoreText(void*, const XML_Char*, int) {}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using FilePointer = std::unique_ptr<std::FILE, CloseFile>;
using ExpatParser = std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)>;

// libxml2

void IgnoreStartOfElement(void*, const xmlChar*, const xmlChar*, const xmlChar*, int,
                          const xmlChar**, int, int, const xmlChar**) {}
void IgnoreEndOfElement(void*, const xmlChar*, const xmlChar*, const xmlChar*) {}
void IgnoreCharacters(void*, const xmlChar*, int) {}
void IgnoreMessage(void*, const char*, ...) {}

}  // namespace

XercesLibrary::XercesLibrary() {
    xercesc::XMLPlatformUtils::Initialize();
}

XercesLibrary::~XercesLibrary() {
    xercesc::XMLPlatformUtils::Terminate();
}

bool ParseWithXerces(const std::string& path) {
    xercesc::DefaultHandler handler;
    return Parse(path, handler);
}

std::uint64_t CountElements(const std::string& path) {
    ElementCounter handler;
    Parse(path, handler);
    return handler.count;
}

bool ParseWithExpat(const std::string& path) {
    constexpr int kBlock = 64 * 1024;
    constexpr XML_Char kSeparator = '\x01';
    const FilePointer file(std::fopen(path.c_str(), "rb"));
    const ExpatParser parser(XML_ParserCreateNS(nullptr, kSeparator), &XML_ParserFree);
    if (file == nullptr || parser == nullptr) {
        return false;
    }
    XML_SetElementHandler(parser.get(), IgnoreStart, IgnoreEnd);
    XML_SetCharacterDataHandler(parser.get(), IgnoreText);
    for (;;) {
        void* const block = XML_GetBuffer(parser.get(), kBlock);
        const std::size_t got =
            block != nullptr ? std::fread(block, 1, kBlock, file.get()) : std::size_t{0};
        const bool isLast = got < std::size_t{kBlock};
        if (XML_ParseBuffer(parser.get(), static_cast<int>(got), isLast ? 1 : 0) != XML_STATUS_OK) {
            return false;
        }
        if (isLast) {
            return true;
        }
    }
}

bool ParseWithLibXml2(const std::string& path) {
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = IgnoreStartOfElement;
    handler.endElementNs = IgnoreEndOfElement;
    handler.characters = IgnoreCharacters;
    handler.cdataBlock = IgnoreCharacters;
    handler.error = IgnoreMessage;
    handler.fatalError = IgnoreMessage;
    return xmlSAXUserParseFile(&handler, nullptr, path.c_str()) == 0;
}

bool ParseWithPugixml(const std::string& path) {
    pugi::xml_document document;
    return static_cast<bool>(document.load_file(path.c_str()));
}

}  // namespace bench
