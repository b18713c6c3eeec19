#include <orvo/Json.h>

#include <cmath>
#include <string>

#include "toolkit/interchange/Carried.h"
#include "toolkit/interchange/ZipArchive.h"
#include "toolkit/interchange/dawproject/ArrangementWriter.h"
#include "toolkit/interchange/dawproject/DawProject.h"
#include "toolkit/interchange/dawproject/Entries.h"
#include "toolkit/interchange/dawproject/Metadata.h"
#include "toolkit/interchange/dawproject/StructureWriter.h"
#include "toolkit/media/Sha256.h"

namespace toolkit::interchange {
namespace dawproject {
namespace {

using orvo::Fidelity;
using orvo::Session;

/// What a session without a tempo or a meter gets, as DAWproject must have both.
constexpr double kUsualTempo = 120;
constexpr std::int32_t kUsualMeter = 4;

Carried CarriedByDawProject() {
    using orvo::AudioClip;
    using orvo::AudioTrack;
    using orvo::MidiClip;
    using orvo::VideoClip;
    using orvo::VideoTrack;
    Carried carried = CarriedByAll();
    carried
        .Handles(&Session::sampleRate, &Session::audioChannelType, &Session::musicalTime,
                 &Session::xmpMetadata)
        .Handles(&AudioTrack::index, &AudioTrack::kind, &AudioTrack::name, &AudioTrack::hue,
                 &AudioTrack::audioChannelType, &AudioTrack::solo, &AudioTrack::outputTrackId,
                 &AudioTrack::fader, &AudioTrack::mute, &AudioTrack::pan, &AudioTrack::eq,
                 &AudioTrack::effectsRack, &AudioTrack::sendList)
        .Handles(&VideoTrack::index, &VideoTrack::name, &VideoTrack::hue)
        .Handles(&AudioClip::name, &AudioClip::hue, &AudioClip::startPoint, &AudioClip::duration,
                 &AudioClip::sourceInPoint, &AudioClip::fileId, &AudioClip::looped,
                 &AudioClip::fadeIn, &AudioClip::fadeOut, &AudioClip::crossFadeHeadClipId,
                 &AudioClip::crossFadeTailClipId, &AudioClip::stretch, &AudioClip::gain,
                 &AudioClip::mute, &AudioClip::pan)
        .Handles(&VideoClip::name, &VideoClip::hue, &VideoClip::startPoint, &VideoClip::duration,
                 &VideoClip::sourceInPoint, &VideoClip::fileId)
        .Handles(&MidiClip::name, &MidiClip::hue, &MidiClip::startPoint, &MidiClip::duration,
                 &MidiClip::sourceInPoint, &MidiClip::events)
        .Handles(&orvo::File::path)
        .LacksByNature(&AudioClip::zOrder, "layers of clips")
        .LacksByNature(&VideoClip::zOrder, "layers of clips")
        .LacksByNature(&AudioClip::autoCrossfade, "choices of automatic crossfades");
    return carried;
}

class ProjectWriter {
public:
    ProjectWriter(const Export& job, const XmlWriter::Sink& sink)
        : job_(job), xml_(sink), media_(job) {}

    /// Writes the whole document.
    States Write() {
        Plan plan(job_.session);
        xml_.Open("Project").Attribute("version", "1.0");
        xml_.Open("Application").Attribute("name", "OrvoNative").Attribute("version", "1.0");
        xml_.Close();
        WriteTransport();
        States states = WriteStructure(writing_, plan);
        WriteArrangement(writing_, plan, media_);
        xml_.Close();
        ReportChannels(plan);
        ReportRate();
        media_.Report();
        job_.reporter.CountLost("characters that XML cannot hold", xml_.ReplacedCharacters());
        return states;
    }

    const MediaPlan& Media() const { return media_; }

private:
    void WriteTransport() {
        const orvo::MusicalTime& time = job_.session.musicalTime;
        const ModelPath place = ModelPath() / &Session::musicalTime;
        const bool hasTempo = time.beatsPerMinute > 0 && std::isfinite(time.beatsPerMinute);
        const bool hasMeter = time.beatsPerBar > 0 && time.noteLength > 0;
        if (!hasTempo) {
            Guess(place / &orvo::MusicalTime::beatsPerMinute, "without a tempo, it is 120");
        }
        if (!hasMeter) {
            Guess(place / &orvo::MusicalTime::beatsPerBar, "without a meter, it is 4/4");
        }
        job_.reporter.CountLost("subdivisions of beats", time.subdivisions != 0 ? 1 : 0);
        xml_.Open("Transport");
        xml_.Open("Tempo")
            .Attribute("id", "tempo")
            .Attribute("unit", "bpm")
            .Attribute("value", NumberText(hasTempo ? time.beatsPerMinute : kUsualTempo));
        xml_.Close();
        xml_.Open("TimeSignature")
            .Attribute("id", "meter")
            .Attribute("numerator", hasMeter ? time.beatsPerBar : kUsualMeter)
            .Attribute("denominator", hasMeter ? time.noteLength : kUsualMeter);
        xml_.Close();
        xml_.Close();
    }

    /// The session's own channels are those of its master.
    void ReportChannels(const Plan& plan) {
        const orvo::ChannelType own = job_.session.audioChannelType;
        const bool isCarried = plan.Master() != nullptr
                                   ? plan.Master()->audio->audioChannelType == own
                                   : own == Session().audioChannelType;
        if (!isCarried) {
            job_.reporter.Add(Fidelity::Lost, ModelPath() / &Session::audioChannelType,
                              "the session's channels are taken for those of its master");
        }
    }

    void ReportRate() {
        const std::uint32_t usual = media_.UsualRate();
        const std::uint32_t read = usual != 0 ? usual : orvo::ImportOptions().sampleRate;
        if (read != job_.session.sampleRate) {
            job_.reporter.Add(Fidelity::Lost, ModelPath() / &Session::sampleRate,
                              "the session's rate is taken for that of most media",
                              std::to_string(job_.session.sampleRate));
        }
    }

    void Guess(const ModelPath& place, std::string_view what) {
        job_.reporter.Add(Fidelity::Guessed, place, what);
    }

    const Export& job_;
    XmlWriter xml_;
    Writing writing_{.job = job_, .xml = xml_};
    MediaPlan media_;
};

std::string_view BytesOf(const std::vector<std::uint8_t>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string DigestOf(std::string_view text) {
    Sha256 sum;
    sum.Add(text);
    return sum.Digest();
}

/// The session as it is, which `ReadRestored` reads.
void AddSession(const Export& job, ZipWriter& zip, std::string_view projectDigest,
                std::string_view metadataDigest) {
    zip.Begin(kSessionEntry);
    orvo::ToJson(job.session, [&](std::string_view block) {
        job.Progress(0.8);
        zip.Write(block);
    });
    zip.End();
    zip.Add(kDigestsEntry, DigestsText(projectDigest, metadataDigest));
}

}  // namespace
}  // namespace dawproject

void WriteDawProject(const Export& job) {
    using namespace dawproject;
    ZipWriter zip(job.outputs.Add(job.target));
    Sha256 sum;
    zip.Begin(kProjectEntry);
    ProjectWriter project(job, [&](std::string_view block) {
        sum.Add(block);
        zip.Write(block);
    });
    const States states = project.Write();
    zip.End();
    const std::string metadata = MetadataOf(job.session, job.reporter);
    zip.Add(kMetadataEntry, metadata);
    for (const auto& [entry, state] : states) {
        zip.Add(entry, BytesOf(*state));
    }
    if (job.options.ownData) {
        AddSession(job, zip, sum.Digest(), DigestOf(metadata));
    }
    for (const EmbeddedMedia& media : project.Media().Embedded()) {
        job.Progress(0.9);
        zip.AddFile(media.entry, media.path);
    }
    zip.Finish();
    ReportWhatIsNotCarried(job.session, CarriedByDawProject(), job.reporter);
}

}  // namespace toolkit::interchange
