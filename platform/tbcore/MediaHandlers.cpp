#include "platform/tbcore/MediaHandlers.h"

#include <algorithm>
#include <array>

namespace tbcore {
namespace {

struct MediaHandler {
    std::u16string_view identifier;
    std::u16string_view name;
};

/// Session files store the names, so a name must never change.
constexpr auto kMediaHandlers = std::to_array<MediaHandler>({
    {u"kel.importer.wave", u"Waveform Audio (WAV)"},
    {u"kel.importer.rf64", u"Broadcast Wave (BWF, RF64)"},
    {u"kel.importer.aiff", u"Audio Interchange File (AIFF)"},
    {u"kel.importer.flac", u"Free Lossless Audio Codec (FLAC)"},
    {u"kel.importer.vorbis", u"Ogg Vorbis"},
    {u"kel.importer.opus", u"Ogg Opus"},
    {u"kel.importer.mp3", u"MPEG Audio Layer III (MP3)"},
    {u"kel.importer.aac", u"Advanced Audio Coding (AAC, M4A)"},
    {u"kel.importer.caf", u"Core Audio Format (CAF)"},
    {u"kel.importer.quicktime", u"QuickTime Movie (MOV)"},
    {u"kel.importer.mpeg4", u"MPEG-4 Movie (MP4)"},
    {u"kel.importer.matroska", u"Matroska (MKV)"},
    {u"kel.importer.midi", u"Standard MIDI File (MID)"},
});

/// Finds the row whose `known` column equals `key` and sets `result` to its `wanted` column.
bool Translate(std::u16string_view key, std::u16string_view MediaHandler::*known,
               std::u16string_view MediaHandler::*wanted, std::u16string_view& result) {
    const auto* const row = std::ranges::find(kMediaHandlers, key, known);
    if (row == kMediaHandlers.end()) {
        return false;
    }
    result = (*row).*wanted;
    return true;
}

}  // namespace

bool TranslateToHumanReadableMediaHandler(std::u16string_view identifier,
                                          std::u16string_view& name) {
    return Translate(identifier, &MediaHandler::identifier, &MediaHandler::name, name);
}

bool TranslateFromHumanReadableMediaHandler(std::u16string_view name,
                                            std::u16string_view& identifier) {
    return Translate(name, &MediaHandler::name, &MediaHandler::identifier, identifier);
}

}  // namespace tbcore
