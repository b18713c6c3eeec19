#pragma once

#include <optional>
#include <string>

#include "format/Names.h"
#include "format/Rows.h"

// The root, and the session in it:
//
//     <orvo version="1.5">
//       <session appBuild="25.1.310" appVersion="25.1" audioChannelType="stereo" bitDepth="32"
//                duration="480000" sampleRate="48000"> ... </session>
//       <files/> <audioDevice/>
//     </orvo>
//
// "version" is written but never read: only the elements say what a file means. "appBuild" is
// written for people and never read.

namespace tses {

struct DocumentRecord {
    std::u16string version{};
};

inline constexpr auto kDocumentRows =
    Rows(WriteOnly(Text<&DocumentRecord::version>(names::version)));

/// The version of files that do not state one.
inline constexpr std::u16string_view kFirstVersion = u"4.0";

struct SessionRecord {
    kelcore::uint32 sampleRate = 48000;
    std::optional<kelcore::int32> channelCount;  // empty: the host keeps its own
    kelcore::int64 duration = 0;
    kelcore::uint32 bitDepth = 32;
    std::u16string appVersion{kFirstVersion};
    std::u16string appBuild{};
};

inline constexpr kelcore::uint32 kStereo = 2;

/// Every number of channels without a word is written as stereo.
inline constexpr auto kSessionRows = Rows(
    WriteOnly(Text<&SessionRecord::appBuild>(names::appBuild)),
    Text<&SessionRecord::appVersion>(names::appVersion),
    KnownWordOr<&SessionRecord::channelCount, kChannelLayouts, kStereo>(names::audioChannelType),
    Number<&SessionRecord::bitDepth>(names::bitDepth),
    Number<&SessionRecord::duration>(names::duration),
    Number<&SessionRecord::sampleRate>(names::sampleRate));

}  // namespace tses
