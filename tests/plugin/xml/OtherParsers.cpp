#include "tests/plugin/xml/OtherParsers.h"

#include <expat.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>
#include <type_traits>

#include "platform/kelcore/Strings.h"

namespace test {
namespace {

using ExpatParser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, void (*)(XML_Parser)>;
using Libxml2Document = std::unique_ptr<xmlDoc, void (*)(xmlDoc*)>;

constexpr int kLibxml2Options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

/// What expat puts between a namespace and a local name. No name can contain it.
constexpr XML_Char kNamespaceEnd = '/';

bool ParseByExpat(XML_Parser parser, std::string_view document) {
    return XML_Parse(parser, document.data(), static_cast<int>(document.size()), XML_TRUE) ==
           XML_STATUS_OK;
}

/// The values that expat has reported.
struct ExpatValues {
    Values values;
    std::string content;
    bool isAttribute = false;
};

void XMLCALL OnStart(void* data, const XML_Char* /*name*/, const XML_Char** attributes) {
    ExpatValues& read = *static_cast<ExpatValues*>(data);
    read.isAttribute = attributes[0] != nullptr;
    read.content = read.isAttribute ? attributes[1] : "";
}

void XMLCALL OnCharacters(void* data, const XML_Char* text, int length) {
    ExpatValues& read = *static_cast<ExpatValues*>(data);
    if (!read.isAttribute) {
        read.content.append(text, static_cast<std::size_t>(length));
    }
}

void XMLCALL OnEnd(void* data, const XML_Char* name) {
    ExpatValues& read = *static_cast<ExpatValues*>(data);
    if (std::string_view(name) == "name") {
        read.values.push_back(kelcore::UTF8to16(read.content));
    }
}

std::u16string TakeText(xmlChar* text) {
    const std::unique_ptr<xmlChar, void (*)(void*)> owned(text, xmlFree);
    return kelcore::UTF8to16(reinterpret_cast<const char*>(owned.get()));
}

std::u16string ValueOf(xmlNode* element) {
    return TakeText(element->properties != nullptr ? xmlGetProp(element, element->properties->name)
                                                   : xmlNodeGetContent(element));
}

void NoteError(void* parser, xmlError* error) {
    if (error->level >= XML_ERR_ERROR) {
        static_cast<std::set<int>*>(static_cast<xmlParserCtxt*>(parser)->_private)
            ->insert(error->code);
    }
}

}  // namespace

std::optional<Values> ReadByExpat(std::string_view document) {
    const ExpatParser parser(XML_ParserCreate(nullptr), XML_ParserFree);
    ExpatValues read;
    XML_SetUserData(parser.get(), &read);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnCharacters);
    return ParseByExpat(parser.get(), document) ? std::optional(std::move(read.values))
                                                : std::nullopt;
}

std::optional<Values> ReadByLibxml2(std::string_view document) {
    const Libxml2Document read(xmlReadMemory(document.data(), static_cast<int>(document.size()),
                                             nullptr, nullptr, kLibxml2Options),
                               xmlFreeDoc);
    if (read == nullptr) {
        return std::nullopt;
    }
    Values values;
    for (xmlNode* node = xmlDocGetRootElement(read.get())->children; node != nullptr;
         node = node->next) {
        if (node->type == XML_ELEMENT_NODE) {
            values.push_back(ValueOf(node));
        }
    }
    return values;
}

std::set<int> ErrorsByExpat(std::string_view document) {
    const ExpatParser parser(XML_ParserCreateNS(nullptr, kNamespaceEnd), XML_ParserFree);
    if (ParseByExpat(parser.get(), document)) {
        return {};
    }
    return {XML_GetErrorCode(parser.get())};
}

std::set<int> ErrorsByLibxml2(std::string_view document) {
    const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxt*)> parser(xmlNewParserCtxt(),
                                                                          xmlFreeParserCtxt);
    std::set<int> errors;
    parser->_private = &errors;
    parser->sax->serror = NoteError;
    const Libxml2Document read(
        xmlCtxtReadMemory(parser.get(), document.data(), static_cast<int>(document.size()), nullptr,
                          nullptr, kLibxml2Options | XML_PARSE_HUGE),
        xmlFreeDoc);
    const bool isWellFormed =
        read != nullptr && parser->wellFormed != 0 && parser->nsWellFormed != 0;
    if (!isWellFormed && errors.empty()) {
        errors.insert(XML_ERR_INTERNAL_ERROR);
    }
    return errors;
}

}  // namespace test
