#pragma once

#include <string_view>

#include "format/Ids.h"
#include "format/InlineText.h"
#include "format/Names.h"
#include "format/Rows.h"
#include "platform/tbcore/MediaHandlers.h"

// The media that clips refer to by id:
//
//     <files>
//       <file absolutePath="/music/voice.wav" id="3" importerPrivateSettings="..."
//             mediaHandler="..." recoveryID="..." relativePath="voice.wav"/>
//     </files>
//
// A path is stored twice, absolute and as seen from the session file, so that a folder that was
// moved together with its media still finds them. A handler without a name for people is stored as
// "mediaHandlerID".

namespace tses {

namespace encoding {

/// A media handler's identifier, stored as its name for people. A text that names no handler leaves
/// the default.
struct HandlerName : Plain {
    static constexpr ValueKind kKind = ValueKind::HandlerName;

    static void Read(std::u16string_view text, InlineText& handler) {
        std::u16string_view identifier;
        if (tbcore::TranslateFromHumanReadableMediaHandler(text, identifier)) {
            handler = identifier;
        }
    }
    static bool Write(std::u16string_view handler, ValueText& text) {
        std::u16string_view name;
        return tbcore::TranslateToHumanReadableMediaHandler(handler, name) && Put(name, text);
    }
};

/// The identifier of a handler that has no name for people.
struct NamelessHandler : Text {
    static bool Write(std::u16string_view handler, ValueText& text) {
        std::u16string_view name;
        return !tbcore::TranslateToHumanReadableMediaHandler(handler, name) && Put(handler, text);
    }
};

}  // namespace encoding

struct FileRecord {
    kelcore::uint32 id = kNoId;
    InlineText absolutePath{};
    InlineText relativePath{};
    InlineText mediaHandler{};  // the identifier
    InlineText recoveryId{};
    InlineText importerPrivateSettings{};
};

/// "mediaHandlerID" overrides a translated "mediaHandler".
inline constexpr auto kFileRows = Rows(
    UnlessEmpty(Text<&FileRecord::absolutePath>(names::absolutePath)),
    Number<&FileRecord::id>(names::id),
    UnlessEmpty(Text<&FileRecord::importerPrivateSettings>(names::importerPrivateSettings)),
    YieldsTo(names::mediaHandlerID,
             IfKnown(Row<&FileRecord::mediaHandler, encoding::HandlerName>{names::mediaHandler})),
    IfKnown(Row<&FileRecord::mediaHandler, encoding::NamelessHandler>{names::mediaHandlerID}),
    UnlessEmpty(Text<&FileRecord::recoveryId>(names::recoveryID)),
    UnlessEmpty(Text<&FileRecord::relativePath>(names::relativePath)));

}  // namespace tses
