#include "plugin/elements/clips/Writers.h"

#include "format/clips/ClipStretch.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

void Apply(const StretchRecord& record, IEditClipStretch& stretch) {
    stretch.SetStretchMode(record.mode);
    stretch.SetStretchType(record.type);
    stretch.SetStretchRatio(record.ratio);
    stretch.SetPitchAdjustment(record.pitchAdjustment);
    stretch.SetStretchQuality(record.quality);
    stretch.SetTransientSensitivity(record.transientSensitivity);
    stretch.SetAdaptiveWindowSize(record.adaptiveWindowSize);
    stretch.SetPreserveFormants(record.preserveFormants);
}

}  // namespace

void Serializer::Impl::StartClipStretch(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<StretchRecord, kStretchRows>(attributes);
    if (!clips_.audioClip) {
        return;
    }
    if (const auto stretch = Retain(clips_.audioClip->GetClipStretch())) {
        Apply(record, *stretch);
    }
}

// Writing

namespace {

StretchRecord QueryStretch(IQueryClipStretch& stretch) {
    StretchRecord record;
    record.mode = stretch.GetStretchMode();
    record.type = stretch.GetStretchType();
    record.ratio = stretch.GetStretchRatio();
    record.pitchAdjustment = stretch.GetPitchAdjustment();
    record.quality = stretch.GetStretchQuality();
    record.transientSensitivity = stretch.GetTransientSensitivity();
    record.adaptiveWindowSize = stretch.GetAdaptiveWindowSize();
    record.preserveFormants = stretch.GetPreserveFormants();
    return record;
}

}  // namespace

bool WriteClipStretch(SessionXMLWriter& writer, HostReference<IQueryClipStretch> stretch) {
    return !stretch || (writer.StartElement(names::clipStretch,
                                            ToAttributes<kStretchRows>(QueryStretch(*stretch))) &&
                        writer.EndElement());
}

}  // namespace tses
