#pragma once

#include "format/Names.h"
#include "format/Rows.h"

// How a clip begins and ends, and how overlapping clips cross:
//
//     <fadeIn startPoint="0" endPoint="4800" type="log" shape="0"
//             crossFadeLinkType="linkedSymmetric"/>
//     <fadeOut .../>
//
// A misspelt curve reads as a cosine, not the default.

namespace tses {

struct FadeRecord {
    kelcore::int64 startPoint = 0;
    kelcore::int64 endPoint = 0;
    kelcore::uint32 type = 0;
    kelcore::int32 shape = 0;
    kelcore::uint32 crossFadeLinkType = 0;
};

inline constexpr Keyword<kelcore::uint32> kFadeTypes[] = {{u"log", 0}, {u"cosine", 1}};
inline constexpr Keyword<kelcore::uint32> kLinkTypes[] = {{u"linkedSymmetric", 0},
                                                          {u"linkedAsymmetric", 1}};

inline constexpr auto kFadeRows =
    Rows(FirstOfTwo<&FadeRecord::crossFadeLinkType, kLinkTypes>(names::crossFadeLinkType),
         Number<&FadeRecord::endPoint>(names::endPoint), Number<&FadeRecord::shape>(names::shape),
         Number<&FadeRecord::startPoint>(names::startPoint),
         FirstOfTwo<&FadeRecord::type, kFadeTypes>(names::type));

}  // namespace tses
