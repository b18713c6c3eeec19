#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Draw.h>
#include <orvo/Layout.h>
#include <orvo/Model.h>

namespace cli {

/// The sessions that are served: one file, or those of a folder and below it as they are at the
/// moment. All functions may run in any number of threads.
class SessionShelf {
public:
    struct Options {
        orvo::LayoutOptions layout{};
        bool waveforms = true;
        bool audio = false;   ///< pages play their clips
        std::string cache{};  ///< of waveforms: `orvo::WaveformOptions`
    };

    /// @param name  a session file, its JSON, or a folder
    SessionShelf(std::string name, Options options);

    const std::string& Name() const { return name_; }
    bool IsGallery() const { return isFolder_; }

    /// Names of files, as paths from the folder; of one file its last part.
    std::vector<std::string> Sessions() const;

    /// What is made of a session, or in lines why nothing is.
    struct Made {
        bool ok = false;
        std::string text{};
    };

    /// Where the page of a session asks for more.
    struct Addresses {
        std::string state{};
        std::string media{};  ///< the number of the media is to follow
    };

    /// The page of a session.
    /// @return none if there is no such session
    std::optional<Made> Page(const std::string& session, const Addresses& addresses);

    /// The path of media, by their number in the page of a session that was made last. Only what
    /// that page plays.
    std::optional<std::string> Media(const std::string& session, const std::string& number);

    /// A small SVG.
    std::optional<Made> Picture(const std::string& session, orvo::Theme theme);

    /// A text that changes when the file does.
    std::optional<std::string> State(const std::string& session) const;

private:
    /// The file of a session; none if it is not one of those that are served.
    std::optional<std::string> FileOf(const std::string& session) const;

    std::string name_;
    bool isFolder_;
    Options options_;
    /// Paths of media by the names of sessions and the numbers of media.
    std::map<std::string, std::map<std::string, std::string>> media_{};
    std::mutex making_{};  // one at a time: sessions may be large
};

}  // namespace cli
