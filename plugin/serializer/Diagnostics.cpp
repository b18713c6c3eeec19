#include <stdexcept>

#include "host/LogTarget.h"
#include "platform/kelcore/Strings.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"

// What the parser reports, as the host's log shows it:
//
//     XML ERROR: (line: 12, col: 7) [ /music/song.orvo] the message
//
// the brackets, with the public and the system identifier, only where there is one of them.

namespace tses {
namespace {

std::u16string Decimal(kelcore::uint64 number) {
    return kelcore::AsciiToUTF16(std::to_string(number));
}

std::u16string Located(std::u16string_view prefix, kelcore::uint64 line, kelcore::uint64 column,
                       std::u16string_view publicId, std::u16string_view systemId,
                       std::u16string_view message) {
    std::u16string text(prefix);
    text.append(Decimal(line)).append(u", col: ").append(Decimal(column)).append(u") ");
    if (!publicId.empty() || !systemId.empty()) {
        text.append(u"[").append(publicId).append(u" ").append(systemId).append(u"] ");
    }
    return text.append(message).append(u"\n");
}

[[noreturn]] void EndParse() {
    throw std::runtime_error("parsing error.");
}

}  // namespace

void Serializer::Impl::Warning(kelcore::uint64 line, kelcore::uint64 column,
                               std::u16string_view publicId, std::u16string_view systemId,
                               std::u16string_view message) {
    Log(Located(u"XML WARNING: (line: ", line, column, publicId, systemId, message));
}

void Serializer::Impl::Error(kelcore::uint64 line, kelcore::uint64 column,
                             std::u16string_view publicId, std::u16string_view systemId,
                             std::u16string_view message) {
    if (Log(Located(u"XML ERROR: (line: ", line, column, publicId, systemId, message))) {
        EndParse();
    }
}

void Serializer::Impl::FatalError(kelcore::uint64 line, kelcore::uint64 column,
                                  std::u16string_view publicId, std::u16string_view systemId,
                                  std::u16string_view message) {
    if (Log(Located(u"XML FATAL ERROR: (line: ", line, column, publicId, systemId, message))) {
        EndParse();
    }
}

/// Whether there was somebody to tell. An error that nobody hears of does not end the parse.
bool Serializer::Impl::Log(std::u16string text) {
    if (!session_) {
        return false;
    }
    const auto target = Retain(session_->GetLogTarget());
    if (!target) {
        return false;
    }
    auto message = MakeHostString(std::move(text));
    target->LogMessage(&*message);
    return true;
}

}  // namespace tses
