#pragma once

#include <vector>

#include <orvo/Model.h>
#include "host/Session.h"
#include "reference_host/LogTarget.h"
#include "reference_host/Node.h"
#include "reference_host/Progress.h"

namespace refhost {

class EditSession;
class QuerySession;

/// A session as the plug-in sees it: the root of all nodes. It owns the model that a read fills and
/// a write queries.
class SessionNode final : public DataNode<orvo::Session> {
public:
    /// Makes a session with one reference, which the caller holds.
    static Ref<SessionNode> Make(orvo::Session session = {});

    /// The same for a session of the caller, which must outlive the node. It may only be queried.
    static Ref<SessionNode> Borrow(const orvo::Session& session);

    /// The faces; they live as long as the node is referenced.
    tses::IEditSession& Edit();
    tses::IQuerySession& Query();

    /// Sets where the parser's messages go. There is no target by default.
    void SetLogTarget(Ref<LogTarget> target) { logTarget_ = std::move(target); }
    LogTarget* GetLogTarget() const { return logTarget_.Get(); }

    /// Called for each report of progress.
    void SetProgressListener(ProgressListener listener) { listener_ = std::move(listener); }
    void Report(const Progress& progress);

    /// Called for each audio track that the plug-in asks for during a write.
    void SetTrackListener(TrackListener listener) { trackListener_ = std::move(listener); }
    void ReportTrack(kelcore::uint32 done, kelcore::uint32 total) const {
        if (trackListener_) {
            trackListener_(done, total);
        }
    }

    /// Called for each part that the plug-in begins during a read.
    void SetPartListener(PartListener listener) { partListener_ = std::move(listener); }
    void ReportPart() const override {
        if (partListener_) {
            partListener_();
        }
    }

    /// All reports so far.
    const std::vector<Progress>& Reports() const { return reports_; }

private:
    explicit SessionNode(orvo::Session session);
    explicit SessionNode(const orvo::Session* borrowed);
    ~SessionNode() override;

    orvo::Session own_;
    std::unique_ptr<EditSession> edit_;
    std::unique_ptr<QuerySession> query_;
    Ref<LogTarget> logTarget_;
    ProgressListener listener_;
    TrackListener trackListener_;
    PartListener partListener_;
    std::vector<Progress> reports_;
};

}  // namespace refhost
