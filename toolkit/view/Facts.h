#pragma once

#include <cstddef>
#include <string>

#include <orvo/Layout.h>

namespace toolkit {

/// A track's name, or else its kind and id.
std::string NameOf(const orvo::LayoutRow& row);

/// A clip's name, or else that of its media file.
std::string NameOf(const orvo::Layout& layout, const orvo::LayoutBox& box);

/// What a track is besides its name, such as "Audio · stereo → Master".
std::string FactsOf(const orvo::LayoutRow& row);

/// What a session is, such as "48 kHz · 32-bit · stereo · 1 track · 2 clips · 1 media file".
std::string FactsOf(const orvo::Layout& layout);

/// A session in words, for readers who cannot see its picture.
std::string DescriptionOf(const orvo::Layout& layout);

/// "1 take", "2 takes".
std::string Counted(std::size_t count, const char* thing);

}  // namespace toolkit
