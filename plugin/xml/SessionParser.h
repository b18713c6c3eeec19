#pragma once

#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>

#include "plugin/xml/SessionXMLDefaultHandler.h"

namespace tses {

/// The library's SAX2 parser, except that elements without prefixes and namespaces go to the
/// handler as the scanner has them. All elements of a saved session are like that. Searching their
/// attributes for namespaces and handing them out one by one took 0.06 of a parse.
class SessionParser final : public xercesc::SAX2XMLReaderImpl {
public:
    /// The handler gets all events and must outlive the parser.
    explicit SessionParser(SessionXMLDefaultHandler& handler);

    void XMLDecl(const XMLCh* version, const XMLCh* declaredEncoding, const XMLCh* standalone,
                 const XMLCh* encoding) override;
    void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uri,
                      const XMLCh* prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                      XMLSize_t attributeCount, bool isEmpty, bool isRoot) override;
    void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uri, bool isRoot,
                    const XMLCh* prefix) override;
    void docCharacters(const XMLCh* text, XMLSize_t length, bool isSection) override;

private:
    SessionXMLDefaultHandler& handler_;
};

}  // namespace tses
