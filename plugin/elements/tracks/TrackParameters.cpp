#include "plugin/elements/tracks/TrackParameters.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Text.h"

// How a track is shown, for both families of tracks:
//
//     <trackParameters trackHeight="64" trackHue="212.5" trackMinimized="false">
//       <name>Voice</name>
//     </trackParameters>
//
// The name's element is written even when the name is empty. Reading applies everything at the end
// tag, from a record that only track elements reset.

namespace tses {
namespace {

constexpr Binding<PendingTrack> kBindings[] = {
    {names::trackHeight, read::Number<&PendingTrack::height>},
    {names::trackHue, read::LenientDouble<&PendingTrack::hue>},
    {names::trackMinimized, read::StrictBool<&PendingTrack::minimized>},
};

template <class Track>
void Apply(const PendingTrack& pending, Track& track) {
    track.SetName(pending.name.c_str());
    track.SetHeight(pending.height);
    track.SetHue(pending.hue);
    track.SetMinimized(pending.minimized);
}

}  // namespace

void Serializer::Impl::StartTrackParameters(State state, const TagAttributes& attributes) {
    PushState(state);
    ReadAttributes<kBindings>(attributes, tracks_.pending);
}

void Serializer::Impl::EndTrackName() {
    tracks_.pending.name = TrimWhitespace(characterBuffer_);
}

void Serializer::Impl::EndTrackParameters() {
    if (tracks_.track) {
        Apply(tracks_.pending, *tracks_.track);
    }
}

void Serializer::Impl::EndVideoTrackParameters() {
    if (tracks_.videoTrack) {
        Apply(tracks_.pending, *tracks_.videoTrack);
    }
}

// Writing

namespace {

template <class Track>
AttributeMap QueryAttributes(Track& track) {
    return {{names::trackHeight, FormatSigned(track.GetHeight())},
            {names::trackHue, FormatDouble(track.GetHue())},
            {names::trackMinimized, FormatBool(track.IsMinimized())}};
}

bool WriteName(SessionXMLWriter& writer, const std::u16string& name) {
    return writer.StartElement(names::name) && (name.empty() || writer.Text(name)) &&
           writer.EndElement();
}

template <class Track>
bool Write(SessionXMLWriter& writer, Track& track) {
    return writer.StartElement(names::trackParameters, QueryAttributes(track)) &&
           WriteName(writer, TextOf(track.GetName())) && writer.EndElement();
}

}  // namespace

bool WriteTrackParameters(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track) {
    return Write(writer, track);
}

bool WriteTrackParameters(SessionXMLWriter& writer, IQueryVideoTrack& track) {
    return Write(writer, track);
}

}  // namespace tses
