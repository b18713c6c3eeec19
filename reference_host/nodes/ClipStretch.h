#pragma once

#include "host/ClipStretch.h"
#include <orvo/AudioClip.h>
#include "reference_host/Node.h"

namespace refhost {

class EditStretch final : public Face<tses::IEditClipStretch, orvo::ClipStretch> {
public:
    using Face::Face;

    void SetStretchMode(kelcore::uint32 mode) override {
        Value().stretchMode = orvo::StretchMode{mode};
    }
    void SetStretchType(kelcore::uint32 type) override {
        Value().stretchType = orvo::StretchType{type};
    }
    void SetStretchRatio(double ratio) override { Value().stretchRatio = ratio; }
    void SetPitchAdjustment(double adjustment) override { Value().pitchAdjustment = adjustment; }
    void SetStretchQuality(kelcore::uint32 quality) override {
        Value().stretchQuality = orvo::StretchQuality{quality};
    }
    void SetTransientSensitivity(kelcore::int32 sensitivity) override {
        Value().transientSensitivity = sensitivity;
    }
    void SetAdaptiveWindowSize(kelcore::int32 size) override { Value().adaptiveWindowSize = size; }
    void SetPreserveFormants(bool preserve) override { Value().preserveFormants = preserve; }
};

class QueryStretch final : public Face<tses::IQueryClipStretch, orvo::ClipStretch> {
public:
    using Face::Face;

    kelcore::uint32 GetStretchMode() override { return NumberOf(Value().stretchMode); }
    kelcore::uint32 GetStretchType() override { return NumberOf(Value().stretchType); }
    double GetStretchRatio() override { return Value().stretchRatio; }
    double GetPitchAdjustment() override { return Value().pitchAdjustment; }
    kelcore::uint32 GetStretchQuality() override { return NumberOf(Value().stretchQuality); }
    kelcore::int32 GetTransientSensitivity() override { return Value().transientSensitivity; }
    kelcore::int32 GetAdaptiveWindowSize() override { return Value().adaptiveWindowSize; }
    bool GetPreserveFormants() override { return Value().preserveFormants; }
};

using StretchNode = TwoFacedNode<orvo::ClipStretch, EditStretch, QueryStretch>;

}  // namespace refhost
