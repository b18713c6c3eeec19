#include "plugin/serializer/SerializerImpl.h"

#include <stdexcept>
#include <utility>

#include "format/ValueEncoding.h"
#include "platform/kelcore/Paths.h"
#include "plugin/xml/SessionXMLReader.h"
#include "plugin/xml/Text.h"

namespace tses {

/// However a read ends, this releases the objects of the host and the memory for the texts.
class Serializer::Impl::ReadScope {
public:
    explicit ReadScope(Impl& impl) : impl_(impl) {}
    ~ReadScope() {
        impl_.session_.Reset();
        impl_.reader_ = nullptr;
        impl_.ClearReadState();
        impl_.characterBuffer_ = {};
        impl_.block_ = {};
    }
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

private:
    Impl& impl_;
};

Serializer::Impl::Impl(WriterFault fault, DocumentMaker makeDocument)
    : elementTable_(BuildElementTable()), writerFault_(fault), makeDocument_(makeDocument) {
    Reset();
}

bool Serializer::Impl::Read(const std::u16string& path, HostReference<IEditSession> session) {
    const ReadScope scope(*this);
    path_ = path;
    resolvedPath_ = kelcore::MakeFileFromPath(path, {});
    session_ = std::move(session);
    ClearReadState();
    session_->SetProgress(0, kProgressTotal, 0, 0);
    progressStep_ = 0;
    if (path_.empty()) {
        SayWhyTheFileCannotBeRead();
        return false;
    }
    SessionXMLReader reader(this, this);
    reader_ = &reader;
    couldNotOpenFile_ = false;
    if (reader.Parse(path_)) {
        return rootSeen_;
    }
    if (!reader.HasOpenedFile()) {
        SayWhyTheFileCannotBeRead();
    }
    return false;
}

// Keeps skipDepth_. It is zero after a read, unless the read failed inside a skipped element or one
// of the document's last elements was named like the root. The next file has always been read from
// that depth on.
void Serializer::Impl::Reset() {
    rootSeen_ = false;
    stateStack_.assign(1, states::unknown);
    openEntries_.clear();
    progressStep_ = 0;
}

void Serializer::Impl::ClearReadState() {
    document_.Clear();
    tracks_.Clear();
    clips_.Clear();
    effects_.Clear();
    savedState_.Clear();
}

void Serializer::Impl::StartDocument() {
    Reset();
}

void Serializer::Impl::EndDocument() {}

void Serializer::Impl::StartElementEvent(std::u16string_view /*uri*/, std::u16string_view localName,
                                         std::u16string_view /*qualifiedName*/,
                                         const TagAttributes& attributes) {
    characterBuffer_.clear();
    openEntries_.push_back(nullptr);
    if (!rootSeen_) {
        if (localName != names::orvo) {
            throw std::runtime_error("Not a session file.");
        }
        PushState(states::orvo);
        rootSeen_ = true;
        return;
    }
    if (skipDepth_ != 0) {
        PushState(states::unknown);
        return;
    }
    if (const ElementEntry* const entry = elementTable_.Find(localName, stateStack_.back())) {
        openEntries_.back() = entry;
        entry->onStart(localName, attributes);
        return;
    }
    skipDepth_ = stateStack_.size();
    PushState(states::unknown);
}

void Serializer::Impl::EndElementEvent(std::u16string_view /*uri*/, std::u16string_view localName,
                                       std::u16string_view /*qualifiedName*/) {
    stateStack_.pop_back();
    // Null for an element that began while skipping. A skip left over from an earlier read can end
    // inside such an element, and then its end handler runs.
    const ElementEntry* entry = openEntries_.back();
    openEntries_.pop_back();
    if (IsSame(localName, names::orvo)) {
        return;  // even for an element of that name inside the document, skipping or not
    }
    if (skipDepth_ != 0) {
        if (stateStack_.size() != skipDepth_) {
            return;
        }
        skipDepth_ = 0;
    }
    if (entry == nullptr) {
        entry = elementTable_.Find(localName, stateStack_.back());
    }
    if (entry != nullptr && !entry->onEnd.empty()) {
        entry->onEnd(localName);
    }
}

void Serializer::Impl::CharactersEvent(std::u16string_view text) {
    characterBuffer_.append(text);
}

const std::vector<kelcore::byte>& Serializer::Impl::CollectedBlock() {
    DecodeBlock(TrimWhitespace(characterBuffer_), block_);
    return block_;
}

void Serializer::Impl::AdvanceProgress() {
    if (progressStep_ < kProgressTotal) {
        ++progressStep_;
    }
    session_->SetProgress(progressStep_, kProgressTotal, 0, 0);
}

}  // namespace tses
