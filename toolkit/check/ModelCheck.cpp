#include "toolkit/check/ModelCheck.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <unordered_set>
#include <utility>

#include <orvo/Lookup.h>
#include "toolkit/ModelPath.h"
#include "toolkit/check/RoutingLoops.h"
#include "toolkit/check/Words.h"

namespace toolkit {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::Component;
using orvo::kNone;
using orvo::Session;

/// A clip of any kind.
struct PlacedClip {
    ModelPath path;
    std::string name;
};

class ModelCheck {
public:
    explicit ModelCheck(const Session& session) : session_(session), index_(session) {}

    std::vector<ModelFinding> Run() && {
        OfSession();
        OfTracks();
        OfClipIds();
        OfGroups();
        OfLoops();
        return std::move(findings_);
    }

private:
    void Add(Code code, const ModelPath& path, std::string what) {
        findings_.push_back({code, path.Text(), std::move(what)});
    }

    void OfSession() {
        const ModelPath root;
        if (session_.sampleRate == 0) {
            Add(Code::SampleRate, root / &Session::sampleRate, "the session's sample rate is 0");
        }
        OfLength(session_.duration, root / &Session::duration, "the session");
        OfLength(session_.selection.duration,
                 root / &Session::selection / &orvo::Selection::duration, "the selection");
        OfLength(session_.viewState.horizontalViewDuration,
                 root / &Session::viewState / &orvo::ViewState::horizontalViewDuration,
                 "the visible part");
    }

    void OfLength(std::int64_t length, const ModelPath& path, const std::string& what) {
        if (length < 0) {
            Add(Code::NegativeLength, path, fmt::format("{} is {} samples long", what, length));
        }
    }

    // Tracks

    void OfTracks() {
        const ModelPath root;
        for (std::size_t i = 0; i < session_.videoTracks.size(); ++i) {
            OfVideoTrack(session_.videoTracks[i], root / &Session::videoTracks / i);
        }
        for (std::size_t i = 0; i < session_.audioTracks.size(); ++i) {
            OfTrack(session_.audioTracks[i], root / &Session::audioTracks / i);
        }
        if (session_.metronome.track) {
            OfTrack(*session_.metronome.track,
                    root / &Session::metronome / &orvo::Metronome::track);
        }
    }

    void OfVideoTrack(const orvo::VideoTrack& track, const ModelPath& path) {
        for (std::size_t i = 0; i < track.clips.size(); ++i) {
            const orvo::VideoClip& clip = track.clips[i];
            const ModelPath place = path / &orvo::VideoTrack::clips / i;
            OfClip(clip, place);
            OfFileOf(clip, place);
        }
    }

    void OfTrack(const AudioTrack& track, const ModelPath& path) {
        OfOutput(track, path);
        OfSends(track, path);
        OfControl(track.fader, path / &AudioTrack::fader);
        OfControl(track.mute, path / &AudioTrack::mute);
        OfControl(track.pan, path / &AudioTrack::pan);
        OfControl(track.eq, path / &AudioTrack::eq);
        OfRack(track.effectsRack, path / &AudioTrack::effectsRack);
        for (std::size_t i = 0; i < track.clips.size(); ++i) {
            OfAudioClip(track, track.clips[i], path / &AudioTrack::clips / i);
        }
        for (std::size_t i = 0; i < track.midiClips.size(); ++i) {
            OfClip(track.midiClips[i], path / &AudioTrack::midiClips / i);
        }
    }

    void OfOutput(const AudioTrack& track, const ModelPath& path) {
        if (track.outputTrackId > 0 && !HasTrack(track.outputTrackId)) {
            Add(Code::OutputAbsent, path / &AudioTrack::outputTrackId,
                fmt::format("{} feeds track {}, which does not exist", NameOf(track),
                            track.outputTrackId));
        }
    }

    void OfSends(const AudioTrack& track, const ModelPath& path) {
        if (!track.sendList) {
            return;
        }
        const auto& slots = track.sendList->slots;
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (slots[i]) {
                OfSend(track, *slots[i], path / &AudioTrack::sendList / &orvo::SendList::slots / i);
            }
        }
    }

    void OfSend(const AudioTrack& track, const orvo::SendSlot& send, const ModelPath& path) {
        if (send.sendOutputId >= 0 && !HasTrack(send.sendOutputId)) {
            const bool isSideChain = send.destCompIndex >= 0;
            Add(isSideChain ? Code::SideChainAbsent : Code::SendAbsent,
                path / &orvo::SendSlot::sendOutputId,
                fmt::format("{} {} of {} leads to track {}, which does not exist",
                            isSideChain ? "side chain" : "send", send.slotIndex, NameOf(track),
                            send.sendOutputId));
        }
        OfControl(send.sendComponent, path / &orvo::SendSlot::sendComponent);
        OfControl(send.panComponent, path / &orvo::SendSlot::panComponent);
    }

    bool HasTrack(std::int32_t id) const {
        return index_.FindAudioTrack(static_cast<std::uint32_t>(id)) != nullptr;
    }

    // Clips

    template <class Clip>
    void OfClip(const Clip& clip, const ModelPath& path) {
        const std::string name = NameOf(clip);
        clips_[clip.id].push_back({path / &Clip::id, name});
        OfLength(clip.duration, path / &Clip::duration, name);
        const bool endsLate = clip.duration > 0 && session_.duration >= 0 &&
                              clip.startPoint > session_.duration - clip.duration;
        if (endsLate) {
            Add(Code::ClipPastEnd, path / &Clip::duration,
                fmt::format("{} starts at {} and is {} samples long, but the session ends at {}",
                            name, clip.startPoint, clip.duration, session_.duration));
        }
    }

    template <class Clip>
    void OfFileOf(const Clip& clip, const ModelPath& path) {
        if (clip.fileId == orvo::kNoId) {
            Add(Code::UnknownFile, path / &Clip::fileId, NameOf(clip) + " names no file");
        } else if (index_.FindFile(clip.fileId) == nullptr) {
            Add(Code::UnknownFile, path / &Clip::fileId,
                fmt::format("{} plays file {}, which the session does not have", NameOf(clip),
                            clip.fileId));
        }
    }

    void OfAudioClip(const AudioTrack& track, const AudioClip& clip, const ModelPath& path) {
        OfClip(clip, path);
        OfFileOf(clip, path);
        OfCrossfade(track, clip, clip.crossFadeHeadClipId, path / &AudioClip::crossFadeHeadClipId);
        OfCrossfade(track, clip, clip.crossFadeTailClipId, path / &AudioClip::crossFadeTailClipId);
        OfControl(clip.gain, path / &AudioClip::gain);
        OfControl(clip.mute, path / &AudioClip::mute);
        OfControl(clip.pan, path / &AudioClip::pan);
        OfRack(clip.effectsRack, path / &AudioClip::effectsRack);
    }

    void OfCrossfade(const AudioTrack& track, const AudioClip& clip, std::int32_t otherId,
                     const ModelPath& path) {
        if (otherId == kNone) {
            return;
        }
        const auto id = static_cast<std::uint32_t>(otherId);
        const auto other = std::ranges::find(track.clips, id, &AudioClip::id);
        if (other != track.clips.end()) {
            if (!Overlap(clip, *other)) {
                Add(Code::CrossfadeApart, path,
                    fmt::format("{} crossfades with {}, which it does not overlap", NameOf(clip),
                                NameOf(*other)));
            }
        } else if (const auto [owner, elsewhere] = index_.FindAudioClip(id); elsewhere) {
            Add(Code::CrossfadeApart, path,
                fmt::format("{} crossfades with {}, which is on {}", NameOf(clip),
                            NameOf(*elsewhere), NameOf(*owner)));
        } else {
            Add(Code::CrossfadeAbsent, path,
                fmt::format("{} crossfades with clip {}, which does not exist", NameOf(clip), id));
        }
    }

    static bool Overlap(const AudioClip& one, const AudioClip& other) {
        const auto startsWithin = [](const AudioClip& late, const AudioClip& early) {
            return late.startPoint >= early.startPoint &&
                   static_cast<std::uint64_t>(late.startPoint) -
                           static_cast<std::uint64_t>(early.startPoint) <
                       static_cast<std::uint64_t>(std::max<std::int64_t>(early.duration, 0));
        };
        return startsWithin(one, other) || startsWithin(other, one);
    }

    void OfClipIds() {
        for (const auto& [id, clips] : clips_) {
            for (std::size_t i = 1; i < clips.size(); ++i) {
                Add(Code::DuplicateId, clips[i].path,
                    clips[i].name + " has the same id as " + clips[0].name);
            }
        }
    }

    void OfGroups() {
        std::unordered_set<std::uint32_t> ids;
        for (std::size_t i = 0; i < session_.clipGroups.size(); ++i) {
            const orvo::ClipGroup& group = session_.clipGroups[i];
            const ModelPath path = ModelPath() / &Session::clipGroups / i;
            const std::string name = Named("group", group.id, group.name);
            if (!ids.insert(group.id).second) {
                Add(Code::DuplicateId, path / &orvo::ClipGroup::id,
                    name + " has the same id as another group");
            }
            for (std::size_t k = 0; k < group.items.size(); ++k) {
                OfMember(name, group.items[k], path / &orvo::ClipGroup::items / k);
            }
        }
    }

    void OfMember(const std::string& group, const orvo::ClipGroupItem& item,
                  const ModelPath& path) {
        if (!HasTrackOfAnyKind(item.trackId)) {
            Add(Code::GroupMemberAbsent, path / &orvo::ClipGroupItem::trackId,
                fmt::format("{} has a clip on track {}, which does not exist", group,
                            item.trackId));
        } else if (!HasClip(item)) {
            Add(Code::GroupMemberAbsent, path / &orvo::ClipGroupItem::clipId,
                fmt::format("{} has clip {} of track {}, which does not exist", group, item.clipId,
                            item.trackId));
        }
    }

    bool HasTrackOfAnyKind(std::uint32_t id) const {
        return index_.FindAudioTrack(id) != nullptr || index_.FindVideoTrack(id) != nullptr;
    }

    bool HasClip(const orvo::ClipGroupItem& item) {
        if (members_.empty()) {
            orvo::ForEachClip(session_, [this](const auto& track, const auto& clip) {
                members_.insert({track.id, clip.id});
            });
        }
        return members_.contains({item.trackId, item.clipId});
    }

    void OfLoops() {
        for (const RoutingLoop& loop : FindRoutingLoops(session_)) {
            std::string names;
            for (const std::size_t track : loop) {
                names += (names.empty() ? "" : ", ") + NameOf(session_.audioTracks[track]);
            }
            Add(Code::RoutingLoop, ModelPath() / &Session::audioTracks / loop.front(),
                loop.size() == 1 ? names + " feeds itself"
                                 : "tracks feed each other in a circle: " + names);
        }
    }

    // Automation

    void OfControl(const std::optional<Component>& component, const ModelPath& path) {
        if (!component) {
            return;
        }
        const ModelPath parameters = path / &Component::parameters;
        for (const auto& [index, parameter] : component->parameters) {
            if (parameter.automation) {
                OfLane(parameter, parameter.automation->keyframes,
                       parameters / index / &orvo::Parameter::automation);
            }
        }
    }

    void OfLane(const orvo::Parameter& parameter, const std::vector<orvo::Keyframe>& keyframes,
                const ModelPath& path) {
        const auto offset = &orvo::Keyframe::sampleOffset;
        const auto late = std::ranges::is_sorted_until(keyframes, {}, offset);
        if (late != keyframes.end()) {
            const auto index = static_cast<std::size_t>(late - keyframes.begin());
            Add(Code::KeyframeOrder, path / &orvo::AutomationLane::keyframes / index / offset,
                fmt::format("a keyframe of {} at {} stands behind one at {}",
                            InQuotes(parameter.name), late->sampleOffset,
                            keyframes[index - 1].sampleOffset));
        }
    }

    void OfRack(const std::optional<orvo::EffectsRack>& rack, const ModelPath& path) {
        if (!rack) {
            return;
        }
        OfControl(rack->mix, path / &orvo::EffectsRack::mix);
        OfControl(rack->input, path / &orvo::EffectsRack::input);
        OfControl(rack->output, path / &orvo::EffectsRack::output);
        for (std::size_t i = 0; i < rack->slots.size(); ++i) {
            if (rack->slots[i]) {
                OfControl(rack->slots[i]->component,
                          path / &orvo::EffectsRack::slots / i / &orvo::EffectsSlot::component);
            }
        }
    }

    const Session& session_;
    orvo::SessionIndex index_;
    std::map<std::uint32_t, std::vector<PlacedClip>> clips_;
    std::set<std::pair<std::uint32_t, std::uint32_t>> members_;  // of track and clip
    std::vector<ModelFinding> findings_;
};

}  // namespace

std::vector<ModelFinding> CheckModel(const orvo::Session& session) {
    return ModelCheck(session).Run();
}

}  // namespace toolkit
