#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Message.h>

/// Takes out of a session file what says who made it and of what, so that the file can go into a
/// bug report:
///
///     orvo::Redactor redactor;
///     orvo::RedactResult result = redactor.Redact("song.orvo", "report.orvo");
///
/// - A name of a track, clip, group, preset, port, device or property becomes "Track 1", "Clip 2".
/// - Each name in a path becomes "name1", with its extension; drives, "." and ".." stay.
/// - In every other text of the user, in comments, in processing instructions and in what a read
///   does not know, each letter and digit becomes "x".
/// - Saved states of effects, MIDI and musical events become as many zero bytes.
///
/// The same text becomes the same everywhere, also in the files after it. Numbers, keywords, names
/// of effects and of their parameters, and names of elements and attributes stay. So does every
/// other byte of the file.
///
/// Nothing but std::bad_alloc is thrown.
namespace orvo {

/// What stays.
struct RedactOptions {
    bool keepNames = false;
    bool keepPaths = false;
    bool keepTexts = false;
    bool keepStates = false;   ///< of effects, and events
    bool keepUnknown = false;  ///< comments, and what a read does not know
};

struct RedactResult {
    bool ok = false;
    bool isRead = false;              ///< whether the source could be opened for changes; else
                                      ///< the messages say why not
    std::size_t changes = 0;          ///< places in the file
    std::vector<Message> messages{};  ///< why nothing was saved

    explicit operator bool() const { return ok; }
};

/// Redacts session files. One thread at a time may use an object.
class ORVO_API Redactor {
public:
    explicit Redactor(const RedactOptions& options = {});
    Redactor(Redactor&&) noexcept;
    Redactor& operator=(Redactor&&) noexcept;
    ~Redactor();

    /// Reads a session file and saves it redacted, as `Edit::Save` does; both may be one file. What
    /// `OpenEdit` refuses is refused.
    RedactResult Redact(const std::filesystem::path& source, const std::filesystem::path& target);

    /// For every pseudonym of a name so far, the name; for every "name1" of a path, its name. Who
    /// has it can read the report of who has not.
    std::map<std::string, std::string> Key() const;

private:
    class State;

    std::unique_ptr<State> state_;
};

}  // namespace orvo
