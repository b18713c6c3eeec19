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

/// Ends the parse of a document that was refused.
class DocumentRefused : public ReportedFailure {
public:
    DocumentRefused() : ReportedFailure("document refused.") {}
};

/// Turns the XML library's callbacks into the plug-in's own events. Either receiver may be null;
/// its events are then dropped. If the watch refuses the document, the handler reports a fatal
/// error and ends the parse with a `DocumentRefused`, unless the receiver ends it first.
class SessionXMLDefaultHandler final : public xercesc::DefaultHandler {
public:
    SessionXMLDefaultHandler(SAXContentHandler* content, SAXErrorHandler* errors)
        : content_(content), errors_(errors) {}

    /// Whether a fatal error was reported since the document's start. The parser stops after one,
    /// even if the receiver lets it pass, so the document was not read to its end.
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

    /// The start and the end of an element in no namespace and without prefixed attributes, as the
    /// scanner reports them. If an element's start comes here, its end must too.
    void StartPlainElement(const XMLCh* name,
                           const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                           XMLSize_t count);
    void EndPlainElement();
    bool IsInPlainElement() const { return IsInElement() && openElements_.back().isPlain; }
    bool IsInElement() const { return !openElements_.empty(); }

    /// The watch over the current parse.
    DocumentWatch& Watch() noexcept { return watch_; }
    const DocumentWatch& Watch() const noexcept { return watch_; }

private:
    /// An open element's namespace, which the scanner forgets, and its name. The texts belong to
    /// the parser, which keeps them as long as the element is open.
    struct OpenElement {
        std::u16string_view uri;
        std::u16string_view localName;
        bool isPlain;
    };

    void Start(const OpenElement& element, std::u16string_view qualifiedName);
    void End(std::u16string_view localName, std::u16string_view qualifiedName);

    /// Whether the name of a plain element at this address was seen recently. The scanner keeps
    /// each different name once, at one address.
    bool IsRecent(const XMLCh* name);
    [[noreturn]] void Refuse(std::u16string_view reason, std::optional<DocumentPlace> place);

    SAXContentHandler* content_;
    SAXErrorHandler* errors_;
    TagAttributes attributes_;  // filled anew for every start tag
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
