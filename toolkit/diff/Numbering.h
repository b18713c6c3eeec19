#pragma once

#include <orvo/Diff.h>

namespace orvo::diff {

/// Like `NumberedLike`; but what `other` lacks and `second` has gets the id that it has there, and
/// what both lack an id that neither uses.
Session NumberedLikeBoth(const Session& session, const SessionMatch& match, const Session& other,
                         const SessionMatch& secondMatch, const Session& second);

}  // namespace orvo::diff
