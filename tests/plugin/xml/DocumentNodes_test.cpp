#include "plugin/xml/DocumentNodes.h"

#include <gtest/gtest.h>

#include "plugin/xml/XercesPlatform.h"

// The tree as the library's public calls show it.

namespace tses {
namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;

class DocumentNodesTest : public testing::TestWithParam<NodeMaker> {
protected:
    DocumentNodesTest() {
        StartXerces();
        document =
            xercesc::DOMImplementationRegistry::getDOMImplementation(u"Core")->createDocument(
                nullptr, u"root", nullptr);
        nodes = GetParam()(*document);
    }
    ~DocumentNodesTest() override {
        nodes.reset();
        document->release();
        StopXerces();
    }

    DOMElement& Root() { return *document->getDocumentElement(); }

    DOMElement& Add(DOMElement& parent, const XMLCh* name) {
        DOMElement& element = nodes->CreateElement(name, 0);
        nodes->Append(parent, element);
        return element;
    }

    /// The names of a node's children, if both directions agree on the order.
    static std::u16string ChildrenOf(const DOMNode& parent) {
        std::u16string forth;
        for (const DOMNode* node = parent.getFirstChild(); node != nullptr;
             node = node->getNextSibling()) {
            EXPECT_EQ(node->getParentNode(), &parent);
            forth += std::u16string(node->getNodeName()) + u" ";
        }
        std::u16string back;
        for (const DOMNode* node = parent.getLastChild(); node != nullptr;
             node = node->getPreviousSibling()) {
            back.insert(0, std::u16string(node->getNodeName()) + u" ");
        }
        return forth == back ? forth : u"forth " + forth + u"back " + back;
    }

    xercesc::DOMDocument* document = nullptr;
    std::unique_ptr<DocumentNodes> nodes;
};

INSTANTIATE_TEST_SUITE_P(Public, DocumentNodesTest, testing::Values(MakePublicNodes));
#if ORVO_FAST_DOM
INSTANTIATE_TEST_SUITE_P(Internal, DocumentNodesTest, testing::Values(MakeInternalNodes));
#endif

TEST_P(DocumentNodesTest, AnElementHasNoParentUntilItIsAppended) {
    const DOMElement& element = nodes->CreateElement(u"a", 0);
    EXPECT_EQ(element.getParentNode(), nullptr);
    EXPECT_EQ(element.getOwnerDocument(), document);
    EXPECT_EQ(std::u16string(element.getTagName()), u"a");
    EXPECT_EQ(ChildrenOf(Root()), u"");
}

TEST_P(DocumentNodesTest, ElementsAreChildrenInTheOrderInWhichTheyAreAppended) {
    DOMElement& first = Add(Root(), u"a");
    Add(first, u"x");
    Add(Root(), u"b");
    Add(first, u"y");
    Add(Root(), u"c");
    EXPECT_EQ(ChildrenOf(Root()), u"a b c ");
    EXPECT_EQ(ChildrenOf(first), u"x y ");
}

TEST_P(DocumentNodesTest, ElementsStandBesideNodesOfOtherKinds) {
    Root().appendChild(document->createTextNode(u"text"));
    Add(Root(), u"a");
    Root().appendChild(document->createCDATASection(u"section"));
    Add(Root(), u"b");
    Root().insertBefore(document->createElement(u"c"), Root().getLastChild());
    EXPECT_EQ(ChildrenOf(Root()), u"#text a #cdata-section c b ");
    Root().removeChild(Root().getFirstChild())->release();
    Root().removeChild(Root().getLastChild())->release();
    EXPECT_EQ(ChildrenOf(Root()), u"a #cdata-section c ");
}

TEST_P(DocumentNodesTest, AttributesHaveTheirValuesAndTheirElement) {
    DOMElement& element = nodes->CreateElement(u"a", 3);
    nodes->AddAttribute(element, u"B", u"1");
    nodes->AddAttribute(element, u"a", u"");
    nodes->AddAttribute(element, u"ab", std::u16string(100'000, u'x'));
    ASSERT_EQ(element.getAttributes()->getLength(), 3u);
    EXPECT_EQ(std::u16string(element.getAttribute(u"B")), u"1");
    EXPECT_TRUE(element.hasAttribute(u"a"));
    EXPECT_EQ(std::u16string(element.getAttribute(u"a")), u"");
    EXPECT_EQ(std::u16string(element.getAttribute(u"ab")), std::u16string(100'000, u'x'));
    EXPECT_EQ(element.getAttributeNode(u"ab")->getOwnerElement(), &element);
    EXPECT_TRUE(element.getAttributeNode(u"a")->getSpecified());
}

TEST_P(DocumentNodesTest, AnElementMayHaveAnyNumberOfAttributes) {
    constexpr std::size_t kCount = 300;
    DOMElement& element = nodes->CreateElement(u"a", kCount);
    for (std::size_t i = 0; i < kCount; ++i) {
        const std::u16string name = {u'a', static_cast<char16_t>(u'a' + i / 26),
                                     static_cast<char16_t>(u'a' + i % 26)};
        nodes->AddAttribute(element, name, name + name);
    }
    ASSERT_EQ(element.getAttributes()->getLength(), kCount);
    EXPECT_EQ(std::u16string(element.getAttribute(u"aaa")), u"aaaaaa");
    EXPECT_EQ(std::u16string(element.getAttribute(u"aln")), u"alnaln");
    EXPECT_EQ(std::u16string(element.getAttributes()->item(17)->getNodeName()), u"aar");
}

TEST_P(DocumentNodesTest, AttributesCanBeChangedAndRemoved) {
    DOMElement& element = nodes->CreateElement(u"a", 2);
    nodes->AddAttribute(element, u"a", u"1");
    nodes->AddAttribute(element, u"b", u"1");
    nodes->Append(Root(), element);
    element.setAttribute(u"a", u"a longer value");
    element.removeAttribute(u"b");
    element.setAttribute(u"c", u"1");
    EXPECT_EQ(std::u16string(element.getAttribute(u"a")), u"a longer value");
    EXPECT_FALSE(element.hasAttribute(u"b"));
    EXPECT_EQ(element.getAttributes()->getLength(), 2u);
}

TEST_P(DocumentNodesTest, AttributesOfTheSameValueAreSeparate) {
    DOMElement& element = nodes->CreateElement(u"a", 2);
    nodes->AddAttribute(element, u"a", u"same");
    nodes->AddAttribute(element, u"b", u"same");
    element.getAttributeNode(u"a")->getFirstChild()->setNodeValue(u"new");
    EXPECT_EQ(std::u16string(element.getAttribute(u"a")), u"new");
    EXPECT_EQ(std::u16string(element.getAttribute(u"b")), u"same");
}

TEST_P(DocumentNodesTest, InvalidNamesAreRefused) {
    DOMElement& element = nodes->CreateElement(u"a", 2);
    for (const XMLCh* const name : {u"", u"a b", u"1", u"a\u0001", u"<"}) {
        EXPECT_THROW(nodes->CreateElement(name, 0), xercesc::DOMException);
        EXPECT_THROW(nodes->AddAttribute(element, name, u""), xercesc::DOMException);
    }
    EXPECT_EQ(element.getAttributes()->getLength(), 0u);
}

TEST_P(DocumentNodesTest, ANameIsItsCharactersWhereverTheyAreInMemory) {
    std::u16string name = u"ab";
    DOMElement& element = nodes->CreateElement(name.c_str(), 1);
    nodes->AddAttribute(element, name.c_str(), u"1");
    name = u"cd";
    EXPECT_EQ(std::u16string(nodes->CreateElement(name.c_str(), 0).getTagName()), u"cd");
    name = u"<>";
    EXPECT_THROW(nodes->CreateElement(name.c_str(), 0), xercesc::DOMException);
    EXPECT_EQ(std::u16string(element.getTagName()), u"ab");
    EXPECT_TRUE(element.hasAttribute(u"ab"));
}

}  // namespace
}  // namespace tses
