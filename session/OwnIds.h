#pragma once

#include <optional>
#include <tuple>

#include <orvo/Session.h>

namespace orvo {

/// The lists in which a reader finds things by id: each thing needs an id of its own.
inline constexpr std::tuple kListsByOwnId{&Session::files, &Session::videoTracks,
                                          &Session::audioTracks};

/// Looks in these lists for a thing without an id, at which a reader would fail, and for two with
/// the same id, which a reader would merge.
/// @return the place, as in the session's JSON, and what to do; nothing if each id is its own
std::optional<Message> FindIdThatIsNoOwn(const Session& session);

}  // namespace orvo
