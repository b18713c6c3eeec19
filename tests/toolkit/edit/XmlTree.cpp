#include "tests/toolkit/edit/XmlTree.h"

#include <expat.h>

#include <memory>
#include <type_traits>

namespace test {
namespace {

struct Tree {
    std::vector<XmlElement> elements;
    std::vector<std::size_t> open;
};

void XMLCALL OnStart(void* data, const XML_Char* name, const XML_Char** attributes) {
    Tree& tree = *static_cast<Tree*>(data);
    tree.open.push_back(tree.elements.size());
    tree.elements.push_back({.name = name, .attributes = {}, .text = {}});
    for (; *attributes != nullptr; attributes += 2) {
        tree.elements.back().attributes[attributes[0]] = attributes[1];
    }
}

void XMLCALL OnCharacters(void* data, const XML_Char* text, int length) {
    Tree& tree = *static_cast<Tree*>(data);
    tree.elements[tree.open.back()].text.append(text, static_cast<std::size_t>(length));
}

void XMLCALL OnEnd(void* data, const XML_Char* /*name*/) {
    static_cast<Tree*>(data)->open.pop_back();
}

}  // namespace

std::optional<std::vector<XmlElement>> ReadTree(std::string_view document) {
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, void (*)(XML_Parser)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    Tree tree;
    XML_SetUserData(parser.get(), &tree);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnCharacters);
    const bool ok = XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()),
                              XML_TRUE) == XML_STATUS_OK;
    return ok ? std::optional(std::move(tree.elements)) : std::nullopt;
}

}  // namespace test
