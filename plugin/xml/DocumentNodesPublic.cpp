#include "plugin/xml/DocumentNodes.h"

namespace tses {
namespace {

class PublicNodes final : public DocumentNodes {
public:
    explicit PublicNodes(xercesc::DOMDocument& document) : document_(document) {}

    xercesc::DOMElement& CreateElement(std::u16string_view name,
                                       std::size_t /*attributeCount*/) override {
        return *document_.createElement(name.data());
    }

    void AddAttribute(xercesc::DOMElement& element, std::u16string_view name,
                      std::u16string_view value) override {
        element.setAttribute(name.data(), value.data());
    }

    void Append(xercesc::DOMElement& parent, xercesc::DOMElement& child) override {
        parent.appendChild(&child);
    }

private:
    xercesc::DOMDocument& document_;
};

}  // namespace

std::unique_ptr<DocumentNodes> MakePublicNodes(xercesc::DOMDocument& document) {
    return std::make_unique<PublicNodes>(document);
}

}  // namespace tses
