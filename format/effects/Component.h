#pragma once

#include <optional>
#include <string_view>

#include "format/Names.h"
#include "format/Rows.h"

// The carrier of everything that can be automated: a clip's gain, a track's fader, a send's level,
// a rack's mix, every effect in a slot.
//
//     <component componentGuid="..." componentID="..." editorHeight="300" editorLeft="10"
//                editorTop="20" editorVisible="true" editorWidth="400" id="trackFader" name="..."
//                powered="true" presetName="...">
//       <parameter/> ...
//     </component>
//
// Components with a keyword have "id" and "powered". An effect's component has no keyword, and its
// slot says whether it is powered. Its guid, id and name are written even if they are empty.

namespace tses {

/// The texts are zero-terminated.
struct ComponentRecord {
    std::optional<std::u16string_view> keyword;
    std::u16string_view guid = u"";
    std::u16string_view id = u"";
    std::u16string_view name = u"";
    std::u16string_view presetName = u"";
    std::optional<bool> powered;
    bool editorVisible = false;
    kelcore::int32 editorLeft = 0;
    kelcore::int32 editorTop = 0;
    kelcore::int32 editorWidth = 0;
    kelcore::int32 editorHeight = 0;
};

/// Which of its owner's controls a component is.
template <const auto& Keywords>
inline constexpr auto kComponentKeywordRows =
    Rows(WordAsText<&ComponentRecord::keyword, Keywords>(names::id));

inline constexpr auto kKeywordComponentRows =
    Rows(UnlessEmpty(Text<&ComponentRecord::guid>(names::componentGuid)),
         UnlessEmpty(Text<&ComponentRecord::id>(names::componentID)),
         IfTrue(StrictBool<&ComponentRecord::editorVisible>(names::editorVisible)),
         UnlessEmpty(Text<&ComponentRecord::name>(names::name)),
         StrictBool<&ComponentRecord::powered>(names::powered),
         UnlessEmpty(Text<&ComponentRecord::presetName>(names::presetName)));

inline constexpr auto kEffectComponentRows =
    Rows(Text<&ComponentRecord::guid>(names::componentGuid),
         Text<&ComponentRecord::id>(names::componentID),
         IfTrue(StrictBool<&ComponentRecord::editorVisible>(names::editorVisible)),
         Text<&ComponentRecord::name>(names::name),
         ReadOnly(StrictBool<&ComponentRecord::powered>(names::powered)),
         UnlessEmpty(Text<&ComponentRecord::presetName>(names::presetName)));

/// All of them or none: a window without a width or a height is not written.
inline constexpr auto kEditorRectRows =
    Rows(Sometimes(Number<&ComponentRecord::editorHeight>(names::editorHeight)),
         Sometimes(Number<&ComponentRecord::editorLeft>(names::editorLeft)),
         Sometimes(Number<&ComponentRecord::editorTop>(names::editorTop)),
         Sometimes(Number<&ComponentRecord::editorWidth>(names::editorWidth)));

}  // namespace tses
