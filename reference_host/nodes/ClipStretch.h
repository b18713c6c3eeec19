#pragma once

#include "host/ClipStretch.h"
#include "reference_host/Node.h"
#include "reference_host/model/AudioClip.h"

namespace refhost {

class EditStretch final : public Face<tses::IEditClipStretch, model::ClipStretch> {
public:
    using Face::Face;

    void SetStretchMode(kelcore::uint32 mode) override { Value().stretchMode = mode; }
    void SetStretchType(kelcore::uint32 type) override { Value().stretchType = type; }
    void SetStretchRatio(double ratio) override { Value().stretchRatio = ratio; }
    void SetPitchAdjustment(double adjustment) override { Value().pitchAdjustment = adjustment; }
    void SetStretchQuality(kelcore::uint32 quality) override { Value().stretchQuality = quality; }
    void SetTransientSensitivity(kelcore::int32 sensitivity) override {
        Value().transientSensitivity = sensitivity;
    }
    void SetAdaptiveWindowSize(kelcore::int32 size) override { Value().adaptiveWindowSize = size; }
    void SetPreserveFormants(bool preserve) override { Value().preserveFormants = preserve; }
};

class QueryStretch final : public Face<tses::IQueryClipStretch, model::ClipStretch> {
public:
    using Face::Face;

    kelcore::uint32 GetStretchMode() override { return Value().stretchMode; }
    kelcore::uint32 GetStretchType() override { return Value().stretchType; }
    double GetStretchRatio() override { return Value().stretchRatio; }
    double GetPitchAdjustment() override { return Value().pitchAdjustment; }
    kelcore::uint32 GetStretchQuality() override { return Value().stretchQuality; }
    kelcore::int32 GetTransientSensitivity() override { return Value().transientSensitivity; }
    kelcore::int32 GetAdaptiveWindowSize() override { return Value().adaptiveWindowSize; }
    bool GetPreserveFormants() override { return Value().preserveFormants; }
};

using StretchNode = TwoFacedNode<model::ClipStretch, EditStretch, QueryStretch>;

}  // namespace refhost
