#pragma once

#include <cstddef>
#include <string>

#include <orvo/Page.h>

namespace orvo::page {

/// The id of the part of a page that holds a sound.
std::string SoundId(std::size_t media);

/// Writes the media to hear as parts of a page, each as Base64.
void WriteSounds(const Layout& layout, const TextSink& sink);

}  // namespace orvo::page
