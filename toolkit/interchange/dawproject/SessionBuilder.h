#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "toolkit/interchange/dawproject/Leaf.h"
#include "toolkit/interchange/dawproject/MediaReader.h"
#include "toolkit/interchange/dawproject/StructureReader.h"

namespace toolkit::interchange::dawproject {

/// Puts clips on the tracks of a session.
class SessionBuilder {
public:
    SessionBuilder(const ProjectDocument& document, const Structure& structure, MediaReader& media,
                   orvo::Session& session)
        : document_(document), structure_(structure), media_(media), session_(session) {}

    /// Adds what a clip of the document comes down to, grouped if that is more than one clip.
    void Add(const pugi::xml_node& clip, std::string_view track, const std::vector<Leaf>& leaves);

    /// Moves clips from tracks that cannot hold them to new ones, links crossfades, and finds out
    /// how long the session is. Call it once, at last.
    void Finish();

private:
    std::uint32_t AddToAudioTrack(orvo::AudioTrack& track, const Leaf& leaf);
    std::uint32_t AddToVideoTrack(orvo::VideoTrack& track, const Leaf& leaf);
    orvo::AudioClip AudioClipOf(const Leaf& leaf);
    orvo::VideoClip VideoClipOf(const Leaf& leaf);
    orvo::MidiClip MidiClipOf(const Leaf& leaf);

    void Settle(std::size_t number);
    orvo::AudioTrack NewTrackBeside(std::size_t number, orvo::TrackKind kind,
                                    std::string_view suffix);
    void AddNewTracks();
    void LinkCrossfades(orvo::AudioTrack& track) const;

    const ProjectDocument& document_;
    const Structure& structure_;
    MediaReader& media_;
    orvo::Session& session_;
    std::uint32_t nextClipId_ = 1;
    std::map<std::size_t, orvo::AudioTrack> besideVideo_;  // by the video track
    std::map<std::size_t, orvo::VideoTrack> besideAudio_;  // by the audio track
    std::vector<orvo::AudioTrack> newTracks_;
    std::vector<std::uint32_t> crossfadeIds_;  // of clips that cross the one before, in order
};

}  // namespace toolkit::interchange::dawproject
