#pragma once

#include "format/Names.h"
#include "format/Rows.h"

// How a clip is stretched in time and shifted in pitch:
//
//     <clipStretch adaptiveWindowSize="37" pitchAdjustment="0" preserveFormants="true"
//                  stretchMode="realtime" stretchQuality="high" stretchRatio="1.25"
//                  stretchType="normal" transientSensitivity="40"/>

namespace tses {

struct StretchRecord {
    kelcore::uint32 mode = 0;
    kelcore::uint32 type = 0;
    double ratio = 1.0;
    double pitchAdjustment = 0.0;
    kelcore::uint32 quality = 0;
    kelcore::int32 transientSensitivity = 40;
    kelcore::int32 adaptiveWindowSize = 37;
    bool preserveFormants = true;
};

inline constexpr Keyword<kelcore::uint32> kStretchModes[] = {
    {u"off", 0}, {u"realtime", 1}, {u"rendered", 2}};
inline constexpr Keyword<kelcore::uint32> kStretchTypes[] = {
    {u"normal", 0}, {u"solo", 1}, {u"varispeed", 2}};
inline constexpr Keyword<kelcore::uint32> kStretchQualities[] = {
    {u"high", 0}, {u"medium", 1}, {u"low", 2}};

inline constexpr auto kStretchRows =
    Rows(Number<&StretchRecord::adaptiveWindowSize>(names::adaptiveWindowSize),
         LenientReal<&StretchRecord::pitchAdjustment>(names::pitchAdjustment),
         LenientBool<&StretchRecord::preserveFormants>(names::preserveFormants),
         WordOrNumber<&StretchRecord::mode, kStretchModes>(names::stretchMode),
         WordOrNumber<&StretchRecord::quality, kStretchQualities>(names::stretchQuality),
         LenientReal<&StretchRecord::ratio>(names::stretchRatio),
         WordOrNumber<&StretchRecord::type, kStretchTypes>(names::stretchType),
         Number<&StretchRecord::transientSensitivity>(names::transientSensitivity));

}  // namespace tses
