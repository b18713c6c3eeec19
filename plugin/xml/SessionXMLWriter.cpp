#include "plugin/xml/SessionXMLWriter.h"

#include <boost/thread/lock_guard.hpp>
#include <optional>
#include <span>
#include <utility>
#include <xercesc/dom/DOMException.hpp>

#include "format/Limits.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/XercesPlatform.h"

namespace tses {
namespace {

using Guard = boost::lock_guard<boost::recursive_mutex>;
using Content = std::span<const kelcore::byte>;

// Bounds of the length of attributes in a tag. They hold for both versions of XML, because the text
// of a later element decides which one the document gets.

constexpr kelcore::uint64 kLongestReference = 8;  // that of the line separator
constexpr kelcore::uint64 kLongestOtherReference = 6;
constexpr kelcore::uint64 kMostBytesOfUnit = 3;
constexpr kelcore::uint64 kName = 64;  // with quotes and separators

/// At most so many bytes, whatever the units are.
kelcore::uint64 QuickBound(const AttributeMap& attributes) {
    return kName * (1 + attributes.size()) + kLongestReference * attributes.BoundOfValues();
}

/// A unit that is a reference in some place or version counts as the longest one.
kelcore::uint64 BoundOf(char16_t unit) {
    const bool isPlain =
        unit >= 0x20 && unit < 0x7F && unit != u'&' && unit != u'<' && unit != u'>' && unit != u'"';
    if (isPlain) {
        return 1;
    }
    return unit < 0xA0         ? kLongestOtherReference
           : unit == u'\u2028' ? kLongestReference
                               : kMostBytesOfUnit;
}

kelcore::uint64 CloseBound(const AttributeMap& attributes) {
    kelcore::uint64 length = kName * (1 + attributes.size());
    for (const auto& attribute : attributes) {
        for (const char16_t unit : attribute.value) {
            length += BoundOf(unit);
        }
    }
    return length;
}

/// Whether a reader accepts the tag.
bool IsReadable(const AttributeMap& attributes) {
    return QuickBound(attributes) <= limits::kTagBytes ||
           CloseBound(attributes) <= limits::kTagBytes;
}

/// The DOM throws if it refuses something; the writer's operation then reports failure.
template <class Operation>
bool Attempt(Operation&& operation) {
    try {
        operation();
        return true;
    } catch (const xercesc::DOMException& refusal) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory,
                              TranscodeMessage(refusal.getMessage()));
        return false;
    }
}

/// Whether a reader accepts the file.
bool IsReadable(Content content) {
    const bool readable = content.size() <= limits::kFileBytes;
    if (!readable) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory,
                              "the session is larger than " + limits::InWords(limits::kFileBytes));
    }
    return readable;
}

bool WriteFile(const std::u16string& path, Content content) {
    kelcore::File file(path);
    try {
        file.Create();
        kelcore::OPlatformByteStream stream(file);
        if (!content.empty()) {
            stream.WriteBlock(content.data(), content.size());
        }
        stream.Close();
        if (content.empty()) {
            kelcore::trace::Write(kelcore::trace::kWriterCategory,
                                  "the document came out empty: the file is empty now");
            return false;
        }
        return true;
    } catch (const kelcore::file_exception& failure) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory, failure.MessageFor(file.FullPath()));
        return false;
    }
}

}  // namespace

struct SessionXMLWriter::State {
    std::unique_ptr<SessionDocument> document;  ///< null if the XML library was not started
    std::u16string path;
    WriterFault fault;
    std::size_t depth = 0;  ///< of the current element; 0 for the document element
    std::size_t operations = 0;
    kelcore::uint64 items = 0;
    bool refused = false;
};

SessionXMLWriter::SessionXMLWriter(std::u16string path, WriterFault fault,
                                   DocumentMaker makeDocument)
    : state_(std::make_unique<State>(
          State{.document = makeDocument(), .path = std::move(path), .fault = fault})) {}

SessionXMLWriter::~SessionXMLWriter() = default;

bool SessionXMLWriter::Step() {
    if (state_->document == nullptr) {
        return Refuse("cannot write: the XML library did not start");
    }
    return state_->operations++ != state_->fault.atOperation && !state_->refused;
}

bool SessionXMLWriter::Refuse(std::string_view reason) {
    if (!state_->refused) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory, reason);
    }
    state_->refused = true;
    return false;
}

bool SessionXMLWriter::TakesItems(kelcore::uint32 count) {
    const Guard guard(lock_);
    state_->items += count;
    return state_->items <= limits::kItems || Refuse("the lists of the session have more than " +
                                                     std::to_string(limits::kItems) + " entries");
}

bool SessionXMLWriter::TakesChannels(kelcore::uint32 count) {
    const Guard guard(lock_);
    return count <= limits::kChannels ||
           Refuse("a channel map has more than " + std::to_string(limits::kChannels) + " channels");
}

bool SessionXMLWriter::TakesBlock(kelcore::uint32 bytes) {
    const Guard guard(lock_);
    return bytes <= limits::kBlockBytes ||
           Refuse("a block of events or of an effect's state is larger than " +
                  limits::InWords(limits::kBlockBytes));
}

bool SessionXMLWriter::TakesAttributes(const AttributeMap& attributes) {
    return IsReadable(attributes) || Refuse("the attributes of an element are longer than " +
                                            limits::InWords(limits::kTagBytes));
}

bool SessionXMLWriter::SetRootAttributes(const AttributeMap& attributes) {
    const Guard guard(lock_);
    if (!Step() || !TakesAttributes(attributes)) {
        return false;
    }
    return Attempt([&] { state_->document->SetRootAttributes(attributes); });
}

bool SessionXMLWriter::StartElement(std::u16string_view name, const AttributeMap& attributes) {
    const Guard guard(lock_);
    if (!Step() || !TakesAttributes(attributes)) {
        return false;
    }
    return Attempt([&] {
        state_->document->StartElement(name, attributes);
        ++state_->depth;
    });
}

bool SessionXMLWriter::Text(std::u16string_view text) {
    const Guard guard(lock_);
    if (!Step()) {
        return false;
    }
    return Attempt([&] { state_->document->Text(text); });
}

bool SessionXMLWriter::Characters(std::u16string_view text) {
    const Guard guard(lock_);
    if (!Step()) {
        return false;
    }
    return Attempt([&] { state_->document->Characters(text); });
}

bool SessionXMLWriter::EndElement() {
    const Guard guard(lock_);
    if (!Step()) {
        return false;
    }
    if (state_->depth == 0) {
        return false;
    }
    --state_->depth;
    state_->document->EndElement();
    return true;
}

bool SessionXMLWriter::Save() {
    const Guard guard(lock_);
    if (!Step()) {
        return false;
    }
    std::optional<Content> content = state_->document->Serialise();
    if (state_->fault.serialiser == WriterFault::Serialiser::ReportsFailure) {
        content.reset();
    } else if (state_->fault.serialiser == WriterFault::Serialiser::WritesNothing) {
        content = Content();
    }
    if (!content) {
        return Refuse("cannot write: the session could not be put into XML");
    }
    return IsReadable(*content) && WriteFile(state_->path, *content);
}

}  // namespace tses
