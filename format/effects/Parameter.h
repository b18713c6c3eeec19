#pragma once

#include <string_view>

#include "format/Ids.h"
#include "format/Names.h"
#include "format/Rows.h"

// One value of a component, and its automation:
//
//     <parameter index="3" name="Threshold" parameterValue="-18.5" safeDuringWrite="true">
//       <parameterKeyframes enableSplines="false" readOnly="false">
//         <parameterKeyframe sampleOffset="48000" select="false" type="hold" value="0.5"/>
//       </parameterKeyframes>
//     </parameter>
//
// and which parameter of which rack slot a track or clip shows for editing:
//
//     <editParameter parameterIndex="3" slotIndex="0"/>

namespace tses {

struct ParameterRecord {
    kelcore::uint32 index = 0;
    float value = 0;
    std::u16string_view name = u"";  // zero-terminated
    bool safeDuringWrite = false;
};

inline constexpr auto kParameterRows =
    Rows(Number<&ParameterRecord::index>(names::index),
         UnlessEmpty(Text<&ParameterRecord::name>(names::name)),
         LenientReal<&ParameterRecord::value>(names::parameterValue),
         IfTrue(StrictBool<&ParameterRecord::safeDuringWrite>(names::safeDuringWrite)));

struct LaneRecord {
    bool enableSplines = false;
    bool readOnly = false;
};

inline constexpr auto kLaneRows =
    Rows(LenientBool<&LaneRecord::enableSplines>(names::enableSplines),
         LenientBool<&LaneRecord::readOnly>(names::readOnly));

struct KeyframeRecord {
    kelcore::int64 sampleOffset = 0;
    float value = 0;
    bool hold = false;
    bool selected = false;
};

inline constexpr Keyword<bool> kKeyframeTypes[] = {{u"hold", true}, {u"linear", false}};

inline constexpr auto kKeyframeRows =
    Rows(Number<&KeyframeRecord::sampleOffset>(names::sampleOffset),
         LenientBool<&KeyframeRecord::selected>(names::select),
         FirstOfTwo<&KeyframeRecord::hold, kKeyframeTypes>(names::type),
         LenientReal<&KeyframeRecord::value>(names::value));

struct EditParameterRecord {
    kelcore::uint32 slotIndex = kNoId;
    kelcore::uint32 parameterIndex = 0;
};

inline constexpr auto kEditParameterRows =
    Rows(Number<&EditParameterRecord::parameterIndex>(names::parameterIndex),
         Number<&EditParameterRecord::slotIndex>(names::slotIndex));

}  // namespace tses
