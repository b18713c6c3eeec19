#include <vector>

#include <orvo/Diff.h>
#include "toolkit/diff/Comparison.h"

namespace orvo {

std::vector<Change> FindChanges(const Session& before, const Session& after,
                                const ChangeOptions& options) {
    if (before == after) {
        return {};
    }
    const SessionMatch match = MatchSessions(before, after);
    const Session numbered = NumberedLike(before, match, after);
    diff::Comparison sessions(numbered, after, match, options.times);
    diff::CompareSession(sessions);
    diff::CompareFiles(sessions);
    diff::CompareTracks(sessions);
    diff::CompareClips(sessions);
    diff::CompareLists(sessions);
    return sessions.report.Take();
}

}  // namespace orvo
