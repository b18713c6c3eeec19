#include "bench/WriteContenders.h"

#include <fstream>
#include <stdexcept>
#include <utility>

#include "bench/FileBytes.h"
#include "bench/StaticHost.h"
#include "host/Features.h"
#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "reference_host/Sessions.h"

namespace bench {
namespace {

std::u16string FullPathOf(const std::string& path) {
    return kelcore::File(kelcore::PathFromBytes(path)).FullPath();
}

orvo::Session Read(refhost::Plugin& plugin, const std::string& file) {
    refhost::ReadResult read = refhost::ReadSession(plugin, FullPathOf(file));
    if (read.result != tses::SessionResult::Ok) {
        throw std::runtime_error(file + " cannot be read as a session");
    }
    return std::move(read.session);
}

}  // namespace

WriteContenders::WriteContenders(refhost::Plugin& plugin, const std::string& file,
                                 std::string folder)
    : plugin_(plugin), folder_(std::move(folder)), session_(Read(plugin, file)) {}

std::string WriteContenders::OutputOf(const std::string& name) const {
    return folder_ + "/" + name + ".orvo";
}

Contender WriteContenders::Make(const std::string& name) {
    if (name == kFloor) {
        return MakeFloor();
    }
    if (name == kNullHost || name == kStreamedNullHost) {
        return MakeStaticHost(name, name == kStreamedNullHost);
    }
    if (name == kReferenceHost || name == kStreamedReferenceHost) {
        return MakeReferenceHost(name, name == kStreamedReferenceHost);
    }
    if (name == kCopy) {
        return MakeCopy();
    }
    throw std::runtime_error("there is no writer named " + name);
}

/// Takes the parts from the file that the plug-in writes into the same folder.
Contender WriteContenders::MakeFloor() {
    RunOnce(Make(kReferenceHost));
    parts_ = TakeApart(OutputOf(kReferenceHost));
    return {.name = kFloor, .run = [this] { return WriteWithDom(*parts_, OutputOf(kFloor)); }};
}

Contender WriteContenders::MakeCopy() {
    RunOnce(Make(kReferenceHost));
    bytes_ = BytesOf(OutputOf(kReferenceHost));
    return {.name = kCopy, .run = [this] {
                const std::string copy = bytes_;
                std::ofstream file(OutputOf(kCopy), std::ios::binary);
                return file.write(copy.data(), static_cast<std::streamsize>(copy.size())).good();
            }};
}

Contender WriteContenders::MakeStaticHost(const std::string& name, bool streamed) {
    const std::u16string path = FullPathOf(OutputOf(name));
    if (!answers_) {
        answers_ = RecordAnswers(plugin_, path, session_);
    }
    return {.name = name,
            .run =
                [this, path] {
                    const auto result = plugin_.Write(path, StaticHost(*answers_));
                    plugin_.ReleaseContext();
                    return result == tses::SessionResult::Ok && StaticHostIsAtEnd();
                },
            .prepare = [this, streamed] { UseStreamedSave(streamed); }};
}

Contender WriteContenders::MakeReferenceHost(const std::string& name, bool streamed) {
    const std::u16string path = FullPathOf(OutputOf(name));
    return {.name = name,
            .run =
                [this, path] {
                    return refhost::WriteSession(plugin_, path, session_).result ==
                           tses::SessionResult::Ok;
                },
            .prepare = [this, streamed] { UseStreamedSave(streamed); }};
}

/// The plug-in looks at the feature when it is initialised.
void WriteContenders::UseStreamedSave(bool streamed) const {
    kelappsupport::SetFeatureEnabled(tses::features::kStreamedSave, streamed);
    plugin_.Restart();
}

}  // namespace bench
