#pragma once

#include <string>

namespace cli {

/// Draws an SVG document in pixels.
/// @param scale  pixels of the picture to one of the document
/// @return a PNG file
/// @throws std::runtime_error  if it is too large, or there is no memory for it
std::string DrawPng(const std::string& svg, double scale);

}  // namespace cli
