#include "cli/files/AnySession.h"

#include <utility>

#include <orvo/Session.h>
#include "cli/files/JsonFile.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"

namespace cli {
namespace {

std::optional<NamedSession> ReadOrvoToLookAt(const std::string& name, Progress& progress) {
    const SessionFile file(name);
    const Progress::Phase reading = progress.Begin(kReading, file.Name());
    reading.Watch(ShareRead(file.Path()));
    orvo::ReadResult read = orvo::ReadSession(file.FullName());
    if (!read) {
        for (const Message& message : ExplainRefusal(file, read.messages)) {
            Complain(message);
        }
        return std::nullopt;
    }
    return NamedSession{file.Name(), std::move(read.session)};
}

std::optional<NamedSession> ReadJsonToLookAt(const std::string& name, Progress& progress) {
    const Input in(name);
    std::optional<ReadInput> input = ReadJson(in, progress);
    if (!input) {
        return std::nullopt;
    }
    return NamedSession{in.Subject(), std::move(input->session)};
}

}  // namespace

Kind KindToLookAt(const std::string& name, const std::string& stated) {
    if (const auto implied = FindKind("", name)) {
        return *implied;
    }
    return FindKind(stated, name).value_or(Kind::Orvo);
}

std::optional<NamedSession> ReadToLookAt(const std::string& name, Kind kind, Progress& progress) {
    return kind == Kind::Json ? ReadJsonToLookAt(name, progress) : ReadOrvoToLookAt(name, progress);
}

}  // namespace cli
