#pragma once

#include <array>
#include <vector>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/RefVectorOf.hpp>

#include "plugin/xml/DocumentWatch.h"
#include "plugin/xml/FailureTrace.h"
#include "plugin/xml/SAXHandlers.h"

namespace tses {

/// Ends the parse of a document that is no session's.
class DocumentRefused : public ReportedFailure {
public:
    DocumentRefused() : ReportedFailure("document refused.") {}
};

/// Turns the XML library's callbacks into the plug-in's own events. Either receiver may be null;
/// what would go to it is then dropped. A document that its watch refuses is told of as a fatal
/// error, and the parse ends with a `DocumentRefused` if the receiver does not end it.
class SessionXMLDefaultHandler final : public xercesc::DefaultHandler {
public:
    SessionXMLDefaultHandler(SAXContentHandler* content, SAXErrorHandler* errors)
        : content_(content), errors_(errors) {}

    /// Whether a fatal error was reported since the document's start. The parser stops after one,
    /// also when the receiver lets it pass, so the document was then not read to its end.
    bool SawFatalError() const noexcept { return sawFatalError_; }

    void setDocumentLocator(const xercesc::Locator* locator) override { locator_ = locator; }
    void startDocument() override;
    void endDocument() override;
    void startElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName,
                      const xercesc::Attributes& attributes) override;
    void endElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName) override;
    void characters(const XMLCh* text, XMLSize_t length) override;
    void processingInstruction(const XMLCh* target, const XMLCh* data) override;
    void comment(const XMLCh* text, XMLSize_t length) override;
    void startPrefixMapping(const XMLCh* prefix, const XMLCh* uri) override;
    void endPrefixMapping(const XMLCh* prefix) override;
    void startDTD(const XMLCh* name, const XMLCh* publicId, const XMLCh* systemId) override;

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;

    void BeforeParse(std::u16string_view systemId);

    /// The start and the end of an element in no namespace, none of whose attributes has a prefix,
    /// as the scanner tells of them. Where these tell of the start, they must of the end.
    void StartPlainElement(const XMLCh* name,
                           const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                           XMLSize_t count);
    void EndPlainElement();
    bool IsInPlainElement() const { return IsInElement() && openElements_.back().isPlain; }
    bool IsInElement() const { return !openElements_.empty(); }

    /// What is told how the parse goes.
    DocumentWatch& Watch() noexcept { return watch_; }
    const DocumentWatch& Watch() const noexcept { return watch_; }

private:
    /// Its namespace, which the scanner forgets, and its name. The texts are the parser's, which
    /// keeps them as long as the element is open.
    struct OpenElement {
        std::u16string_view uri;
        std::u16string_view localName;
        bool isPlain;
    };

    void Start(const OpenElement& element, std::u16string_view qualifiedName);
    void End(std::u16string_view localName, std::u16string_view qualifiedName);

    /// Whether a plain element's name at this address was seen not long ago. The scanner keeps the
    /// name of all that share it once, at one address.
    bool IsRecent(const XMLCh* name);
    [[noreturn]] void Refuse(std::u16string_view reason, std::optional<DocumentPlace> place);

    SAXContentHandler* content_;
    SAXErrorHandler* errors_;
    TagAttributes attributes_;  // filled anew for every start tag, its room kept
    DocumentWatch watch_{[this](std::u16string_view reason, std::optional<DocumentPlace> place) {
        Refuse(reason, place);
    }};
    std::vector<OpenElement> openElements_;
    std::array<const XMLCh*, 256> recentNames_{};
    std::u16string systemId_;
    const xercesc::Locator* locator_ = nullptr;  // valid during a parse
    bool sawFatalError_ = false;
};

}  // namespace tses
