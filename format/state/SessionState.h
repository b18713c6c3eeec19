#pragma once

#include "format/Names.h"
#include "format/Rows.h"

// Where the editor stood, in samples and in the host's own numbers:
//
//     <sessionState ctiPosition="96000" smpteStart="0">
//       <selectionState selectionDuration="48000" selectionStart="-100"/>
//       <viewState horizontalViewDuration="480000" horizontalViewStart="0"
//                  trackControlsWidth="220" verticalScrollOffset="0"/>
//       <timeFormatState/>
//       <mixingOptionState defaultPanModeLogarithmic="false" panPower="-3"
//                          playOverlappingClips="false"/>
//     </sessionState>

namespace tses {

struct SessionStateRecord {
    kelcore::int64 ctiPosition = 0;  // of the current-time indicator
    kelcore::int64 smpteStart = 0;   // in the host's unit
};

inline constexpr auto kSessionStateRows =
    Rows(Number<&SessionStateRecord::ctiPosition>(names::ctiPosition),
         Number<&SessionStateRecord::smpteStart>(names::smpteStart));

struct SelectionRecord {
    kelcore::int64 start = 0;
    kelcore::int64 duration = 0;
};

inline constexpr auto kSelectionRows =
    Rows(Number<&SelectionRecord::duration>(names::selectionDuration),
         Number<&SelectionRecord::start>(names::selectionStart));

struct ViewRecord {
    kelcore::int64 horizontalStart = 0;
    kelcore::int64 horizontalDuration = 0;
    kelcore::int32 trackControlsWidth = 0;
    kelcore::int32 verticalScrollOffset = 0;
};

inline constexpr auto kViewRows =
    Rows(Number<&ViewRecord::horizontalDuration>(names::horizontalViewDuration),
         Number<&ViewRecord::horizontalStart>(names::horizontalViewStart),
         Number<&ViewRecord::trackControlsWidth>(names::trackControlsWidth),
         Number<&ViewRecord::verticalScrollOffset>(names::verticalScrollOffset));

struct MixingRecord {
    bool panModeLogarithmic = false;
    double panPower = -3.0;
    bool playOverlappingClips = false;
};

inline constexpr auto kMixingRows =
    Rows(LenientBool<&MixingRecord::panModeLogarithmic>(names::defaultPanModeLogarithmic),
         LenientReal<&MixingRecord::panPower>(names::panPower),
         LenientBool<&MixingRecord::playOverlappingClips>(names::playOverlappingClips));

}  // namespace tses
