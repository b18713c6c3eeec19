#pragma once

#include <string>

#include <orvo/Draw.h>
#include "toolkit/view/Shapes.h"

namespace toolkit {

/// As "#rrggbb".
std::string CssOf(const Colour& colour);

/// What things in a session's colour are drawn in: equally bright for every hue.
struct HueColours {
    Colour body;    ///< of a clip
    Colour bar;     ///< behind its name
    Colour edge;    ///< around it
    Colour wave;    ///< the sound in it, curves
    Colour text;    ///< on the body and the bar
    Colour stripe;  ///< beside the name of a track
};

/// Everything else.
struct ThemeColours {
    orvo::Theme theme;
    Colour page;
    Colour row;
    Colour lane;
    Colour header;
    Colour line;  ///< between rows
    Colour grid;
    Colour strongGrid;
    Colour text;
    Colour faintText;
    Colour cursor;
    Colour selection;
    Colour warning;
};

const ThemeColours& ColoursOf(orvo::Theme theme);

/// @param hue  in degrees as in the HSV model
/// @param strength  of the colour; 0: grey
HueColours ColoursOf(orvo::Theme theme, double hue, double strength = 1);

}  // namespace toolkit
