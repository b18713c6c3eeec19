#include "reference_host/Sessions.h"

#include <utility>

#include "host/Features.h"
#include "platform/kelappsupport/Features.h"
#include "reference_host/LogTarget.h"
#include "reference_host/SessionNode.h"
#include "reference_host/TraceCollector.h"

namespace refhost {
namespace {

std::u16string WithoutLineEnd(std::u16string text) {
    while (!text.empty() && text.back() == u'\n') {
        text.pop_back();
    }
    return text;
}

std::vector<std::u16string> WithoutLineEnds(std::vector<std::u16string> messages) {
    for (std::u16string& message : messages) {
        message = WithoutLineEnd(std::move(message));
    }
    return messages;
}

/// The object that the plug-in gets for a session.
template <class Interface, class Wrap>
Ref<Interface> Wrapped(const Wrap& wrap, Interface& session) {
    return wrap ? wrap(session) : Ref<Interface>::Retain(&session);
}

}  // namespace

void UseFeatureDefaults() {
    for (const std::string_view feature :
         {tses::features::kInstrumentTracks, tses::features::kStreamedSave}) {
        kelappsupport::SetFeatureEnabled(feature, true);
    }
}

ReadResult ReadSession(Plugin& plugin, const std::u16string& path, const ReadOptions& options) {
    const Ref<SessionNode> node = SessionNode::Make();
    node->SetProgressListener(options.progress);
    node->SetPartListener(options.partProgress);
    if (options.logTarget) {
        node->SetLogTarget(Ref<LogTarget>::Adopt(new LogTarget));
    }
    ReadResult read;
    {
        const TraceCollector collector(read.traced);
        const auto session = Wrapped(options.wrap, node->Edit());
        read.result = plugin.Read(path, *session);
    }
    read.session = std::move(node->Value());
    if (const LogTarget* const target = node->GetLogTarget()) {
        read.messages = WithoutLineEnds(target->Messages());
    }
    return read;
}

WriteResult WriteSession(Plugin& plugin, const std::u16string& path, const orvo::Session& session,
                         const WriteOptions& options) {
    const Ref<SessionNode> node = SessionNode::Borrow(session);
    node->SetProgressListener(options.progress);
    node->SetTrackListener(options.trackProgress);
    WriteResult written;
    {
        const TraceCollector collector(written.messages);
        const auto wrapped = Wrapped(options.wrap, node->Query());
        written.result = plugin.Write(path, *wrapped);
    }
    plugin.ReleaseContext();
    return written;
}

}  // namespace refhost
