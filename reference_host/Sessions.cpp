#include "reference_host/Sessions.h"

#include <iostream>
#include <utility>

#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Trace.h"
#include "reference_host/LogTarget.h"
#include "reference_host/SessionNode.h"

namespace refhost {
namespace {

/// Where the plug-in says why a save failed.
constexpr std::string_view kWriterCategory = "app::XMLWriter";

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

/// Collects the trace lines of one category; lines of others go to standard error as before.
class TraceCollector {
public:
    TraceCollector(std::string_view category, std::vector<std::string>& lines)
        : category_(category), wasEnabled_(kelcore::trace::IsEnabled(category)) {
        kelcore::trace::SetOutput([category, &lines](std::string_view from, std::string_view text) {
            if (from == category) {
                lines.emplace_back(text);
            } else {
                std::cerr << from << ": " << text << '\n';
            }
        });
        kelcore::trace::SetEnabled(category, true);
    }
    ~TraceCollector() {
        kelcore::trace::SetEnabled(category_, wasEnabled_);
        kelcore::trace::SetOutput({});
    }
    TraceCollector(const TraceCollector&) = delete;
    TraceCollector& operator=(const TraceCollector&) = delete;

private:
    std::string_view category_;
    bool wasEnabled_;
};

/// What the plug-in gets to see of a session.
template <class Interface, class Wrap>
Ref<Interface> Wrapped(const Wrap& wrap, Interface& session) {
    return wrap ? wrap(session) : Ref<Interface>::Retain(&session);
}

}  // namespace

void UseFeatureDefaults() {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", true);
}

ReadResult ReadSession(Plugin& plugin, const std::u16string& path, const ReadOptions& options) {
    const Ref<SessionNode> node = SessionNode::Make();
    node->SetProgressListener(options.progress);
    if (options.logTarget) {
        node->SetLogTarget(Ref<LogTarget>::Adopt(new LogTarget));
    }
    ReadResult read;
    {
        const auto session = Wrapped(options.wrap, node->Edit());
        read.result = plugin.Read(path, *session);
    }
    read.session = std::move(node->Value());
    if (const LogTarget* const target = node->GetLogTarget()) {
        read.messages = WithoutLineEnds(target->Messages());
    }
    return read;
}

WriteResult WriteSession(Plugin& plugin, const std::u16string& path, model::Session session,
                         const WriteOptions& options) {
    const Ref<SessionNode> node = SessionNode::Make(std::move(session));
    node->SetProgressListener(options.progress);
    WriteResult written;
    {
        const TraceCollector collector(kWriterCategory, written.messages);
        const auto wrapped = Wrapped(options.wrap, node->Query());
        written.result = plugin.Write(path, *wrapped);
    }
    plugin.ReleaseContext();
    written.session = std::move(node->Value());
    return written;
}

}  // namespace refhost
