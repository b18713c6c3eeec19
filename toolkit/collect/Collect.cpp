#include <orvo/Collect.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <variant>

#include <orvo/Edit.h>
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/FileContent.h"
#include "toolkit/collect/PartFile.h"
#include "toolkit/media/Manifest.h"
#include "toolkit/media/Sha256.h"
#include "toolkit/relink/MediaPathEdits.h"

namespace orvo {
namespace {

namespace fs = std::filesystem;

using toolkit::FileBlocks;
using toolkit::PartFile;
using toolkit::SystemError;

/// The lines of the manifest that are known so far, and a lock against others who collect there.
constexpr const char* kJournalName = ".orvo-journal";

constexpr const char* kExists = "exists with another content, and nothing is replaced";
constexpr const char* kChooseAnother = "choose another folder, or move it away";

/// Ends the work: nothing more can be done.
struct Failure {
    Message message;
};

struct Cancelled {};

Failure FailureOf(const fs::path& file, std::string what, std::string advice) {
    return {{.file = file.string(), .what = std::move(what), .advice = std::move(advice)}};
}

Failure CannotWrite(const fs::path& file, const std::error_code& error) {
    return error == std::errc::file_exists ? FailureOf(file, kExists, kChooseAnother)
                                           : FailureOf(file, "cannot be written", error.message());
}

Failure CannotRead(const fs::path& file, const toolkit::Problem& problem) {
    return FailureOf(file, problem.what, problem.advice);
}

/// A descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return number_; }

private:
    int number_;
};

bool HasSameTime(const struct stat& left, const struct stat& right) {
    return left.st_mtim.tv_sec == right.st_mtim.tv_sec &&
           left.st_mtim.tv_nsec == right.st_mtim.tv_nsec;
}

bool IsSameFile(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/// The session with its media in the folder.
/// @throws Failure
std::string SessionContent(const CollectPlan& plan) {
    EditResult opened = OpenEdit(plan.session);
    if (!opened) {
        throw Failure{opened.messages.front()};
    }
    std::unordered_map<std::uint32_t, std::string> places;
    for (const CollectedFile& media : plan.media) {
        for (const std::uint32_t id : media.ids) {
            if (!media.name.empty()) {
                places[id] =
                    kelcore::UTF16to8(kelcore::PathFromBytes((plan.folder / media.name).string()));
            }
        }
    }
    toolkit::SetMediaPaths(
        *opened.edit, plan.session, plan.folder / plan.sessionName,
        [&](std::uint32_t id) {
            const auto place = places.find(id);
            return place != places.end() ? std::optional(place->second) : std::nullopt;
        },
        [&](std::uint32_t /*id*/, const Message& why) { throw Failure{why}; });
    const auto content = toolkit::ReadFileContent(plan.session.string());
    if (const auto* const problem = std::get_if<toolkit::Problem>(&content)) {
        throw CannotRead(plan.session, *problem);
    }
    auto changed = Apply(std::get<std::string>(content), opened.edit->Replacements());
    if (!changed) {
        throw FailureOf(plan.session, "was changed by another program", "try again");
    }
    return *std::move(changed);
}

class Collector {
public:
    Collector(const CollectPlan& plan, const CollectOptions& options, CollectResult& result)
        : plan_(plan), options_(options), result_(result) {}

    void Run() {
        const std::string session = SessionContent(plan_);
        const fs::path sessionFile = plan_.folder / plan_.sessionName;
        RequireFreeOrSame(sessionFile, session);
        LearnFromManifest();
        MakeFolders();
        const Descriptor journal = OpenJournal();
        LearnFrom(plan_.folder / kJournalName);
        std::string manifest;
        for (const CollectedFile& media : plan_.media) {
            if (!media.name.empty()) {
                manifest += Collect(media, journal);
            }
        }
        if (!result_.messages.empty()) {
            return;
        }
        Write(sessionFile, session);
        toolkit::Sha256 digest;
        digest.Add(session);
        manifest += toolkit::ManifestLine(plan_.sessionName, digest.Digest());
        RequireFreeOrSame(plan_.folder / kManifestName, manifest);
        Write(plan_.folder / kManifestName, manifest);
        ::unlink((plan_.folder / kJournalName).c_str());
        toolkit::SyncFolder((plan_.folder / "media").string());
        toolkit::SyncFolder(plan_.folder.string());
        result_.ok = true;
    }

private:
    // Folders and small files

    void MakeFolders() const {
        for (const fs::path& folder : {plan_.folder, plan_.folder / "media"}) {
            std::error_code error;
            fs::create_directory(folder, error);
            if (error) {
                throw FailureOf(folder, "this folder cannot be made", error.message());
            }
        }
    }

    /// Returns whether a file with this content is there.
    static bool RequireFreeOrSame(const fs::path& file, const std::string& content) {
        std::error_code error;
        if (!fs::exists(fs::symlink_status(file, error))) {
            return false;
        }
        const auto there = toolkit::ReadFileContent(file.string());
        const auto* const bytes = std::get_if<std::string>(&there);
        if (bytes == nullptr || *bytes != content) {
            throw FailureOf(file, kExists, kChooseAnother);
        }
        return true;
    }

    void Write(const fs::path& file, const std::string& content) const {
        if (RequireFreeOrSame(file, content)) {
            return;
        }
        try {
            PartFile part((plan_.folder / kPartName).string());
            part.Write(content);
            part.Publish(file.string(), nullptr);
        } catch (const SystemError& failure) {
            throw CannotWrite(file, failure.code());
        }
    }

    // What an interrupted run has done

    Descriptor OpenJournal() const {
        const fs::path path = plan_.folder / kJournalName;
        const int number =
            ::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (number < 0) {
            throw CannotWrite(path, std::error_code(errno, std::generic_category()));
        }
        if (::flock(number, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            ::close(number);
            throw FailureOf(plan_.folder, "another program collects a session there",
                            "wait for it, or choose another folder");
        }
        return Descriptor(number);
    }

    /// Returns whether there is a list.
    bool LearnFrom(const fs::path& list) {
        const auto content = toolkit::ReadFileContent(list.string());
        const auto* const text = std::get_if<std::string>(&content);
        if (text == nullptr) {
            return false;
        }
        for (auto& [name, digest] : toolkit::ParseManifest(*text).value_or(toolkit::Manifest())) {
            digests_[name] = digest;
        }
        return true;
    }

    void LearnFromManifest() {
        const fs::path manifest = plan_.folder / kManifestName;
        if (LearnFrom(manifest) && !digests_.contains(plan_.sessionName)) {
            throw FailureOf(manifest, "is that of another session", "choose another folder");
        }
    }

    /// A later run works without the line, only longer.
    static void WriteDown(const Descriptor& journal, const std::string& line) {
        static_cast<void>(::write(journal.Number(), line.data(), line.size()) < 0);
    }

    // Media

    /// Returns its line in the manifest. Reports a file that cannot be read.
    std::string Collect(const CollectedFile& media, const Descriptor& journal) {
        const std::string source = kelcore::PathToBytes(kelcore::UTF8to16(media.source));
        const Descriptor file(::open(source.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
        struct stat status {};
        if (file.Number() < 0 || ::fstat(file.Number(), &status) != 0) {
            Report(source, "cannot be read", std::generic_category().message(errno));
            return {};
        }
        if (!S_ISREG(status.st_mode)) {
            Report(source, "is not a regular file any more", "try again");
            return {};
        }
        const auto digest = Place(media, source, file, status);
        if (!digest) {
            return {};
        }
        std::string line = toolkit::ManifestLine(media.name, *digest);
        WriteDown(journal, line);
        return line;
    }

    std::optional<std::string> Place(const CollectedFile& media, const std::string& source,
                                     const Descriptor& file, const struct stat& status) {
        const fs::path target = plan_.folder / media.name;
        struct stat there {};
        if (::lstat(target.c_str(), &there) == 0) {
            auto digest = DigestOfSame(media, target, there, source, file, status);
            if (!digest) {
                throw FailureOf(target, kExists, kChooseAnother);
            }
            ++result_.kept;
            return digest;
        }
        if (options_.link && Link(source, target)) {
            ++result_.linked;
            return Digest(source, file, nullptr);
        }
        return Copy(source, file, status, target);
    }

    /// The digest of a file that is there and has the content of the source; no value if not.
    std::optional<std::string> DigestOfSame(const CollectedFile& media, const fs::path& target,
                                            const struct stat& there, const std::string& source,
                                            const Descriptor& file, const struct stat& status) {
        if (!S_ISREG(there.st_mode) || there.st_size != status.st_size) {
            return std::nullopt;
        }
        const auto known = digests_.find(media.name);
        if (known != digests_.end() && (IsSameFile(there, status) || HasSameTime(there, status))) {
            Advance(media.size);
            return known->second;
        }
        auto digest = Digest(source, file, nullptr);
        if (digest && !IsSameFile(there, status)) {
            const auto other = toolkit::DigestOfFile(target.string());
            const auto* const text = std::get_if<std::string>(&other);
            return text != nullptr && *text == *digest ? digest : std::nullopt;
        }
        return digest;
    }

    static bool Link(const std::string& source, const fs::path& target) {
        return ::linkat(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }

    std::optional<std::string> Copy(const std::string& source, const Descriptor& file,
                                    const struct stat& status, const fs::path& target) {
        try {
            PartFile part((plan_.folder / kPartName).string());
            const bool isCloned = part.Clone(file.Number());
            auto digest = Digest(source, file, isCloned ? nullptr : &part);
            struct stat after {};
            if (digest && (::fstat(file.Number(), &after) != 0 || after.st_size != status.st_size ||
                           !HasSameTime(after, status))) {
                Report(source, "was changed while it was copied", "try again");
                return std::nullopt;
            }
            if (digest) {
                part.Publish(target.string(), &status);
                ++(isCloned ? result_.cloned : result_.copied);
            }
            return digest;
        } catch (const SystemError& failure) {
            throw CannotWrite(target, failure.code());
        }
    }

    /// Reads the file to its end, and writes it to the copy if there is one. Reports a failed read.
    std::optional<std::string> Digest(const std::string& source, const Descriptor& file,
                                      const PartFile* copy) {
        FileBlocks blocks(file.Number());
        toolkit::Sha256 digest;
        for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
            digest.Add(block);
            if (copy != nullptr) {
                copy->Write(block);
            }
            Advance(block.size());
        }
        if (const auto& problem = blocks.Failure()) {
            Report(source, problem->what, problem->advice);
            return std::nullopt;
        }
        return digest.Digest();
    }

    void Report(const std::string& file, const std::string& what, const std::string& advice) {
        result_.messages.push_back({.file = file, .what = what, .advice = advice});
    }

    void Advance(std::uint64_t bytes) {
        done_ += bytes;
        const double share =
            plan_.bytes == 0 ? 1 : static_cast<double>(done_) / static_cast<double>(plan_.bytes);
        if (options_.progress && !options_.progress(share < 1 ? share : 1)) {
            throw Cancelled();
        }
    }

    const CollectPlan& plan_;
    const CollectOptions& options_;
    CollectResult& result_;
    std::unordered_map<std::string, std::string> digests_;  // by name
    std::uint64_t done_ = 0;                                // bytes
};

}  // namespace

CollectResult Collect(const CollectPlan& plan, const CollectOptions& options) {
    CollectResult result;
    try {
        Collector(plan, options, result).Run();
    } catch (Failure& failure) {
        result.messages.push_back(std::move(failure.message));
    } catch (const Cancelled&) {
        result.cancelled = true;
    }
    return result;
}

}  // namespace orvo
