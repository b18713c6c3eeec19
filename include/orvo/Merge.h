#pragma once

#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Model.h>

/// Merges two sessions that were made from a third one.
namespace orvo {

/// Whose change counts where both sides changed the same in different ways.
enum class MergeDecision {
    None,  ///< that of neither: it is a conflict, and the base's state stays
    Ours,
    Theirs
};

/// What both sides changed in different ways, in the sentences of `FindChanges`.
struct MergeConflict {
    std::vector<std::string> ours{};  ///< empty if the sentences of the other side say it all
    std::vector<std::string> theirs{};

    friend bool operator==(const MergeConflict&, const MergeConflict&) = default;
};

struct MergeResult {
    Session session{};                       ///< with conflicts decided as asked
    std::vector<MergeConflict> conflicts{};  ///< also those that were decided

    /// What both sides changed and nobody needs to decide: where the cursor is, what is selected
    /// and which part of the timeline is shown stays as in the base.
    bool keptEditorState = false;
};

/// Merges what changed from the base to each side. Things are matched as `MatchSessions` does it.
/// Ids are those of the base; what both sides added under one id gets ids of its own, and all that
/// refers to it follows. Where both sides changed the length of the session, the longer one counts.
/// A thing that one side removed and the other changed is a conflict, and so is a thing that one
/// side removed and the other began to refer to. Throws nothing but std::bad_alloc.
ORVO_API MergeResult MergeSessions(const Session& base, const Session& ours, const Session& theirs,
                                   MergeDecision decision = MergeDecision::None);

}  // namespace orvo
