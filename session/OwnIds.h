#pragma once

#include <optional>
#include <tuple>

#include <orvo/Session.h>

namespace orvo {

/// The lists whose things a reader finds by their ids: each has one, and no two the same.
inline constexpr std::tuple kListsByOwnId{&Session::files, &Session::videoTracks,
                                          &Session::audioTracks};

/// Looks for a thing in such a list without an id, which ends a reader, and for two with the same
/// id, of which a reader makes one.
/// @return the place, as in the session's JSON, and what to do; nothing if all have their own
std::optional<Message> FindIdThatIsNoOwn(const Session& session);

}  // namespace orvo
