#include <array>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/Sessions.h"
#include "reference_host/recorder/CallJson.h"
#include "reference_host/recorder/Recorder.h"
#include "tests/plugin/xml/OtherParsers.h"

// Differential FILE: reads many documents in one process, each through FILE. Each document on
// standard input is preceded by its size in bytes, as four bytes, lowest first. For each document,
// prints a line of JSON with the results of the plug-in and of other parsers, then a line for each
// of the "calls" to the host.

namespace {

std::optional<std::string> NextDocument() {
    std::array<char, 4> count{};
    if (!std::cin.read(count.data(), count.size())) {
        return std::nullopt;
    }
    std::size_t size = 0;
    for (std::size_t i = count.size(); i > 0; --i) {
        size = size << 8 | static_cast<unsigned char>(count[i - 1]);
    }
    std::string document(size, '\0');
    if (!std::cin.read(document.data(), static_cast<std::streamsize>(size))) {
        std::fprintf(stderr, "a document ends before its %zu bytes\n", size);
        return std::nullopt;
    }
    return document;
}

struct Reading {
    refhost::ReadResult read;
    std::vector<std::string> calls;
};

Reading ReadRecorded(refhost::Plugin& plugin, const std::u16string& path) {
    Reading reading;
    refhost::Recorder recorder({.sink =
                                    [&](const refhost::CallRecord& call) {
                                        reading.calls.push_back(refhost::FormatCallAsJson(call));
                                    },
                                .interceptor = {}});
    refhost::ReadOptions options;
    options.wrap = [&](tses::IEditSession& session) {
        return refhost::Ref<tses::IEditSession>::Retain(&recorder.Wrap(session));
    };
    reading.read = refhost::ReadSession(plugin, path, options);
    return reading;
}

/// Reports the result. Returns false if a new plug-in is needed: one that has failed may still be
/// skipping elements, and a document that the others do not consider well-formed may have ended
/// anywhere.
bool Report(const std::string& document, const Reading& reading) {
    std::vector<std::string> messages;
    for (const std::u16string& message : reading.read.messages) {
        messages.push_back(kelcore::UTF16to8(message));
    }
    const std::set<int> expat = test::ErrorsByExpat(document);
    const std::set<int> libxml2 = test::ErrorsByLibxml2(document);
    const bool goesOn = reading.read.result == tses::SessionResult::Ok && messages.empty() &&
                        expat.empty() && libxml2.empty();
    const nlohmann::json line = {{"result", static_cast<int>(reading.read.result)},
                                 {"messages", messages},
                                 {"expat", expat},
                                 {"libxml2", libxml2},
                                 {"liveNodes", refhost::LiveNodes()},
                                 {"goesOn", goesOn},
                                 {"calls", reading.calls.size()}};
    std::cout << line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    for (const std::string& call : reading.calls) {
        std::cout << call << '\n';
    }
    return goesOn;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: Differential FILE <DOCUMENTS\n");
        return 2;
    }
    std::ios::sync_with_stdio(false);
    refhost::UseFeatureDefaults();
    std::optional<refhost::Plugin> plugin;
    while (const std::optional<std::string> document = NextDocument()) {
        std::ofstream(argv[1], std::ios::binary | std::ios::trunc) << *document;
        if (!plugin) {
            plugin.emplace();
        }
        if (!Report(*document, ReadRecorded(*plugin, kelcore::PathFromBytes(argv[1])))) {
            plugin.reset();
        }
    }
    return std::cout.flush() ? 0 : 1;
}
