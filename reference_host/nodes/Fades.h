#pragma once

#include "host/Fades.h"
#include "reference_host/Node.h"
#include "reference_host/model/AudioClip.h"

namespace refhost {

class EditFade final : public Face<tses::IEditClipFade, model::Fade> {
public:
    using Face::Face;

    void SetStartPoint(kelcore::int64 sample) override { Value().startPoint = sample; }
    void SetEndPoint(kelcore::int64 sample) override { Value().endPoint = sample; }
    void SetType(kelcore::uint32 type) override { Value().type = type; }
    void SetShape(kelcore::int32 shape) override { Value().shape = shape; }
    void SetCrossFadeLinkType(kelcore::uint32 type) override { Value().crossFadeLinkType = type; }
};

class QueryFade final : public Face<tses::IQueryClipFade, model::Fade> {
public:
    using Face::Face;

    kelcore::int64 GetStartPoint() override { return Value().startPoint; }
    kelcore::int64 GetEndPoint() override { return Value().endPoint; }
    kelcore::uint32 GetType() override { return Value().type; }
    kelcore::int32 GetShape() override { return Value().shape; }
    kelcore::uint32 GetCrossFadeLinkType() override { return Value().crossFadeLinkType; }
};

using FadeNode = TwoFacedNode<model::Fade, EditFade, QueryFade>;

}  // namespace refhost
