#include "plugin/elements/tracks/Writers.h"

#include "format/tracks/Track.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Text.h"

// How a track is shown, for both families of tracks. The name's element is written even when the
// name is empty. Reading applies everything at the end tag, from a record that only track elements
// reset.

namespace tses {
namespace {

template <class Track>
void Apply(const PendingTrack& pending, Track& track) {
    track.SetName(pending.name.c_str());
    track.SetHeight(pending.parameters.height);
    track.SetHue(pending.parameters.hue);
    track.SetMinimized(pending.parameters.minimized);
}

}  // namespace

void Serializer::Impl::StartTrackParameters(State state, const TagAttributes& attributes) {
    PushState(state);
    ReadAttributes<kTrackParametersRows>(attributes, tracks_.pending.parameters);
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
TrackParametersRecord QueryParameters(Track& track) {
    return {track.GetHeight(), track.GetHue(), track.IsMinimized()};
}

bool WriteName(SessionXMLWriter& writer, std::u16string_view name) {
    return writer.StartElement(names::name) && (name.empty() || writer.Text(name)) &&
           writer.EndElement();
}

template <class Track>
bool Write(SessionXMLWriter& writer, Track& track) {
    const TrackParametersRecord record = QueryParameters(track);
    return writer.StartElement(names::trackParameters,
                               ToAttributes<kTrackParametersRows>(record)) &&
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
