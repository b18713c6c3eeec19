#pragma once

#include <optional>
#include <string_view>

#include "format/Names.h"
#include "format/Rows.h"

// The other elements in a clip that have attributes:
//
//     <take sourceInPoint="96000"/>
//     <properties properties="..."/>
//     <channelMap> <channel index="0" sourceIndex="1"/> ... </channelMap>

namespace tses {

/// One recording pass of a clip, by where it begins in the clip's source.
struct TakeRecord {
    kelcore::int64 sourceInPoint = 0;
};

inline constexpr auto kTakeRows = Rows(Number<&TakeRecord::sourceInPoint>(names::sourceInPoint));

/// A text that the host keeps with a clip. Element and attribute have the same name.
struct ClipPropertiesRecord {
    std::optional<std::u16string_view> properties;  // zero-terminated
};

inline constexpr auto kClipPropertiesRows =
    Rows(Text<&ClipPropertiesRecord::properties>(names::properties));

/// Which channel of the media feeds a channel of the clip.
struct ClipChannelRecord {
    kelcore::uint32 index = 0;
    kelcore::int32 sourceIndex = 0;
};

inline constexpr auto kClipChannelRows =
    Rows(Number<&ClipChannelRecord::index>(names::index),
         Number<&ClipChannelRecord::sourceIndex>(names::sourceIndex));

}  // namespace tses
