#include "bench/ReadContenders.h"

#include <memory>
#include <optional>

#include "bench/BareParsers.h"
#include "bench/NullHost.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "reference_host/Sessions.h"

namespace bench {
namespace {

/// Destroys the session outside the measured run: a host keeps what it reads.
Contender MakeReferenceHost(refhost::Plugin& plugin, const std::u16string& path) {
    const auto read = std::make_shared<std::optional<refhost::ReadResult>>();
    return {.name = kReferenceHost,
            .run =
                [&plugin, path, read] {
                    *read = refhost::ReadSession(plugin, path);
                    return (*read)->result == tses::SessionResult::Ok;
                },
            .finish = [read] { read->reset(); }};
}

}  // namespace

Contenders MakeReadContenders(refhost::Plugin& plugin, const std::string& path) {
    const std::u16string full = kelcore::File(kelcore::PathFromBytes(path)).FullPath();
    return {
        {.name = kFloor, .run = [path] { return ParseWithXerces(path); }},
        {.name = kNullHost,
         .run = [&plugin,
                 full] { return plugin.Read(full, NullHost()) == tses::SessionResult::Ok; }},
        MakeReferenceHost(plugin, full),
        {.name = "expat", .run = [path] { return ParseWithExpat(path); }},
        {.name = "libxml2", .run = [path] { return ParseWithLibXml2(path); }},
        {.name = "pugixml", .run = [path] { return ParseWithPugixml(path); }},
    };
}

}  // namespace bench
