#include "toolkit/scan/ContentScan.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <new>
#include <optional>
#include <set>
#include <utility>
#include <variant>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "format/Elements.h"
#include "format/Ids.h"
#include "format/Limits.h"
#include "platform/kelcore/BinaryText.h"
#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/CharacterPlaces.h"
#include "toolkit/ValueCheck.h"
#include "toolkit/scan/ContentSource.h"
#include "toolkit/scan/JointLosses.h"
#include "toolkit/scan/LossWords.h"
#include "toolkit/scan/MarkupReader.h"
#include "toolkit/scan/ParsedAttributes.h"
#include "toolkit/scan/ScannedAttributes.h"
#include "toolkit/scan/TagPlaces.h"

namespace toolkit {
namespace {

using tses::Attribute;
using tses::Element;
using tses::kNoId;
using tses::Occurrence;
using tses::TextKind;
using tses::ValueKind;

/// The element of that name in a parent of that State; null if what it says is lost.
const Element* FindCarried(std::u16string_view name, tses::State parent) {
    const Element* const element = tses::FindElement(name, parent);
    return element != nullptr && !element->isDropped ? element : nullptr;
}

bool IsWhiteSpace(std::u16string_view text) {
    return text.find_first_not_of(u" \t\r\n\u0085\u2028") == std::u16string_view::npos;
}

/// Attributes and declarations of namespaces together.
constexpr XMLSize_t kMostAttributes = tses::limits::kAttributes + tses::limits::kPrefixes;

class Scanner final : public xercesc::DefaultHandler, public MarkupHandler {
public:
    /// @param content  the document, in which to find places; null if they do not matter
    Scanner(const std::string_view* content, const Conversion& conversion, std::size_t limit,
            const std::stop_token& stop, DocumentScan& result)
        : content_(content),
          limit_(limit),
          stop_(stop),
          result_(result),
          target_(conversion.target),
          length_(limit == std::numeric_limits<std::size_t>::max() ? Length::Whole : Length::Short),
          joint_(conversion, length_),
          parser_(*this) {
        // For a document without a document type, this scanner gives the same events in less time.
        parser_.setProperty(xercesc::XMLUni::fgXercesScannerName,
                            const_cast<XMLCh*>(xercesc::XMLUni::fgDGXMLScanner));
        parser_.setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
        parser_.setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, true);
        parser_.setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
        parser_.setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
        parser_.setFeature(xercesc::XMLUni::fgXercesCalculateSrcOfs, content != nullptr);
        parser_.setContentHandler(this);
        parser_.setErrorHandler(this);
        parser_.setLexicalHandler(this);
    }

    void Run(const NextBytes& next) {
        const ContentSource source(
            [&] { return stop_.stop_requested() ? std::string_view() : next(); });
        try {
            parser_.parse(source);
        } catch (const Ended&) {
            return;
        } catch (const xercesc::XMLException& failure) {
            NotWellFormed({}, failure.getMessage());
        } catch (const xercesc::OutOfMemoryException&) {
            throw std::bad_alloc();
        }
    }

    /// Scans what `ReadMarkup` reads, and returns what it does. Ends at the first thing to report.
    bool ReadsAll(const NextBytes& next) {
        try {
            return ReadMarkup(next, *this);
        } catch (const Ended&) {
            return false;
        }
    }

    /// Adds the places of everything that was found.
    void FindPlaces() {
        if (content_ != nullptr) {
            FindPlaces(tags_, result_.notCarried);
            FindPlaces(endingTags_, result_.endTheRead);
        }
    }

    void setDocumentLocator(const xercesc::Locator* locator) override { locator_ = locator; }

    void startDTD(const XMLCh*, const XMLCh*, const XMLCh*) override {
        End({BeginOfTag(), "a document type declaration", "a session file has none"});
    }

    void StartElement(std::u16string_view name, const ScannedAttributes& attributes) override {
        ++elementCount_;
        if (open_.empty() && name != tses::kRootElement.name) {
            End({BeginOfTag(),
                 "the root element is " + Tag(name) + ", not " + Tag(tses::kRootElement.name),
                 "not a session file"});
        }
        if (open_.size() + lost_.depth >= tses::limits::kDepth) {
            End({BeginOfTag(), "elements nested too deep",
                 fmt::format("a session nests at most {} levels", tses::limits::kDepth)});
        }
        if (attributes.Count() > kMostAttributes) {
            End({BeginOfTag(), "too many attributes in one tag", "a session has a few"});
        }
        if (stop_.stop_requested()) {
            throw Ended();
        }
        if (lost_.depth != 0) {
            ++lost_.depth;
            ++lost_.elements;
            return;
        }
        const Element* const row = FindRow(name);
        if (row == nullptr) {
            lost_ = {std::u16string(name), Here(), CauseOfLoss(name), 1, 0};
            return;
        }
        if (!open_.empty()) {
            CheckOccurrence(*row);
            CheckKey(*row, attributes);
        }
        CheckAttributes(*row, attributes);
        Report(Here(), joint_.AtStart(row->name, attributes));
        open_.push_back({row, Here()});
    }

    void EndElement() override {
        if (lost_.depth == 0) {
            CheckBase64(open_.back());
            Report(open_.back().tag, joint_.AtEnd(open_.back().row->name));
            open_.pop_back();
        } else if (--lost_.depth == 0) {
            EndLost();
        }
    }

    void Characters(std::u16string_view text) override {
        if (lost_.depth != 0 || open_.empty()) {
            return;
        }
        OpenElement& element = open_.back();
        if (element.row->text == TextKind::Base64) {
            element.base64 += text;
        } else if (element.row->text == TextKind::None && !element.textReported &&
                   !IsWhiteSpace(text)) {
            element.textReported = true;
            Report(element.tag, {LossCause::StrayText}, "text in " + Tag(element.row->name));
        }
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

    /// The library's SAX2 parser, except that tags and texts come directly from its scanner.
    /// Passing them on through the calls of SAX2 took a tenth of a scan.
    class Parser final : public xercesc::SAX2XMLReaderImpl {
    public:
        explicit Parser(Scanner& scanner) : scanner_(scanner) {}

        void startElement(const xercesc::XMLElementDecl& declaration, unsigned int /*uri*/,
                          const XMLCh* /*prefix*/, const ParsedAttributes::List& attributes,
                          XMLSize_t count, bool isEmpty, bool /*isRoot*/) override {
            scanner_.StartElement(ViewOf(declaration.getBaseName()),
                                  attributes_.Take(attributes, count));
            if (isEmpty) {
                scanner_.EndElement();
            }
        }
        void endElement(const xercesc::XMLElementDecl& /*declaration*/, unsigned int /*uri*/,
                        bool /*isRoot*/, const XMLCh* /*prefix*/) override {
            scanner_.EndElement();
        }
        void docCharacters(const XMLCh* text, XMLSize_t length, bool /*isSection*/) override {
            scanner_.Characters({text, length});
        }

    private:
        Scanner& scanner_;
        ParsedAttributes attributes_;
    };

    /// Two spellings of a number are the same key.
    using Key = std::variant<kelcore::uint32, std::u16string>;

    /// A tag, and the number of its element.
    struct Spot {
        TagEnd tag{};
        std::size_t element = 0;
    };

    struct OpenElement {
        const Element* row;
        Spot tag;
        const Element* latest = nullptr;                            // of its children
        std::vector<const Element*> seenOnce = {};                  // of its children
        std::set<std::pair<const Element*, Key>> seenWithKey = {};  // of its children
        bool textReported = false;
        std::u16string base64 = {};
    };

    /// The outermost element that is not carried, while the scan is inside it.
    struct LostElement {
        std::u16string name;
        Spot tag{};
        LossCause cause{};
        std::size_t depth = 0;
        std::size_t elements = 0;
    };

    void FindPlaces(const std::vector<TagEnd>& tags, std::vector<NotCarried>& found) const {
        const std::vector<Place> places = BeginsOf(tags, *content_);
        for (std::size_t i = 0; i < places.size(); ++i) {
            found[i].place = places[i];
        }
    }

    Spot Here() const {
        const std::size_t element = elementCount_ - 1;
        if (content_ == nullptr) {
            return {{}, element};
        }
        return {{{locator_->getLineNumber(), locator_->getColumnNumber()},
                 static_cast<std::size_t>(parser_.getSrcOffset())},
                element};
    }

    Place BeginOfTag() const {
        return content_ != nullptr ? BeginsOf({Here().tag}, *content_).front() : Place{};
    }

    /// Why an element that is not carried is lost.
    LossCause CauseOfLoss(std::u16string_view name) const {
        return tses::FindElement(name, open_.back().row->state) != nullptr
                   ? LossCause::IgnoredElement
                   : LossCause::UnknownElement;
    }

    /// Elements of one kind stand together, so this tries the kind of the previous one first.
    const Element* FindRow(std::u16string_view name) {
        if (open_.empty()) {
            return name == tses::kRootElement.name ? &tses::kRootElement : nullptr;
        }
        OpenElement& parent = open_.back();
        if (parent.latest == nullptr || parent.latest->name != name) {
            parent.latest = FindCarried(name, parent.row->state);
        }
        return parent.latest;
    }

    struct Cause {
        LossCause cause;
        std::u16string_view attribute = {};
    };

    void Report(const Spot& spot, const Cause& cause, std::string what) {
        if (result_.notCarriedCount++ < limit_) {
            result_.notCarried.push_back(
                {{}, std::move(what), cause.cause, spot.element, std::u16string(cause.attribute)});
            tags_.push_back(spot.tag);
        } else if (limit_ == 0) {
            throw Ended();
        }
    }

    void Report(const Spot& spot, std::vector<std::string> losses) {
        for (std::string& what : losses) {
            Report(spot, {LossCause::Joint}, std::move(what));
        }
    }

    [[noreturn]] void End(Problem problem) {
        result_.problem = std::move(problem);
        throw Ended();
    }

    /// If the first line cannot be decoded, the parser knows no place.
    void NotWellFormed(Place place, const XMLCh* message) {
        if (place.line == 0) {
            place = {1, 1};
        }
        if (content_ != nullptr) {
            place = InCharacters(*content_, place);
        }
        result_.problem =
            Problem{place, "not well-formed XML", kelcore::UTF16to8(ViewOf(message)), true};
    }

    void EndLost() {
        std::string what = Tag(lost_.name) + " in " + Tag(open_.back().row->name);
        if (lost_.elements != 0) {
            what += " with " + std::to_string(lost_.elements) +
                    (lost_.elements == 1 ? " element in it" : " elements in it");
        }
        Report(lost_.tag, {lost_.cause}, std::move(what));
    }

    void CheckOccurrence(const Element& row) {
        if (!row.occurrence.once) {
            return;
        }
        auto& seen = open_.back().seenOnce;
        if (std::find(seen.begin(), seen.end(), &row) != seen.end()) {
            Report(Here(), {LossCause::RepeatedElement}, "a second " + Tag(row.name));
        }
        seen.push_back(&row);
    }

    void CheckKey(const Element& row, const ScannedAttributes& attributes) {
        const Occurrence& occurrence = row.occurrence;
        if (occurrence.key.empty()) {
            return;
        }
        const std::optional<std::u16string_view> text = attributes.Find(occurrence.key);
        const Key key = KeyOf(row, text);
        const bool isMissing = !text || (occurrence.mayNameNone && key == Key(kNoId));
        if (isMissing && IsLostWithoutKey(occurrence)) {
            ReportWithoutKey(row, text);
        } else if (!IsFirst(row, key)) {
            const std::string what =
                occurrence.among.empty() ? Tag(row.name) : std::string(occurrence.among);
            Report(Here(), {LossCause::RepeatedKey, occurrence.key},
                   "a second " + what + " with " + kelcore::UTF16to8(occurrence.key) + " " +
                       Shown(key));
        }
    }

    bool IsLostWithoutKey(const Occurrence& occurrence) const {
        using enum Occurrence::WithoutKey;
        return occurrence.withoutKey != IsCarried &&
               (occurrence.withoutKey != IsNotSaved || target_ == Target::SessionFile);
    }

    static bool IsWhole(ValueKind kind) {
        return kind == ValueKind::Unsigned || kind == ValueKind::Signed;
    }

    static Key KeyOf(const Element& row, std::optional<std::u16string_view> text) {
        if (!IsWhole(row.FindAttribute(row.occurrence.key)->kind)) {
            return std::u16string(text.value_or(u""));
        }
        kelcore::uint32 number = row.occurrence.mayNameNone ? kNoId : 0;
        kelcore::StringToNumber(text.value_or(u""), number);
        return number;
    }

    std::string Shown(const Key& key) const {
        const auto* const number = std::get_if<kelcore::uint32>(&key);
        return number != nullptr ? std::to_string(*number)
                                 : Quoted(std::get<std::u16string>(key), length_);
    }

    /// Whether this is the first element with the key, among those that must have different keys.
    bool IsFirst(const Element& row, const Key& key) {
        switch (row.occurrence.unique) {
            case Occurrence::Unique::Nowhere:
                return true;
            case Occurrence::Unique::InParent:
                return open_.back().seenWithKey.insert({&row, key}).second;
            case Occurrence::Unique::InSession:
                return seenInSession_.insert({row.occurrence.among, key}).second;
        }
        return true;
    }

    void ReportWithoutKey(const Element& row, std::optional<std::u16string_view> text) {
        const std::string key = kelcore::UTF16to8(row.occurrence.key);
        std::string what = text ? Tag(row.name) + " with the " + key + " " +
                                      Quoted(*text, length_) + ", which means \"no " + key + "\""
                                : Tag(row.name) + " without " + (key == "id" ? "an id" : key);
        const bool endsTheRead = row.occurrence.withoutKey == Occurrence::WithoutKey::EndsTheRead;
        if (endsTheRead && result_.endTheRead.size() < limit_) {
            result_.endTheRead.push_back({{}, what});
            endingTags_.push_back(Here().tag);
        }
        Report(Here(),
               {endsTheRead ? LossCause::MissingKeyThatEndsTheRead : LossCause::MissingKey,
                row.occurrence.key},
               std::move(what));
    }

    void CheckBase64(const OpenElement& element) {
        if (element.row->text != TextKind::Base64) {
            return;
        }
        std::vector<kelcore::byte> ignored;
        if (!kelcore::DecodeBinaryDataFromUTF16String(element.base64, ignored)) {
            Report(element.tag, {LossCause::NotBase64},
                   "the text of " + Tag(element.row->name) + ", which is not Base64");
        }
    }

    void CheckAttributes(const Element& row, const ScannedAttributes& attributes) {
        for (std::size_t i = 0; i < attributes.Count(); ++i) {
            const ScannedAttribute& attribute = attributes.At(i);
            if (attribute.DeclaresNamespace()) {
                continue;
            }
            const Attribute* const known = row.FindAttribute(attribute.LocalName());
            const std::u16string_view value = attribute.Value();
            if (const auto cause = CauseOfLoss(known, attributes, i)) {
                Report(Here(), {*cause, attribute.QualifiedName()},
                       "the attribute " + kelcore::UTF16to8(attribute.QualifiedName()) + " of " +
                           Tag(row.name));
            } else if (!IsValue(known->kind, known->words, value, target_)) {
                Report(Here(), {LossCause::WrongValue, attribute.QualifiedName()},
                       ValueOf(known->name, row.name, value, length_));
            }
        }
    }

    /// Why an attribute is lost whatever its value; no value if it is carried.
    /// @param known  null if the element has no such attribute
    static std::optional<LossCause> CauseOfLoss(const Attribute* known,
                                                const ScannedAttributes& attributes,
                                                std::size_t index) {
        if (known == nullptr) {
            return LossCause::UnknownAttribute;
        }
        if (known->isDropped) {
            return LossCause::IgnoredAttribute;
        }
        return attributes.HidesBehindAnother(index) || attributes.Find(known->yieldsTo)
                   ? std::optional(LossCause::HiddenAttribute)
                   : std::nullopt;
    }

    const std::string_view* content_;
    std::size_t limit_;
    const std::stop_token& stop_;
    DocumentScan& result_;
    Target target_;
    Length length_;
    JointLosses joint_;
    Parser parser_;
    const xercesc::Locator* locator_ = nullptr;
    std::vector<TagEnd> tags_;        // of what is not carried
    std::vector<TagEnd> endingTags_;  // of what ends the read
    std::size_t elementCount_ = 0;
    std::vector<OpenElement> open_;
    LostElement lost_;
    std::set<std::pair<std::string_view, Key>> seenInSession_;
};

}  // namespace

bool IsKnownAsClean(const NextBytes& next, const Conversion& conversion,
                    const std::stop_token& stop) {
    DocumentScan result;
    return Scanner(nullptr, conversion, 0, stop, result).ReadsAll(next) && !result.problem &&
           result.notCarriedCount == 0;
}

DocumentScan ScanContent(std::string_view content, const Conversion& conversion, std::size_t limit,
                         const std::stop_token& stop) {
    DocumentScan result;
    Scanner scanner(&content, conversion, limit, stop, result);
    scanner.Run([rest = content]() mutable { return std::exchange(rest, {}); });
    scanner.FindPlaces();
    return result;
}

}  // namespace toolkit
