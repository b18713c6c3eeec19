#pragma once

#include <orvo/Canvas.h>

/// What pictures are drawn with, by its short names.
namespace toolkit {

using orvo::Anchor;
using orvo::Area;
using orvo::Canvas;
using orvo::Colour;
using orvo::Paint;
using orvo::Point;
using orvo::TextStyle;

}  // namespace toolkit
