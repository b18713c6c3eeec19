#include <algorithm>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <orvo/Diff.h>
#include "toolkit/diff/Ids.h"
#include "toolkit/diff/Numbering.h"
#include "toolkit/diff/Tracks.h"

namespace orvo {
namespace {

using diff::AudioTrackAt;
using diff::IdSpace;

/// The ids of one space that must not be given away.
class FreeIds {
public:
    void Use(std::uint32_t id) { used_.insert(id); }
    bool IsUsed(std::uint32_t id) const { return used_.contains(id); }

    /// The old id if it is free.
    std::uint32_t Take(std::uint32_t old) {
        std::uint32_t id = old;
        while (id == kNoId || !used_.insert(id).second) {
            id = next_++;
        }
        return id;
    }

private:
    std::unordered_set<std::uint32_t> used_;
    std::uint32_t next_ = 1;
};

/// Gives things their new ids and remembers what the old ones became.
class Numbering {
public:
    /// @param second  whose ids are taken too; may be null
    Numbering(const Session& first, const Session* second) {
        diff::ForEachOwnId(first, [this](IdSpace space, const auto& id) {
            free_[space].Use(static_cast<std::uint32_t>(id));
        });
        first_ = free_;
        if (second != nullptr) {
            diff::ForEachOwnId(*second, [this](IdSpace space, const auto& id) {
                free_[space].Use(static_cast<std::uint32_t>(id));
            });
        }
    }

    /// Whether a thing of the first session has the id.
    template <class Id>
    bool IsOfFirst(IdSpace space, Id id) const {
        const auto ids = first_.find(space);
        return ids != first_.end() && ids->second.IsUsed(static_cast<std::uint32_t>(id));
    }

    template <class Id>
    void Give(IdSpace space, Id& id, Id newId) {
        news_[space].try_emplace(static_cast<std::uint32_t>(id), static_cast<std::uint32_t>(newId));
        id = newId;
    }

    template <class Id>
    void GiveFree(IdSpace space, Id& id) {
        Give(space, id, static_cast<Id>(free_[space].Take(static_cast<std::uint32_t>(id))));
    }

    /// An id that names nothing stays what it is.
    void Follow(Session& session) const {
        diff::ForEachReference(session, [this](IdSpace space, auto& id) {
            const auto space_ = news_.find(space);
            if (space_ == news_.end() || static_cast<std::uint32_t>(id) == kNoId) {
                return;
            }
            const auto found = space_->second.find(static_cast<std::uint32_t>(id));
            if (found != space_->second.end()) {
                id = static_cast<std::remove_reference_t<decltype(id)>>(found->second);
            }
        });
    }

private:
    std::map<IdSpace, FreeIds> free_;
    std::map<IdSpace, FreeIds> first_;
    std::map<IdSpace, std::unordered_map<std::uint32_t, std::uint32_t>> news_;
};

/// A session whose ids another one takes over, and how the two are matched.
struct Model {
    const Session& session;
    const SessionMatch& match;
};

/// Whether two new things are one. That only their ids agree says nothing: each side gave its own.
bool IsAlike(const File& one, const File& other) {
    return one.path == other.path;
}
template <class Thing>
bool IsAlike(const Thing& one, const Thing& other) {
    if constexpr (requires { one.startPoint; }) {
        return one.name == other.name && one.startPoint == other.startPoint &&
               one.sourceInPoint == other.sourceInPoint && one.duration == other.duration;
    } else {
        return one.name == other.name;
    }
}

/// Numbers a session like the first model. What that lacks is numbered like the second one, if
/// there is one, and else gets a free id.
class Renumbering {
public:
    Renumbering(Session& session, const Model& first, const Model* second)
        : session_(session),
          first_(first),
          second_(second),
          numbering_(first.session, second != nullptr ? &second->session : nullptr) {}

    void Run() {
        NumberAll(
            IdSpace::File, &SessionMatch::files,
            [](auto& owner, std::size_t i) -> auto& { return owner.files[i]; });
        NumberAll(
            IdSpace::Track, &SessionMatch::audioTracks,
            [](auto& owner, std::size_t i) -> auto& { return AudioTrackAt(owner, i); });
        NumberAll(
            IdSpace::Track, &SessionMatch::videoTracks,
            [](auto& owner, std::size_t i) -> auto& { return owner.videoTracks[i]; });
        NumberAll(
            IdSpace::Clip, &SessionMatch::audioClips,
            [](auto& owner, const ClipPlace& at) -> auto& {
                return AudioTrackAt(owner, at.track).clips[at.clip];
            });
        NumberAll(
            IdSpace::Clip, &SessionMatch::midiClips, [](auto& owner, const ClipPlace& at) -> auto& {
                return AudioTrackAt(owner, at.track).midiClips[at.clip];
            });
        NumberAll(
            IdSpace::Clip, &SessionMatch::videoClips,
            [](auto& owner, const ClipPlace& at) -> auto& {
                return owner.videoTracks[at.track].clips[at.clip];
            });
        NumberAll(
            IdSpace::Group, &SessionMatch::clipGroups,
            [](auto& owner, std::size_t i) -> auto& { return owner.clipGroups[i]; });
        NumberAll(
            IdSpace::Preset, &SessionMatch::visibilityPresets,
            [](auto& owner, std::size_t i) -> auto& { return owner.trackVisibilityPresets[i]; });
        NumberAll(
            IdSpace::InputPort, &SessionMatch::inputPorts,
            [](auto& owner, std::size_t i) -> auto& { return owner.audioDevice.inputPorts[i]; });
        NumberAll(
            IdSpace::OutputPort, &SessionMatch::outputPorts,
            [](auto& owner, std::size_t i) -> auto& { return owner.audioDevice.outputPorts[i]; });
        numbering_.Follow(session_);
    }

private:
    template <class Match, class ThingAt>
    void NumberAll(IdSpace space, Match SessionMatch::*list, const ThingAt& thingAt) {
        const Match& match = first_.match.*list;
        for (const auto& [mine, other] : match.same) {
            GiveCopy(space, thingAt(session_, mine).id, thingAt(first_.session, other).id);
        }
        for (const auto& mine : match.removed) {
            if (!NumberLikeSecond(space, list, mine, thingAt)) {
                numbering_.GiveFree(space, thingAt(session_, mine).id);
            }
        }
    }

    template <class Match, class Place, class ThingAt>
    bool NumberLikeSecond(IdSpace space, Match SessionMatch::*list, const Place& mine,
                          const ThingAt& thingAt) {
        if (second_ == nullptr) {
            return false;
        }
        const auto& pairs = (second_->match.*list).same;
        const auto pair = std::find_if(pairs.begin(), pairs.end(), [&](const auto& candidate) {
            return candidate.first == mine;
        });
        if (pair == pairs.end()) {
            return false;
        }
        auto& thing = thingAt(session_, mine);
        const auto& other = thingAt(second_->session, pair->second);
        if (numbering_.IsOfFirst(space, other.id) || !IsAlike(thing, other)) {
            return false;
        }
        GiveCopy(space, thing.id, other.id);
        return true;
    }

    template <class Id>
    void GiveCopy(IdSpace space, Id& id, Id newId) {
        numbering_.Give(space, id, newId);
    }

    Session& session_;
    Model first_;
    const Model* second_;
    Numbering numbering_;
};

}  // namespace

Session NumberedLike(const Session& session, const SessionMatch& match, const Session& other) {
    Session numbered = session;
    Renumbering(numbered, {other, match}, nullptr).Run();
    return numbered;
}

namespace diff {

Session NumberedLikeBoth(const Session& session, const SessionMatch& match, const Session& other,
                         const SessionMatch& secondMatch, const Session& second) {
    Session numbered = session;
    const Model secondModel{second, secondMatch};
    Renumbering(numbered, {other, match}, &secondModel).Run();
    return numbered;
}

}  // namespace diff
}  // namespace orvo
