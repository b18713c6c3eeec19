#pragma once

#include <cstdint>
#include <unordered_map>

#include <orvo/Interchange.h>
#include <orvo/Lookup.h>
#include <orvo/Model.h>

namespace toolkit::interchange {

class Reporter;

/// What a file's sound is.
struct MediaFact {
    std::int64_t frames = 0;  ///< samples of each channel, at `sampleRate`
    std::uint32_t sampleRate = 0;
    std::uint32_t channels = 0;
    bool isGuessed = false;  ///< the file could not be looked into
    bool exists = false;

    double Seconds() const { return static_cast<double>(frames) / sampleRate; }
};

/// Looks into the media of a session, each once and only when it is asked for. What cannot be
/// looked into is guessed of the clips that play it, and reported: it lasts as long as they need,
/// at the session's rate.
class MediaFacts {
public:
    /// All must outlive this object.
    MediaFacts(const orvo::Session& session, const orvo::Conventions& conventions,
               Reporter& reporter);

    /// @param fileId  need not be that of a file
    const MediaFact& Of(std::uint32_t fileId);

private:
    /// What the clips need of a file.
    struct Need {
        std::int64_t frames = 0;
        std::uint32_t channels = 1;
    };

    void FindNeeds();
    void AddNeed(const orvo::AudioTrack& track, const orvo::AudioClip& clip);
    MediaFact LookInto(const orvo::File& file);
    MediaFact Guess(const orvo::File& file);

    const orvo::Session& session_;
    const orvo::Conventions& conventions_;
    Reporter& reporter_;
    orvo::SessionIndex index_;
    std::unordered_map<std::uint32_t, MediaFact> facts_;
    std::unordered_map<std::uint32_t, Need> needs_;
};

}  // namespace toolkit::interchange
