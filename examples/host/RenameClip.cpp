// Reads a session, gives a clip another name, and saves it as another file:
//
//     rename-clip LIBRARY IN OUT CLIP-ID NAME
//
// OUT has the audio format, the media, the metronome, the tracks of the audio side and the plain
// values of their clips. It loses everything else that IN has: video, MIDI, effects, automation,
// sends, fades, groups, ports, the saved state, the metadata and more. Each operation that Tracks.h
// and Session.h do not override is such a loss.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "examples/host/Session.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Trace.h"

namespace {

/// Renames every clip with the id, and returns how many there are.
int Rename(example::Session& session, const std::string& id, const std::u16string& name) {
    int renamed = 0;
    for (example::Track& track : session.values.tracks) {
        for (example::Clip& clip : track.values.clips) {
            if (std::to_string(clip.values.id) == id) {
                clip.values.name.value = name;
                ++renamed;
            }
        }
    }
    return renamed;
}

/// OUT holds less than IN, so it must not replace IN.
void RequireOther(const char* in, const char* out) {
    std::error_code missing;
    if (std::filesystem::equivalent(in, out, missing)) {
        throw std::runtime_error("OUT is IN: name another file, for much of IN is not kept");
    }
}

int Run(const char* library, const char* in, const char* out, const char* id, const char* name) {
    RequireOther(in, out);
    example::Session session;
    example::Plugin plugin(library);
    if (!plugin.Read(in, session.edit)) {
        return 1;
    }
    if (Rename(session, id, kelcore::UTF8to16(name)) == 0) {
        std::fprintf(stderr, "%s: no clip has the id %s\n", in, id);
        return 1;
    }
    return plugin.Write(out, session.query) ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 6) {
        std::fprintf(stderr, "usage: rename-clip LIBRARY IN OUT CLIP-ID NAME\n");
        return 2;
    }
    // The trace says why a read or a save failed, even where the log target gets nothing. By
    // default its lines go to standard error after the time.
    kelcore::trace::SetOutput([](std::string_view /*category*/, std::string_view text) {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
    });
    try {
        return Run(arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 2;
    }
}
