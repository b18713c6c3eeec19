#pragma once

#include <string>
#include <string_view>

#include "platform/kelcore/Types.h"

namespace refhost {

/// The parts of a message that the plug-in logged about a document. Texts are UTF-8.
struct LoggedMessage {
    kelcore::uint64 line = 0;    ///< from 1; 0: the document as a whole
    kelcore::uint64 column = 0;  ///< from 1, in UTF-16 code units; 0 as for the line
    std::string text{};
    std::string advice{};  ///< what to do, if the plug-in itself refused the document
};

/// Takes a line such as "XML ERROR: (line: 2, col: 7) [ /song.orvo] the text" apart. In any other
/// line everything is text.
/// @param path  of the document, as the plug-in got it: it may hold anything, even brackets
LoggedMessage ParseLoggedMessage(std::u16string_view logged, std::u16string_view path);

/// What the text of a message begins with if the plug-in itself refused the document.
inline constexpr std::string_view kRefused = "refused: ";

/// What to say about a failed read when the plug-in did not say why.
inline constexpr char kRefusedWithoutReason[] = "the plug-in refused the file";
inline constexpr char kTryAgain[] = "try again; if it happens again, report it with the file";

}  // namespace refhost
