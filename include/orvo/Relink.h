#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Edit.h>
#include <orvo/Message.h>

/// Finds the missing media of session files and writes where they are.
///
///     orvo::Relinker relinker({.mappings = {{"D:\\Jobs", "/mnt/jobs"}}});
///     relinker.Search("/archive/media");
///     orvo::RelinkResult result = relinker.Relink("song.orvo", "song.orvo");
///     for (const orvo::RelinkedMedia& media : result.media) { ... }
///     if (result.edit) {
///         result.edit->Save("song.orvo");
///     }
///
/// Media are the files that clips refer to. The files of pre-rendered tracks are none.
/// Texts are UTF-8. Nothing but std::bad_alloc is thrown.
namespace orvo {

/// What a file in the searched folders must have to stand for a missing one. Each includes the
/// name: as the system spells it or else in other letter case or another Unicode form, because
/// sessions travel between systems.
enum class MediaMatch {
    /// Among files of one name, the one whose folders, from the last one up, have the most names
    /// in common with the missing path.
    Name,
    /// The file must also be as long, and have as many channels, as the audio clips that play it
    /// need. Stretched clips need no length. What libsndfile cannot read, such as a video, is only
    /// found for media without such clips.
    NameAndLength,
    /// If the manifest of a collection (`orvo/Collect.h`) in the session's folder lists the missing
    /// file, a file must have the content that it states (SHA-256). Otherwise, if several files
    /// have the name, all must have the same content; folders do not count. Any of them serves.
    Hash,
};

/// Another beginning of paths.
struct PathMapping {
    /// Whole names in the form of any system: "D:\Jobs", "/Volumes/Media". If it begins with a
    /// drive or "\", the case of letters does not count, and "/" is the same as "\".
    std::string from{};
    /// A folder of this system; a relative path counts from the working directory. The names that
    /// follow may be spelled differently there, as for `MediaMatch`.
    std::string to{};

    friend bool operator==(const PathMapping&, const PathMapping&) = default;
};

struct RelinkOptions {
    std::vector<PathMapping> mappings{};  ///< the first that leads to a file counts
    MediaMatch match = MediaMatch::Name;  ///< for files in the searched folders
};

enum class RelinkOutcome {
    Present,    ///< where the session looks for it
    Found,      ///< elsewhere
    Ambiguous,  ///< several files may be meant, or one file for several missing ones
    Missing,
};

/// What became of a media file of a session.
struct RelinkedMedia {
    std::uint32_t id = 0;  ///< that of the `File`
    std::string path{};    ///< where the session looks for it; a full path, may be empty
    RelinkOutcome outcome = RelinkOutcome::Missing;
    std::string newPath{};  ///< if found: the full path
    std::string why{};      ///< empty if present, or found as the only file of its name
    std::vector<std::string> candidates{};  ///< if ambiguous: full paths, sorted

    friend bool operator==(const RelinkedMedia&, const RelinkedMedia&) = default;
};

struct RelinkResult {
    bool ok = false;
    std::vector<RelinkedMedia> media{};  ///< all media, in the session's order

    /// The changed session, not saved yet. No value if nothing changes. The absolute path of what
    /// was found is the new one, and the relative path leads there from the folder of the target.
    /// If that is another folder than the session's, all relative paths lead from there.
    std::optional<Edit> edit{};

    std::vector<Message> messages{};  ///< why the session cannot be relinked

    explicit operator bool() const { return ok; }

    /// How many media have an outcome.
    ORVO_API std::size_t Count(RelinkOutcome outcome) const;
};

/// Relinks any number of sessions to the same folders. One thread at a time may use an object.
class ORVO_API Relinker {
public:
    explicit Relinker(RelinkOptions options = {});
    Relinker(Relinker&&) noexcept;
    Relinker& operator=(Relinker&&) noexcept;
    ~Relinker();

    /// Called for each folder with the number of files known by then. Return false to cancel.
    using SearchProgress = std::function<bool(std::uint64_t files)>;

    struct SearchResult {
        bool ok = false;  ///< the folder itself was read
        bool cancelled = false;
        std::vector<Message> messages{};  ///< which folders could not be read, and why

        explicit operator bool() const { return ok; }
    };

    /// Looks for regular files in a folder and all folders below it. Includes links to files but
    /// does not follow links to folders. Opens no file. Folders that were searched before are
    /// passed over.
    SearchResult Search(const std::filesystem::path& folder, const SearchProgress& progress = {});

    /// How many files are known.
    std::uint64_t FileCount() const;

    /// Looks for the missing media of a session: first by the mappings, then in the folders.
    /// @param target  where the session will be saved
    RelinkResult Relink(const std::filesystem::path& session, const std::filesystem::path& target);

private:
    class Implementation;

    std::unique_ptr<Implementation> implementation_;
};

}  // namespace orvo
