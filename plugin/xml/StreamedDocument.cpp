#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "format/CarriableText.h"
#include "format/Names.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/ContentBuffer.h"
#include "plugin/xml/Layout.h"
#include "plugin/xml/SessionDocument.h"
#include "plugin/xml/XercesPlatform.h"
#include "plugin/xml/XmlText.h"

// Writes every tag and text into one buffer as soon as it is known. Only two things are known at
// the end: the attributes of the document element, which stands first, and the version of the
// document, which any text can change. What depends on the version is kept aside in both forms, as
// a place.

namespace tses {
namespace {

using xml::Indentation;
using xml::Layout;

constexpr std::array kVersions = {XmlVersion::V1_0, XmlVersion::V1_1};

/// Something for each version that a document can have.
template <class Value>
using PerVersion = std::array<Value, kVersions.size()>;

std::size_t IndexOf(XmlVersion version) {
    return version == XmlVersion::V1_0 ? 0 : 1;
}

/// Where something belongs in the buffer that is not in it.
struct Place {
    std::size_t offset;
    PerVersion<std::size_t> size{};  ///< of what is kept aside for it
    PerVersion<bool> isComplete{};   ///< no character was replaced
};

struct OpenElement {
    std::u16string_view name;
    PerVersion<Layout::Line> line;  ///< of its start tag
    bool hasContent = false;        ///< the start tag is closed
};

/// How far a document has got.
struct Progress {
    std::vector<OpenElement> open;
    PerVersion<Layout> layouts;
    std::size_t size = 0;
    std::size_t places = 0;
    PerVersion<std::size_t> aside{};
};

/// What a serialised document has in its buffer besides the content.
struct Inserted {
    std::size_t version = 0;     ///< of the places
    std::size_t headGrowth = 0;  ///< by which the head is longer than when the content began
};

void Append(ContentBuffer& content, std::span<const kelcore::byte> bytes) {
    content.Append(bytes.data(), bytes.size());
}

void AppendIndentation(ContentBuffer& content, const Indentation& indentation) {
    kelcore::byte* end = content.Room(indentation.lineEnds + indentation.blanks);
    end = std::fill_n(end, indentation.lineEnds, kelcore::byte{'\n'});
    end = std::fill_n(end, indentation.blanks, kelcore::byte{' '});
    content.SetEnd(end);
}

/// The two parts of an attribute: what comes before its value, and what comes after.
void BeginAttribute(ContentBuffer& content, std::u16string_view name) {
    xml::AppendMarkup(content, " ");
    xml::AppendName(content, name);
    xml::AppendMarkup(content, "=\"");
}
void EndAttribute(ContentBuffer& content) {
    xml::AppendMarkup(content, "\"");
}

class StreamedDocument final : public SessionDocument {
public:
    StreamedDocument() {
        for (Layout& layout : now_.layouts) {
            layout.BeforeStart(0);
        }
        now_.open.push_back({names::orvo, CurrentLines()});
    }

    void SetRootAttributes(const AttributeMap& attributes) override {
        for (const auto& attribute : attributes) {
            rootAttributes_.Set(attribute.name, attribute.value);
        }
    }

    void StartElement(std::u16string_view name, const AttributeMap& attributes) override {
        BeginContent();
        const auto level = static_cast<std::uint32_t>(now_.open.size());
        Indent([&](Layout& layout, std::size_t) { return layout.BeforeStart(level); });
        xml::AppendMarkup(body_, "<");
        xml::AppendName(body_, name);
        for (const auto& attribute : attributes) {
            if (!xml::AppendPlainAttribute(body_, attribute.name, attribute.value)) {
                BeginAttribute(body_, attribute.name);
                AppendText(attribute.value, TextPlace::Attribute);
                EndAttribute(body_);
            }
        }
        now_.open.push_back({name, CurrentLines()});
    }

    void Text(std::u16string_view text) override {
        if (NeedsXml11(text)) {
            version_ = XmlVersion::V1_1;
        }
        BeginContent();
        AppendText(text, TextPlace::Text);
    }

    void Characters(std::u16string_view text) override {
        BeginContent();
        AppendText(text, TextPlace::Section);
    }

    void EndElement() override {
        Resume();
        CloseLast();
    }

    std::optional<std::span<const kelcore::byte>> Serialise() override;

private:
    void Resume();
    void BeginContent();
    void CloseLast();
    void AppendText(std::u16string_view text, TextPlace place);
    void AppendPlace(std::u16string_view text, TextPlace where);
    template <class Keep>
    Place KeepAside(Keep keep);
    template <class Compute>
    void Indent(Compute compute);
    PerVersion<Layout::Line> CurrentLines() const {
        return {now_.layouts[0].CurrentLine(), now_.layouts[1].CurrentLine()};
    }
    ContentBuffer Head() const;
    std::span<const kelcore::byte> Insert(std::span<const kelcore::byte> head);
    void TakeOut(const Inserted& inserted);
    void TraceReplacements() const;

    AttributeMap rootAttributes_;
    /// The head as it was when the content began, and everything after it except the places.
    ContentBuffer body_;
    std::size_t headSize_ = 0;
    std::vector<Place> places_;
    PerVersion<ContentBuffer> aside_;  ///< what belongs into them, one behind the other
    Progress now_;
    std::optional<Progress> resumesAt_;  ///< after a `Serialise`, which closed all elements
    Inserted inserted_;                  ///< by that `Serialise`
    XmlVersion version_ = XmlVersion::V1_0;
};

/// Drops the end tags of a document that is continued after it was serialised.
void StreamedDocument::Resume() {
    if (resumesAt_) {
        now_ = *std::move(resumesAt_);
        resumesAt_.reset();
        TakeOut(inserted_);
        body_.Truncate(now_.size);
        places_.resize(now_.places);
        for (std::size_t i = 0; i < kVersions.size(); ++i) {
            aside_[i].Truncate(now_.aside[i]);
        }
    }
}

void StreamedDocument::BeginContent() {
    Resume();
    if (headSize_ == 0) {
        Append(body_, Head().Bytes());
        headSize_ = body_.Bytes().size();
    }
    if (!now_.open.back().hasContent) {
        xml::AppendMarkup(body_, ">");
        now_.open.back().hasContent = true;
    }
}

void StreamedDocument::CloseLast() {
    const OpenElement element = now_.open.back();
    now_.open.pop_back();
    if (!element.hasContent) {
        xml::AppendMarkup(body_, "/>");
        return;
    }
    const auto level = static_cast<std::uint32_t>(now_.open.size());
    Indent([&](Layout& layout, std::size_t version) {
        return layout.BeforeEnd(level, element.line[version]);
    });
    xml::AppendMarkup(body_, "</");
    xml::AppendName(body_, element.name);
    xml::AppendMarkup(body_, ">");
}

void StreamedDocument::AppendText(std::u16string_view text, TextPlace place) {
    if (!IsCarriedAsItIs(text, place)) {
        AppendPlace(text, place);
        return;
    }
    xml::AppendText(body_, text, place);
    if (place == TextPlace::Text) {
        for (Layout& layout : now_.layouts) {
            layout.PassText(text);
        }
    }
}

void StreamedDocument::AppendPlace(std::u16string_view text, TextPlace where) {
    places_.push_back(KeepAside([&](ContentBuffer& aside, std::size_t version) {
        const CarriedText carried = Carry(text, where, kVersions[version]);
        xml::AppendCarried(aside, carried, where);
        for (const TextPiece& piece : carried.pieces) {
            if (where == TextPlace::Text && !piece.isReference) {
                now_.layouts[version].PassText(piece.text);
            }
        }
        return carried.isComplete;
    }));
}

/// A place here, for what `keep` appends for each version. It returns whether that is complete.
template <class Keep>
Place StreamedDocument::KeepAside(Keep keep) {
    Place place{.offset = body_.Bytes().size()};
    for (std::size_t i = 0; i < kVersions.size(); ++i) {
        const std::size_t before = aside_[i].Bytes().size();
        place.isComplete[i] = keep(aside_[i], i);
        place.size[i] = aside_[i].Bytes().size() - before;
    }
    return place;
}

/// Appends what `compute` gives for the layout of each version.
template <class Compute>
void StreamedDocument::Indent(Compute compute) {
    if (places_.empty()) {  // nothing so far depends on the version
        AppendIndentation(body_, compute(now_.layouts[0], 0));
        now_.layouts[1] = now_.layouts[0];
        return;
    }
    PerVersion<Indentation> indentation;
    for (std::size_t i = 0; i < kVersions.size(); ++i) {
        indentation[i] = compute(now_.layouts[i], i);
    }
    if (indentation[0] == indentation[1]) {
        AppendIndentation(body_, indentation[0]);
        return;
    }
    places_.push_back(KeepAside([&](ContentBuffer& aside, std::size_t version) {
        AppendIndentation(aside, indentation[version]);
        return true;
    }));
}

ContentBuffer StreamedDocument::Head() const {
    ContentBuffer head;
    xml::AppendMarkup(head, "\xEF\xBB\xBF<?xml version=\"");
    xml::AppendMarkup(head, version_ == XmlVersion::V1_0 ? "1.0" : "1.1");
    xml::AppendMarkup(head, "\" encoding=\"UTF-8\" standalone=\"no\" ?>\n<");
    xml::AppendName(head, names::orvo);
    for (const auto& attribute : rootAttributes_) {
        BeginAttribute(head, attribute.name);
        xml::AppendCarried(head, Carry(attribute.value, TextPlace::Attribute, version_),
                           TextPlace::Attribute);
        EndAttribute(head);
    }
    return head;
}

void StreamedDocument::TraceReplacements() const {
    const auto trace = [](bool isComplete) {
        if (!isComplete) {
            kelcore::trace::Write(kelcore::trace::kWriterCategory, kReplacementsTrace);
        }
    };
    for (const auto& attribute : rootAttributes_) {
        trace(Carry(attribute.value, TextPlace::Attribute, version_).isComplete);
    }
    for (const Place& place : places_) {
        trace(place.isComplete[IndexOf(version_)]);
    }
}

/// Puts the head and the places into the buffer. Moves what is behind them from the back, so that
/// memory holds the document once. A head that became shorter begins later in the buffer.
std::span<const kelcore::byte> StreamedDocument::Insert(std::span<const kelcore::byte> head) {
    Inserted inserted{.version = IndexOf(version_),
                      .headGrowth = std::max(head.size(), headSize_) - headSize_};
    std::span<const kelcore::byte> aside = std::as_const(aside_)[inserted.version].Bytes();
    std::size_t growth = inserted.headGrowth + aside.size();
    std::size_t begin = body_.Bytes().size();  // of what was moved
    body_.SetEnd(body_.Room(growth) + growth);
    inserted_ = inserted;
    kelcore::byte* const bytes = body_.Bytes().data();
    const auto moveFrom = [&](std::size_t first) {
        if (growth > 0) {
            std::memmove(bytes + first + growth, bytes + first, begin - first);
        }
        begin = first;
    };
    for (auto place = places_.crbegin(); place != places_.crend(); ++place) {
        const std::size_t size = place->size[inserted.version];
        moveFrom(place->offset);
        growth -= size;
        std::ranges::copy(aside.last(size), bytes + place->offset + growth);
        aside = aside.first(aside.size() - size);
    }
    moveFrom(headSize_);
    const std::size_t start = headSize_ + growth - head.size();
    std::ranges::copy(head, bytes + start);
    return std::as_const(body_).Bytes().subspan(start);
}

/// Takes the places out of the buffer again.
void StreamedDocument::TakeOut(const Inserted& inserted) {
    kelcore::byte* const bytes = body_.Bytes().data();
    std::size_t growth = inserted.headGrowth;
    std::size_t begin = headSize_;  // of what is still to move
    const auto moveUpTo = [&](std::size_t end) {
        if (growth > 0) {
            std::memmove(bytes + begin, bytes + begin + growth, end - begin);
        }
        begin = end;
    };
    for (const Place& place : places_) {
        moveUpTo(place.offset);
        growth += place.size[inserted.version];
    }
    moveUpTo(body_.Bytes().size() - growth);
}

std::optional<std::span<const kelcore::byte>> StreamedDocument::Serialise() {
    Resume();
    Progress reached = now_;
    const ContentBuffer head = Head();
    if (headSize_ == 0) {
        Append(body_, head.Bytes());
        headSize_ = head.Bytes().size();
    }
    reached.size = body_.Bytes().size();
    reached.places = places_.size();
    reached.aside = {aside_[0].Bytes().size(), aside_[1].Bytes().size()};
    while (!now_.open.empty()) {
        CloseLast();
    }
    xml::AppendMarkup(body_, "\n");
    resumesAt_ = std::move(reached);
    TraceReplacements();
    return Insert(head.Bytes());
}

}  // namespace

std::unique_ptr<SessionDocument> MakeStreamedDocument() {
    return IsXercesStarted() ? std::make_unique<StreamedDocument>() : nullptr;
}

}  // namespace tses
