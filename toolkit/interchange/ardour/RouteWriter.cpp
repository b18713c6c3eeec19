#include "toolkit/interchange/ardour/RouteWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "toolkit/TrackSummary.h"
#include "toolkit/interchange/ControlRest.h"
#include "toolkit/interchange/HueColour.h"
#include "toolkit/interchange/Lanes.h"
#include "toolkit/interchange/Levels.h"

namespace toolkit::interchange {
namespace {

using orvo::AudioTrack;
using orvo::Fidelity;

constexpr std::uint32_t kStereo = 2;

class RouteWriting {
public:
    RouteWriting(const ArdourRoute& route, const ArdourRoute* output, ArdourXml& out,
                 const Export& job)
        : route_(route),
          output_(output),
          track_(route.planned.track != nullptr ? *route.planned.track : none_),
          out_(out),
          xml_(out.Xml()),
          job_(job) {}

    void Write(const std::vector<ArdourSend>& sends) {
        xml_.Open("Route")
            .Attribute("version", "7002")
            .Attribute("id", route_.id)
            .Attribute("name", route_.name)
            .Attribute("default-type", "audio")
            .Attribute("strict-io", route_.isMaster ? 1 : 0)
            .Attribute("active", 1)
            .Attribute("meter-point", "MeterPostFader")
            .Attribute("disk-io-point", "DiskIOPreFader");
        if (route_.playlist != 0) {
            xml_.Attribute("audio-playlist", route_.playlist).Attribute("mode", "Normal");
        }
        WritePresentation();
        WriteSolo();
        WritePorts();
        WriteMute();
        WritePhase();
        WritePan();
        WriteProcessors(sends);
        xml_.Open("Slavable");
        xml_.Close();
        xml_.Close();
    }

private:
    template <class Member>
    ModelPath PlaceOf(Member AudioTrack::*member) const {
        return route_.planned.place / member;
    }

    void WritePresentation() {
        const char* const kind = route_.isMaster        ? "MasterOut"
                                 : route_.playlist != 0 ? "AudioTrack"
                                                        : "AudioBus";
        std::uint32_t colour = 0;
        if (const auto rgb = ColourOf(track_.hue)) {
            constexpr std::uint32_t kOpaque = 0xFF;
            colour = static_cast<std::uint32_t>(rgb->red) << 24U |
                     static_cast<std::uint32_t>(rgb->green) << 16U |
                     static_cast<std::uint32_t>(rgb->blue) << 8U | kOpaque;
        }
        xml_.Open("PresentationInfo")
            .Attribute("order", route_.order)
            .Attribute("flags", fmt::format("{},OrderSet", kind))
            .Attribute("color", colour);
        xml_.Close();
    }

    void WriteSolo() {
        const int solo = track_.solo ? 1 : 0;
        xml_.Open("Controllable")
            .Attribute("name", "solo")
            .Attribute("id", out_.NewId())
            .Attribute("flags", "Toggle,RealTime")
            .Attribute("value", solo)
            .Attribute("self-solo", solo)
            .Attribute("soloed-by-upstream", 0)
            .Attribute("soloed-by-downstream", 0);
        xml_.Close();
    }

    void WritePorts() {
        OpenIo("Input");
        for (std::uint32_t i = 1; i <= route_.channels; ++i) {
            WritePort("in", i, "");
        }
        xml_.Close();
        OpenIo("Output");
        const std::uint32_t channels = output_ != nullptr ? output_->channels : route_.channels;
        for (std::uint32_t i = 1; i <= channels; ++i) {
            WritePort("out", i,
                      output_ != nullptr ? fmt::format("{}/audio_in {}", output_->name, i)
                                         : fmt::format("system:playback_{}", i));
        }
        xml_.Close();
    }

    void OpenIo(const char* direction) {
        xml_.Open("IO")
            .Attribute("name", route_.name)
            .Attribute("id", out_.NewId())
            .Attribute("direction", direction)
            .Attribute("default-type", "audio");
    }

    void WritePort(const char* direction, std::uint32_t number, const std::string& other) {
        xml_.Open("Port")
            .Attribute("type", "audio")
            .Attribute("name", fmt::format("{}/audio_{} {}", route_.name, direction, number));
        if (!other.empty()) {
            xml_.Open("Connection").Attribute("other", other);
            xml_.Close();
        }
        xml_.Close();
    }

    void WriteMute() {
        const ModelPath place = PlaceOf(&AudioTrack::mute);
        ReportRestOf(track_.mute, place, job_.reporter);
        ReportLostLane(track_.mute, place, job_.reporter);
        const bool isMuted = LaneOf(track_.mute, 0, place, job_.reporter).value >= kOnFrom;
        xml_.Open("MuteMaster")
            .Attribute("mute-point", "PreFader,PostFader,Listen,Main")
            .Attribute("muted", isMuted ? 1 : 0);
        xml_.Close();
        out_.Control("mute", "Toggle,RealTime", isMuted ? 1 : 0);
    }

    void WritePhase() {
        const bool isInverted = track_.phaseInverted;
        xml_.Open("Controllable")
            .Attribute("name", "phase")
            .Attribute("id", out_.NewId())
            .Attribute("flags", "Toggle")
            .Attribute("value", 0)
            .Attribute("phase-invert", std::string(route_.channels, isInverted ? '1' : '0'));
        xml_.Close();
    }

    void WritePan() {
        const ModelPath place = PlaceOf(&AudioTrack::pan);
        ParameterLane pan = LaneOf(track_.pan, 0, place, job_.reporter);
        ReportRestOf(track_.pan, place, job_.reporter);
        if (!HasPanner()) {
            ReportLostPan(pan, place);
            pan = {};
        }
        if (!pan.points.empty() && pan.value != 0) {
            job_.reporter.CountLost("values under automation");
        }
        WritePannable(pan);
    }

    void ReportLostPan(const ParameterLane& pan, const ModelPath& place) {
        if (pan.value != 0 || !pan.points.empty()) {
            job_.reporter.Add(Fidelity::Lost, place, "only mono and stereo tracks have a pan",
                              fmt::format("{}", pan.value));
        }
    }

    void WritePannable(const ParameterLane& pan) {
        std::vector<LanePoint> points = WithoutHolds(pan.points);
        for (LanePoint& point : points) {
            point.value = std::clamp(ToNormalizedPan(point.value), 0.0, 1.0);
        }
        xml_.Open("Pannable");
        out_.Control("pan-azimuth", "", std::clamp(ToNormalizedPan(pan.value), 0.0, 1.0));
        out_.Control("pan-width", "", route_.channels == 1 ? 0 : 1);
        xml_.Open("Automation");
        out_.List("pan-azimuth", "Linear", points);
        xml_.Close();
        xml_.Close();
    }

    bool HasPanner() const {
        return output_ != nullptr && output_->channels == kStereo && route_.channels <= kStereo;
    }

    void OpenProcessor(const std::string& name, const char* type) {
        xml_.Open("Processor")
            .Attribute("id", out_.NewId())
            .Attribute("name", name)
            .Attribute("active", 1)
            .Attribute("type", type);
    }

    void WriteProcessors(const std::vector<ArdourSend>& sends) {
        if (route_.playlist != 0) {
            OpenProcessor("player:" + route_.name, "diskreader");
            xml_.Close();
        } else if (!route_.isMaster) {
            OpenProcessor("Return", "intreturn");
            xml_.Close();
        }
        OpenProcessor("Polarity", "polarity");
        xml_.Close();
        WriteSends(sends, true);
        WriteFader();
        WriteSends(sends, false);
        OpenProcessor(route_.name, "main-outs");
        xml_.Attribute("own-input", 1)
            .Attribute("own-output", 0)
            .Attribute("output", route_.name)
            .Attribute("role", "Main");
        WritePanner(HasPanner(), true);
        xml_.Close();
    }

    void WritePanner(bool hasPanner, bool isRoutes) {
        xml_.Open("PannerShell")
            .Attribute("bypassed", hasPanner ? 0 : 1)
            .Attribute("user-panner", "")
            .Attribute("linked-to-route", isRoutes ? 1 : 0);
        if (hasPanner) {
            const bool isMono = route_.channels == 1;
            xml_.Open("Panner")
                .Attribute("uri", isMono ? "http://ardour.org/plugin/panner_1in2out"
                                         : "http://ardour.org/plugin/panner_balance")
                .Attribute("type", isMono ? "Mono to Stereo Panner" : "Stereo Balance");
            xml_.Close();
        }
        xml_.Close();
    }

    void WriteFader() {
        const ModelPath place = PlaceOf(&AudioTrack::fader);
        const ParameterLane fader = LaneOf(track_.fader, 0, place, job_.reporter);
        ReportRestOf(track_.fader, place, job_.reporter);
        std::vector<LanePoint> points = WithoutHolds(AmplitudesOf(fader.points, Levels()));
        if (!points.empty() && fader.value != 0) {
            job_.reporter.CountLost("values under automation");
        }
        const auto isTooHigh = [](const LanePoint& point) { return point.value > kHighestGain; };
        if (std::ranges::any_of(points, isTooHigh)) {
            job_.reporter.Add(Fidelity::Approximated, place, "automation of levels ends at 6 dB");
            for (LanePoint& point : points) {
                point.value = std::min(point.value, kHighestGain);
            }
        }
        OpenProcessor("Amp", "amp");
        xml_.Open("Automation");
        out_.List("gain", "Linear", points);
        xml_.Close();
        out_.Control("gaincontrol", "GainLike",
                     points.empty() ? ToAmplitude(fader.value, Levels()) : points.front().value);
        xml_.Close();
    }

    void WriteSends(const std::vector<ArdourSend>& sends, bool preFader) {
        for (const ArdourSend& send : sends) {
            if (send.send.slot->preFader == preFader) {
                WriteSend(send);
            }
        }
    }

    void WriteSend(const ArdourSend& send) {
        const orvo::SendSlot& slot = *send.send.slot;
        const ModelPath level = send.send.place / &orvo::SendSlot::sendComponent;
        const ModelPath pan = send.send.place / &orvo::SendSlot::panComponent;
        ReportRestOf(slot.sendComponent, level, job_.reporter);
        ReportLostLane(slot.sendComponent, level, job_.reporter);
        ReportRestOf(slot.panComponent, pan, job_.reporter);
        ReportLostLane(slot.panComponent, pan, job_.reporter);
        const bool hasPanner = send.target->channels == kStereo && route_.channels <= kStereo;
        const double position = LaneOf(slot.panComponent, 0, pan, job_.reporter).value;
        if (!hasPanner && position != 0) {
            job_.reporter.Add(Fidelity::Lost, pan, "only mono and stereo sends have a pan",
                              fmt::format("{}", position));
        }
        OpenProcessor(send.target->name, "intsend");
        xml_.Attribute("own-input", 1)
            .Attribute("own-output", 1)
            .Attribute("role", "Aux")
            .Attribute("bitslot", send.slot)
            .Attribute("selfdestruct", 0)
            .Attribute("target", send.target->id)
            .Attribute("allow-feedback", 0);
        xml_.Open("Automation");
        xml_.Close();
        WritePanner(hasPanner, false);
        WritePannable({.value = hasPanner ? position : 0});
        out_.Control("polarity-invert", "Toggle", 0);
        const double amplitude =
            ToAmplitude(LaneOf(slot.sendComponent, 0, level, job_.reporter).value, Levels());
        out_.Control("gaincontrol", "GainLike,InlineControl", amplitude);
        xml_.Close();
    }

    orvo::LevelUnit Levels() const { return job_.options.conventions.levels; }

    const AudioTrack none_{};
    const ArdourRoute& route_;
    const ArdourRoute* output_;
    const AudioTrack& track_;
    ArdourXml& out_;
    XmlWriter& xml_;
    const Export& job_;
};

}  // namespace

void WriteArdourRoute(const ArdourRoute& route, const ArdourRoute* output,
                      const std::vector<ArdourSend>& sends, ArdourXml& out, const Export& job) {
    RouteWriting(route, output, out, job).Write(sends);
}

}  // namespace toolkit::interchange
