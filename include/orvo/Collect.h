#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Message.h>
#include <orvo/Session.h>

/// Collects a session and its media in one folder, which then opens on any machine:
///
///     show/song.orvo               its relative paths lead to the media beside it
///     show/media/kick.wav
///     show/media/kick-2.wav        another file of that name
///     show/manifest-sha256.txt     the SHA-256 of each, as sha256sum writes and checks it
///
///     const orvo::CollectPlan plan = orvo::PlanCollection("song.orvo", "/backup/show");
///     if (plan && plan.bytesToCopy <= plan.bytesFree.value_or(0)) {
///         orvo::CollectResult result = orvo::Collect(plan);
///     }
///
/// A collection never replaces a file. After an interruption, plan and collect again: what is
/// complete stays. The files of pre-rendered tracks are not collected, because a session has no
/// relative path for them.
///
/// Texts are UTF-8. Nothing but std::bad_alloc is thrown.
namespace orvo {

struct CollectOptions {
    /// Whether media may become hard links. A link needs no space, but whoever changes the file
    /// changes the collection too. Where the file system can, media become clones in any case,
    /// which share their space only until one of them changes.
    bool link = false;

    /// Called with the share that is done. Return false to cancel.
    ProgressFunction progress{};
};

/// A media file of a session.
struct CollectedFile {
    std::vector<std::uint32_t> ids{};  ///< of the session's files with this path
    std::string source{};              ///< the full path
    std::string name{};                ///< in the folder: "media/kick.wav"; empty if missing
    std::uint64_t size = 0;            ///< in bytes
    bool exists = false;               ///< something of that name is in the folder

    friend bool operator==(const CollectedFile&, const CollectedFile&) = default;
};

struct CollectPlan {
    bool ok = false;
    std::filesystem::path session{};
    std::filesystem::path folder{};            ///< a full path
    std::string sessionName{};                 ///< in the folder
    std::vector<CollectedFile> media{};        ///< each path once, in the session's order
    std::uint64_t bytes = 0;                   ///< of all media that are not missing
    std::uint64_t bytesToCopy = 0;             ///< of those that neither exist nor can be linked
    std::optional<std::uint64_t> bytesFree{};  ///< in the folder; no value if unknown
    std::vector<Message> messages{};           ///< why there is no plan

    explicit operator bool() const { return ok; }

    ORVO_API std::size_t MissingCount() const;
};

/// Reads a session and finds its media. Changes nothing.
/// @param folder  need not exist, but the folder around it must
ORVO_API CollectPlan PlanCollection(const std::filesystem::path& session,
                                    const std::filesystem::path& folder,
                                    const CollectOptions& options = {});

struct CollectResult {
    bool ok = false;
    bool cancelled = false;
    std::size_t copied = 0;
    std::size_t cloned = 0;  ///< shares its space with the source
    std::size_t linked = 0;
    std::size_t kept = 0;             ///< was complete already
    std::vector<Message> messages{};  ///< why the collection is incomplete

    explicit operator bool() const { return ok; }
};

/// Makes the collection. Missing media keep their paths. Half of a file is only ever in the file
/// `kPartName` in the folder, which a program may remove when a signal ends it.
ORVO_API CollectResult Collect(const CollectPlan& plan, const CollectOptions& options = {});

inline constexpr const char* kManifestName = "manifest-sha256.txt";
inline constexpr const char* kPartName = ".orvo-part";

enum class VerifiedState {
    Good,        ///< as it was collected
    Changed,     ///< has another content
    Missing,     ///< is not there
    Unreadable,  ///< cannot be read
    Unlisted,    ///< was not collected; says nothing against the collection
};

struct VerifiedFile {
    std::string name{};  ///< in the folder
    VerifiedState state = VerifiedState::Good;
    std::string why{};  ///< if unreadable

    friend bool operator==(const VerifiedFile&, const VerifiedFile&) = default;
};

struct VerifyResult {
    bool ok = false;  ///< all listed files are good
    bool cancelled = false;
    std::vector<VerifiedFile> files{};  ///< in the order of the manifest, then those not in it
    std::vector<Message> messages{};    ///< why the folder cannot be verified

    explicit operator bool() const { return ok; }
};

/// Compares a collected folder with its manifest.
ORVO_API VerifyResult VerifyCollection(const std::filesystem::path& folder,
                                       const ProgressFunction& progress = {});

}  // namespace orvo
