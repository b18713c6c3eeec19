#pragma once

#include "host/Fades.h"
#include <orvo/AudioClip.h>
#include "reference_host/Node.h"

namespace refhost {

class EditFade final : public Face<tses::IEditClipFade, orvo::Fade> {
public:
    using Face::Face;

    void SetStartPoint(kelcore::int64 sample) override { Value().startPoint = sample; }
    void SetEndPoint(kelcore::int64 sample) override { Value().endPoint = sample; }
    void SetType(kelcore::uint32 type) override { Value().type = orvo::FadeType{type}; }
    void SetShape(kelcore::int32 shape) override { Value().shape = shape; }
    void SetCrossFadeLinkType(kelcore::uint32 type) override {
        Value().crossFadeLinkType = orvo::CrossFadeLink{type};
    }
};

class QueryFade final : public Face<tses::IQueryClipFade, orvo::Fade> {
public:
    using Face::Face;

    kelcore::int64 GetStartPoint() override { return Value().startPoint; }
    kelcore::int64 GetEndPoint() override { return Value().endPoint; }
    kelcore::uint32 GetType() override { return NumberOf(Value().type); }
    kelcore::int32 GetShape() override { return Value().shape; }
    kelcore::uint32 GetCrossFadeLinkType() override { return NumberOf(Value().crossFadeLinkType); }
};

using FadeNode = TwoFacedNode<orvo::Fade, EditFade, QueryFade>;

}  // namespace refhost
