#include "cli/serve/SessionShelf.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

#include <orvo/Json.h>
#include <orvo/Page.h>
#include <orvo/Session.h>
#include "cli/files/AnySession.h"
#include "cli/files/NamedFiles.h"
#include "cli/files/Refusals.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"

namespace cli {
namespace {

std::string LastPart(const std::string& name) {
    return std::filesystem::path(name).filename().string();
}

/// A session, or why there is none, in lines.
struct Read {
    std::optional<orvo::Session> session{};
    std::string refusal{};
};

Read ReadJsonFile(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::string block;
    orvo::ReadResult read = orvo::FromJson([&in, &block]() -> std::string_view {
        constexpr std::size_t kBlock = 1 << 16;
        block.resize(kBlock);
        in.read(block.data(), static_cast<std::streamsize>(block.size()));
        return {block.data(), static_cast<std::size_t>(in.gcount())};
    });
    if (read) {
        return {.session = std::move(read.session)};
    }
    std::ostringstream refusal;
    for (const orvo::Message& message : read.messages) {
        refusal << message << '\n';
    }
    return {.refusal = refusal.str()};
}

Read ReadSessionFile(const std::string& name) {
    const SessionFile file(name);
    orvo::ReadResult read = orvo::ReadSession(file.FullName());
    if (read) {
        return {.session = std::move(read.session)};
    }
    std::string refusal;
    for (const Message& message : ExplainRefusal(file, read.messages)) {
        refusal += FormatMessage(message) + "\n";
    }
    return {.refusal = refusal};
}

Read ReadFile(const std::string& file) {
    return KindToLookAt(file, "") == Kind::Json ? ReadJsonFile(file) : ReadSessionFile(file);
}

}  // namespace

SessionShelf::SessionShelf(std::string name, Options options)
    : name_(std::move(name)), isFolder_(IsFolder(name_)), options_(std::move(options)) {}

std::vector<std::string> SessionShelf::Sessions() const {
    if (!isFolder_) {
        return {LastPart(name_)};
    }
    std::vector<std::string> sessions;
    for (const std::string& file : FindFiles({name_}, true).files) {
        sessions.push_back(std::filesystem::path(file).lexically_relative(name_).string());
    }
    return sessions;
}

std::optional<std::string> SessionShelf::FileOf(const std::string& session) const {
    const std::vector<std::string> sessions = Sessions();
    if (std::ranges::find(sessions, session) == sessions.end()) {
        return std::nullopt;
    }
    return isFolder_ ? (std::filesystem::path(name_) / session).string() : name_;
}

std::optional<SessionShelf::Made> SessionShelf::Page(const std::string& session,
                                                     const Addresses& addresses) {
    const auto file = FileOf(session);
    if (!file) {
        return std::nullopt;
    }
    const std::lock_guard lock(making_);
    const Read read = ReadFile(*file);
    if (!read.session) {
        return Made{false, read.refusal};
    }
    const orvo::Layout layout = orvo::MakeLayout(*read.session, options_.layout);
    const auto waveforms = options_.waveforms
                               ? orvo::ReadWaveforms(layout, {.cache = options_.cache})
                               : std::vector<std::optional<orvo::Waveform>>();
    orvo::PageOptions options{.title = LastPart(session), .watch = addresses.state};
    if (options_.audio) {
        options.audio = orvo::PageAudio::Linked;
        options.mediaAddresses.resize(layout.media.size());
        auto& paths = media_[session];
        paths.clear();
        for (const std::size_t place : orvo::MediaToHear(layout)) {
            const std::string number = std::to_string(place);
            options.mediaAddresses[place] = addresses.media + number;
            paths[number] = layout.media[place].path;
        }
    }
    return Made{true, orvo::MakePage(layout, *read.session, waveforms, options)};
}

std::optional<std::string> SessionShelf::Media(const std::string& session,
                                               const std::string& number) {
    const std::lock_guard lock(making_);
    const auto paths = media_.find(session);
    if (paths == media_.end()) {
        return std::nullopt;
    }
    const auto path = paths->second.find(number);
    return path != paths->second.end() ? std::optional(path->second) : std::nullopt;
}

std::optional<SessionShelf::Made> SessionShelf::Picture(const std::string& session,
                                                        orvo::Theme theme) {
    const auto file = FileOf(session);
    if (!file) {
        return std::nullopt;
    }
    const std::lock_guard lock(making_);
    const Read read = ReadFile(*file);
    if (!read.session) {
        return Made{false, read.refusal};
    }
    orvo::LayoutOptions options = options_.layout;
    options.lanes = false;
    constexpr double kWidth = 560;
    constexpr double kHeight = 220;
    return Made{
        true, orvo::DrawSvg(orvo::MakeLayout(*read.session, options), {},
                            {.width = kWidth, .height = kHeight, .theme = theme, .isSmall = true})};
}

std::optional<std::string> SessionShelf::State(const std::string& session) const {
    const auto file = FileOf(session);
    if (!file) {
        return std::nullopt;
    }
    std::error_code ignored;
    const auto size = std::filesystem::file_size(*file, ignored);
    const auto time = std::filesystem::last_write_time(*file, ignored);
    return fmt::format("{} {}", size, time.time_since_epoch().count());
}

}  // namespace cli
