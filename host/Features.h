#pragma once

#include <string_view>

/// The application's features that the plug-in looks at, when it is initialised. They are off until
/// the application calls `kelappsupport::SetFeatureEnabled`.
namespace tses::features {

/// While it is off, reads skip instrument tracks.
inline constexpr std::string_view kInstrumentTracks = "Tembra.InstrumentTracks";

/// While it is on, saves write the document as text and do not build it as a tree first, which is
/// several times faster. The files have the same bytes.
inline constexpr std::string_view kStreamedSave = "Tembra.StreamedSave";

}  // namespace tses::features
