#include "toolkit/check/MediaCheck.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>

#include <orvo/Lookup.h>
#include "toolkit/ModelPath.h"
#include "toolkit/check/Words.h"

namespace toolkit {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::File;
using orvo::Session;

class MediaCheck {
public:
    MediaCheck(const Session& session, const MediaReader& read) : session_(session), read_(read) {}

    std::vector<ModelFinding> Run() && {
        orvo::ForEachAudioTrack(session_, [this](const AudioTrack& track) {
            for (const AudioClip& clip : track.clips) {
                played_.insert(clip.fileId);
            }
        });
        const ModelPath files = ModelPath() / &Session::files;
        for (std::size_t i = 0; i < session_.files.size(); ++i) {
            OfFile(session_.files[i], files / i);
        }
        const ModelPath tracks = ModelPath() / &Session::audioTracks;
        for (std::size_t i = 0; i < session_.audioTracks.size(); ++i) {
            OfTrack(session_.audioTracks[i], tracks / i);
        }
        if (session_.metronome.track) {
            OfTrack(*session_.metronome.track,
                    ModelPath() / &Session::metronome / &orvo::Metronome::track);
        }
        return std::move(findings_);
    }

private:
    /// A sound file that could be looked into.
    struct Sound {
        const File* file;
        MediaProperties properties;
    };

    void Add(Code code, const ModelPath& path, std::string what) {
        findings_.push_back({code, path.Text(), std::move(what)});
    }

    void OfFile(const File& file, const ModelPath& path) {
        const ModelPath place = path / &File::path;
        if (file.path.empty()) {
            Add(Code::MissingMedia, place, fmt::format("file {} has no path", file.id));
            return;
        }
        const MediaResult result = Read(file.path);
        if (const auto* const properties = std::get_if<MediaProperties>(&result)) {
            OfSound(file, *properties, place);
            return;
        }
        switch (std::get<MediaObstacle>(result)) {
            case MediaObstacle::Missing:
                Add(Code::MissingMedia, place, NameOf(file) + " is missing");
                break;
            case MediaObstacle::Silent:
                Add(Code::UnreadableMedia, place, NameOf(file) + ": its folder does not answer");
                break;
            case MediaObstacle::Refused:
                if (IsPlayed(file)) {
                    Add(Code::UnreadableMedia, place, NameOf(file) + " must not be read");
                }
                break;
            case MediaObstacle::Unknown:
                if (IsPlayed(file)) {
                    Add(Code::UnreadableMedia, place,
                        NameOf(file) + " is damaged, or no sound file");
                }
        }
    }

    /// Asks once for a folder that does not answer.
    MediaResult Read(const std::string& path) {
        std::string folder = path.substr(0, path.find_last_of('/') + 1);
        if (silent_.contains(folder)) {
            return MediaObstacle::Silent;
        }
        MediaResult result = read_(path);
        if (result == MediaResult(MediaObstacle::Silent)) {
            silent_.insert(std::move(folder));
        }
        return result;
    }

    void OfSound(const File& file, const MediaProperties& properties, const ModelPath& place) {
        sounds_.try_emplace(file.id, Sound{&file, properties});
        if (IsPlayed(file) && properties.sampleRate != session_.sampleRate &&
            session_.sampleRate != 0) {
            Add(Code::MediaRate, place,
                fmt::format("{} has {} samples per second, the session {}", NameOf(file),
                            properties.sampleRate, session_.sampleRate));
        }
    }

    void OfTrack(const AudioTrack& track, const ModelPath& path) {
        for (std::size_t i = 0; i < track.clips.size(); ++i) {
            const AudioClip& clip = track.clips[i];
            const auto sound = sounds_.find(clip.fileId);
            if (sound != sounds_.end()) {
                const ModelPath place = path / &AudioTrack::clips / i;
                OfLength(clip, sound->second, place);
                OfChannels(clip, sound->second, place);
            }
        }
    }

    /// A loop begins again at the file's end, and a stretched clip needs another length than its
    /// own.
    void OfLength(const AudioClip& clip, const Sound& sound, const ModelPath& path) {
        const bool isStretched =
            clip.stretch && clip.stretch->stretchMode != orvo::StretchMode::Off;
        if (clip.looped || isStretched || sound.properties.sampleRate == 0 ||
            session_.sampleRate == 0) {
            return;
        }
        const double length = std::ceil(static_cast<double>(sound.properties.frames) *
                                        session_.sampleRate / sound.properties.sampleRate);
        const double needed =
            static_cast<double>(clip.sourceInPoint) + static_cast<double>(clip.duration);
        if (needed > length) {
            Add(Code::ShortMedia, path / &AudioClip::duration,
                fmt::format("{} needs {:.0f} samples of {}, which has {:.0f}", NameOf(clip), needed,
                            NameOf(*sound.file), length));
        }
    }

    void OfChannels(const AudioClip& clip, const Sound& sound, const ModelPath& path) {
        for (const auto& [channel, source] : clip.channelSources) {
            if (source >= 0 && static_cast<std::uint32_t>(source) >= sound.properties.channels) {
                Add(Code::MediaChannels, path / &AudioClip::channelSources / channel,
                    fmt::format("{} uses channel {} of {}, which has {}", NameOf(clip), source,
                                NameOf(*sound.file), sound.properties.channels));
            }
        }
    }

    bool IsPlayed(const File& file) const { return played_.contains(file.id); }

    const Session& session_;
    const MediaReader& read_;
    std::unordered_set<std::uint32_t> played_;  // files of audio clips
    std::unordered_set<std::string> silent_;    // folders that do not answer
    std::unordered_map<std::uint32_t, Sound> sounds_;
    std::vector<ModelFinding> findings_;
};

}  // namespace

std::vector<ModelFinding> CheckMedia(const Session& session, const MediaReader& read) {
    return MediaCheck(session, read).Run();
}

}  // namespace toolkit
