#include "toolkit/DocumentScan.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/FileContent.h"
#include "toolkit/SessionContent.h"
#include "toolkit/TextPlaces.h"

namespace toolkit {
namespace {

class LibraryUse {
public:
    LibraryUse() { xercesc::XMLPlatformUtils::Initialize(); }
    ~LibraryUse() { xercesc::XMLPlatformUtils::Terminate(); }
    LibraryUse(const LibraryUse&) = delete;
    LibraryUse& operator=(const LibraryUse&) = delete;
};

/// The document, which ends early for a parser that is to stop.
class ContentSource final : public xercesc::InputSource {
public:
    ContentSource(std::string_view content, const std::stop_token& stop)
        : InputSource(u"session"), content_(content), stop_(stop) {}

    xercesc::BinInputStream* makeStream() const override { return new Stream(content_, stop_); }

private:
    class Stream final : public xercesc::BinMemInputStream {
    public:
        Stream(std::string_view content, const std::stop_token& stop)
            : BinMemInputStream(reinterpret_cast<const XMLByte*>(content.data()), content.size(),
                                BufOpt_Reference),
              stop_(stop) {}

        XMLSize_t readBytes(XMLByte* block, XMLSize_t size) override {
            return stop_.stop_requested() ? 0 : BinMemInputStream::readBytes(block, size);
        }

    private:
        const std::stop_token& stop_;
    };

    std::string_view content_;
    const std::stop_token& stop_;
};

std::u16string_view ViewOf(const XMLCh* text) {
    return text != nullptr ? std::u16string_view(text) : std::u16string_view();
}

bool IsWhiteSpace(std::u16string_view text) {
    return text.find_first_not_of(u" \t\r\n\u0085\u2028") == std::u16string_view::npos;
}

std::string Tag(std::u16string_view name) {
    return "<" + kelcore::UTF16to8(name) + ">";
}

/// A text in quotes, on one line and short enough for a message.
std::string Quoted(std::u16string_view text) {
    constexpr std::size_t kLongest = 40;
    std::u16string shown(text.substr(0, kLongest));
    std::replace_if(
        shown.begin(), shown.end(),
        [](char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }, u' ');
    return "\"" + kelcore::UTF16to8(shown) + (text.size() > kLongest ? "...\"" : "\"");
}

/// As deep as the plug-in reads.
constexpr std::size_t kDeepest = 256;

/// Where a tag ends, which is what the parser tells.
struct TagEnd {
    Place place;         ///< behind the tag
    std::size_t offset;  ///< the same in bytes
};

/// Where a tag begins. To be asked only for tags that are told of: it looks for the place.
Place BeginOf(const TagEnd& end, std::string_view document) {
    const std::size_t begin = HasByteSizedMarkup(document)
                                  ? document.substr(0, end.offset).rfind('<')
                                  : std::string_view::npos;
    if (begin == std::string_view::npos) {
        return end.place;
    }
    return {end.place.line - CountLineEnds(document.substr(begin, end.offset - begin)),
            ColumnOf(document, begin)};
}

class Scanner final : public xercesc::DefaultHandler {
public:
    Scanner(std::string_view content, std::size_t limit, DocumentScan& result)
        : content_(content), limit_(limit), result_(result) {
        // The same events for a document without a document type, in less time.
        parser_.setProperty(xercesc::XMLUni::fgXercesScannerName,
                            const_cast<XMLCh*>(xercesc::XMLUni::fgDGXMLScanner));
        parser_.setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
        parser_.setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, true);
        parser_.setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
        parser_.setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
        parser_.setFeature(xercesc::XMLUni::fgXercesCalculateSrcOfs, true);
        parser_.setContentHandler(this);
        parser_.setErrorHandler(this);
        parser_.setLexicalHandler(this);
    }

    void Run(const std::stop_token& stop) {
        const ContentSource source(content_, stop);
        try {
            parser_.parse(source);
        } catch (const Ended&) {
            return;
        } catch (const xercesc::XMLException& failure) {
            NotWellFormed({}, failure.getMessage());
        }
    }

    void setDocumentLocator(const xercesc::Locator* locator) override { locator_ = locator; }

    void startDTD(const XMLCh*, const XMLCh*, const XMLCh*) override {
        End({BeginOfTag(), "a document type declaration", "a session file has none"});
    }

    void startElement(const XMLCh*, const XMLCh* localName, const XMLCh*,
                      const xercesc::Attributes& attributes) override {
        const std::u16string_view name = ViewOf(localName);
        if (open_.empty() && name != kRootElement) {
            End({BeginOfTag(), "the root element is " + Tag(name) + ", not " + Tag(kRootElement),
                 "not a session file"});
        }
        if (open_.size() + lost_.depth > kDeepest) {
            End({BeginOfTag(), "elements nested too deep",
                 "a session nests fewer than 256 levels"});
        }
        if (lost_.depth != 0) {
            ++lost_.depth;
            ++lost_.elements;
            return;
        }
        const CarriedElement* const row =
            FindCarriedElement(name, open_.empty() ? u"" : open_.back().row->scope);
        if (row == nullptr) {
            lost_ = {std::u16string(name), Here(), 1, 0};
            return;
        }
        CheckOccurrence(*row, attributes);
        CheckAttributes(*row, attributes);
        open_.push_back({row, Here(), {}, false});
    }

    void endElement(const XMLCh*, const XMLCh*, const XMLCh*) override {
        if (lost_.depth == 0) {
            open_.pop_back();
        } else if (--lost_.depth == 0) {
            EndLost();
        }
    }

    void characters(const XMLCh* text, XMLSize_t length) override {
        if (lost_.depth != 0 || open_.empty() || open_.back().row->hasText ||
            open_.back().textReported || IsWhiteSpace({text, length})) {
            return;
        }
        open_.back().textReported = true;
        Report(open_.back().tag, "text in " + Tag(open_.back().row->name));
    }

    void error(const xercesc::SAXParseException& exception) override { fatalError(exception); }

    void fatalError(const xercesc::SAXParseException& exception) override {
        NotWellFormed({exception.getLineNumber(), exception.getColumnNumber()},
                      exception.getMessage());
        throw Ended();
    }

private:
    /// Ends the parse from within a callback.
    struct Ended {};

    struct OpenElement {
        const CarriedElement* row;
        TagEnd tag;
        std::vector<const CarriedElement*> seenOnce;  // of its children
        bool textReported;
    };

    /// The outermost element that is not carried, while the scan is inside it.
    struct LostElement {
        std::u16string name;
        TagEnd tag{};
        std::size_t depth = 0;
        std::size_t elements = 0;
    };

    TagEnd Here() const {
        return {{locator_->getLineNumber(), locator_->getColumnNumber()},
                static_cast<std::size_t>(parser_.getSrcOffset())};
    }

    Place BeginOfTag() const { return BeginOf(Here(), content_); }

    void Report(const TagEnd& tag, std::string what) {
        if (result_.notCarriedCount++ < limit_) {
            result_.notCarried.push_back({BeginOf(tag, content_), std::move(what)});
        }
    }

    [[noreturn]] void End(Problem problem) {
        result_.problem = std::move(problem);
        throw Ended();
    }

    void NotWellFormed(Place place, const XMLCh* message) {
        result_.problem = Problem{place, "not well-formed XML", kelcore::UTF16to8(ViewOf(message))};
    }

    void EndLost() {
        std::string what = Tag(lost_.name) + " in " + Tag(open_.back().row->name);
        if (lost_.elements != 0) {
            what += " with " + std::to_string(lost_.elements) +
                    (lost_.elements == 1 ? " element in it" : " elements in it");
        }
        Report(lost_.tag, std::move(what));
    }

    void CheckOccurrence(const CarriedElement& row, const xercesc::Attributes& attributes) {
        if (open_.empty()) {
            return;
        }
        if (row.occurrence == Occurrence::Once) {
            auto& seen = open_.back().seenOnce;
            if (std::find(seen.begin(), seen.end(), &row) != seen.end()) {
                Report(Here(), "a second " + Tag(row.name));
            }
            seen.push_back(&row);
        } else if (row.occurrence == Occurrence::ById) {
            CheckId(row, attributes);
        }
    }

    void CheckId(const CarriedElement& row, const xercesc::Attributes& attributes) {
        kelcore::uint32 id = kNoId;
        kelcore::StringToNumber(IdText(attributes), id);
        if (id == kNoId) {
            Report(Here(), Tag(row.name) + " without an id");
        } else if (!ids_.insert({&row, id}).second) {
            Report(Here(), "a second " + Tag(row.name) + " with id " + std::to_string(id));
        }
    }

    void CheckAttributes(const CarriedElement& row, const xercesc::Attributes& attributes) {
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            const std::u16string_view name = ViewOf(attributes.getLocalName(i));
            const CarriedAttribute* const attribute = FindCarriedAttribute(row, name);
            const std::u16string_view value = ViewOf(attributes.getValue(i));
            if (attribute == nullptr || HidesBehindAnother(attributes, i)) {
                Report(Here(), "the attribute " +
                                   kelcore::UTF16to8(ViewOf(attributes.getQName(i))) + " of " +
                                   Tag(row.name));
            } else if (!IsCarriedValue(attribute->kind, value)) {
                Report(Here(), "the value " + Quoted(value) + " of the attribute " +
                                   kelcore::UTF16to8(name) + " of " + Tag(row.name));
            }
        }
    }

    static std::u16string_view IdText(const xercesc::Attributes& attributes) {
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            if (ViewOf(attributes.getLocalName(i)) == u"id" && !HidesBehindAnother(attributes, i)) {
                return ViewOf(attributes.getValue(i));
            }
        }
        return {};
    }

    /// A prefix is ignored on reading, so of two attributes with one local name only one counts:
    /// the one without a prefix, or else the last.
    static bool HidesBehindAnother(const xercesc::Attributes& attributes, XMLSize_t index) {
        const std::u16string_view name = ViewOf(attributes.getLocalName(index));
        if (ViewOf(attributes.getQName(index)) == name) {
            return false;
        }
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            const bool same = i != index && ViewOf(attributes.getLocalName(i)) == name;
            if (same && (i > index || ViewOf(attributes.getQName(i)) == name)) {
                return true;
            }
        }
        return false;
    }

    std::string_view content_;
    std::size_t limit_;
    DocumentScan& result_;
    xercesc::SAX2XMLReaderImpl parser_;
    const xercesc::Locator* locator_ = nullptr;
    std::vector<OpenElement> open_;
    LostElement lost_;
    std::set<std::pair<const CarriedElement*, kelcore::uint32>> ids_;
};

Problem NotUtf8(std::string_view content, std::size_t offset) {
    const Place place = {CountLineEnds(content.substr(0, offset)) + 1, ColumnOf(content, offset)};
    return {place, "not UTF-8", "save it as UTF-8, or let the XML declaration state its encoding"};
}

void ScanContent(std::string_view content, std::size_t limit, const std::stop_token& stop,
                 DocumentScan& result) {
    const LibraryUse library;
    Scanner(content, limit, result).Run(stop);
    if (result.problem) {
        // The parser decodes ahead of where it reads, so that it does not know where that fails.
        if (const auto offset = FindMalformedUtf8(content)) {
            result.problem = NotUtf8(content, *offset);
        }
    }
}

}  // namespace

DocumentScan ScanDocument(const std::string& path, std::size_t limit, const std::stop_token& stop) {
    DocumentScan result;
    auto content = ReadFileContent(path, stop);
    if (auto* const problem = std::get_if<Problem>(&content)) {
        result.problem = std::move(*problem);
    } else if (std::get<std::string>(content).empty()) {
        result.problem = Problem{{}, "the file is empty", "not a session file"};
    } else {
        ScanContent(std::get<std::string>(content), limit, stop, result);
    }
    if (stop.stop_requested()) {
        result.problem.reset();
    }
    return result;
}

}  // namespace toolkit
