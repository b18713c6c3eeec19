#pragma once

#include "format/Names.h"
#include "format/Rows.h"
#include "platform/kelmediatypes/PixelAspectRatio.h"

// The video stream of a clip:
//
//     <videoFormat fieldType="0" height="1080" parDenominator="1" parNumerator="1" pixelType="1"
//                  sampleSize="1001" timeScale="24000" width="1920"/>
//
// The codes are the host's. Pixel type 0 stands for no pixels; a host never gets it.

namespace tses {

inline constexpr kelcore::int32 kDefaultPixelType = 1;

struct VideoFormatRecord {
    kelcore::int64 timeScale = 0;
    kelcore::int64 sampleSize = 0;
    kelcore::int32 pixelType = kDefaultPixelType;
    kelcore::int32 width = 0;
    kelcore::int32 height = 0;
    kelcore::uint32 parNumerator = kelmediatypes::kPixelAspectRatio_Unknown.numerator;
    kelcore::uint32 parDenominator = kelmediatypes::kPixelAspectRatio_Unknown.denominator;
    kelcore::uint32 fieldType = 0;
};

inline constexpr auto kVideoFormatRows =
    Rows(Number<&VideoFormatRecord::fieldType>(names::fieldType),
         Number<&VideoFormatRecord::height>(names::height),
         Number<&VideoFormatRecord::parDenominator>(names::parDenominator),
         Number<&VideoFormatRecord::parNumerator>(names::parNumerator),
         NumberExcept0<&VideoFormatRecord::pixelType, kDefaultPixelType>(names::pixelType),
         Number<&VideoFormatRecord::sampleSize>(names::sampleSize),
         Number<&VideoFormatRecord::timeScale>(names::timeScale),
         Number<&VideoFormatRecord::width>(names::width));

}  // namespace tses
