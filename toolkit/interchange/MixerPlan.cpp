#include "toolkit/interchange/MixerPlan.h"

#include <fmt/format.h>

#include <orvo/Lookup.h>

namespace toolkit::interchange {
namespace {

using orvo::AudioTrack;
using orvo::Fidelity;
using orvo::Session;
using orvo::TrackKind;

}  // namespace

MixerPlan::MixerPlan(const Session& session, Reporter& reporter) {
    for (const AudioTrack* const track : orvo::AudioTracksInOrder(session)) {
        const auto number = static_cast<std::size_t>(track - session.audioTracks.data());
        const PlannedTrack planned = {.track = track,
                                      .place = ModelPath() / &Session::audioTracks / number};
        if (track->kind == TrackKind::Master && master_.track == nullptr) {
            master_ = planned;
        } else if (track->kind == TrackKind::Master || track->kind == TrackKind::Metronome) {
            reporter.Add(Fidelity::Lost, planned.place,
                         track->kind == TrackKind::Master ? "only one master has a place"
                                                          : "the metronome has no place",
                         track->name);
        } else {
            numbers_.try_emplace(track->id, tracks_.size());
            tracks_.push_back(planned);
        }
    }
    if (master_.track != nullptr && !master_.track->clips.empty()) {
        MoveClipsOfMaster(reporter);
    }
}

void MixerPlan::MoveClipsOfMaster(Reporter& reporter) {
    const AudioTrack& master = *master_.track;
    clipsOfMaster_.name = master.name + " clips";
    clipsOfMaster_.audioChannelType = master.audioChannelType;
    clipsOfMaster_.clips = master.clips;
    tracks_.push_back({.track = &clipsOfMaster_, .place = master_.place});
    reporter.Add(Fidelity::Moved, master_.place / &AudioTrack::clips,
                 "the clips of the master are on a track of their own", clipsOfMaster_.name);
}

std::optional<std::size_t> MixerPlan::OutputOf(const AudioTrack& track) const {
    // Track 0 is not stored as an output.
    return track.outputTrackId > 0 ? NumberOf(track.outputTrackId) : std::nullopt;
}

std::optional<std::size_t> MixerPlan::NumberOf(std::int32_t trackId) const {
    const auto number =
        trackId < 0 ? numbers_.end() : numbers_.find(static_cast<std::uint32_t>(trackId));
    return number != numbers_.end() ? std::optional(number->second) : std::nullopt;
}

std::vector<PlannedSend> MixerPlan::SendsOf(const PlannedTrack& planned, Reporter& reporter) const {
    std::vector<PlannedSend> sends;
    if (!planned.track->sendList) {
        return sends;
    }
    const auto& slots = planned.track->sendList->slots;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (!slots[i]) {
            continue;
        }
        const ModelPath place = planned.place / &AudioTrack::sendList / &orvo::SendList::slots / i;
        const auto target = NumberOf(slots[i]->sendOutputId);
        if (slots[i]->slotIndex != i) {
            reporter.CountLost("numbers of sends");
        }
        if (!target || planned.track == master_.track) {
            reporter.Add(Fidelity::Lost, place, "the send leads to no track that can take it",
                         fmt::format("{}", slots[i]->sendOutputId));
            continue;
        }
        if (slots[i]->destCompIndex != orvo::kNone) {
            reporter.Add(Fidelity::Lost, place / &orvo::SendSlot::destCompIndex,
                         "a send feeds the track, not its effect",
                         fmt::format("{}", slots[i]->destCompIndex));
        }
        sends.push_back({.slot = &*slots[i], .place = place, .target = *target});
    }
    return sends;
}

}  // namespace toolkit::interchange
