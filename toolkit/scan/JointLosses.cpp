#include "toolkit/scan/JointLosses.h"

#include <optional>

#include "format/Names.h"
#include "format/ValueEncoding.h"
#include "format/clips/VideoFormat.h"
#include "format/document/Document.h"
#include "format/state/TimeFormat.h"
#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/MediaPaths.h"

namespace toolkit {
namespace {

namespace names = tses::names;
using tses::kFirstVersion;

template <class Number>
Number NumberOf(const ScannedAttributes& attributes, std::u16string_view name) {
    Number number = 0;
    kelcore::StringToNumber(attributes.Find(name).value_or(u""), number);
    return number;
}

std::vector<std::string> OfTimeFormat(const ScannedAttributes& attributes) {
    kelcore::int32 rate = 0;
    const auto text = attributes.Find(names::timeCodeFrameRate);
    if (attributes.Find(names::timeFormat) !=
            FindKeyword(tses::kTimeFormats, tses::timeFormats::timeCode, u"") ||
        !tses::ParseBoolLenient(attributes.Find(names::timeCodeNTSC).value_or(u"")) || !text ||
        !kelcore::StringToNumber(*text, rate) ||
        tses::NtscTimeCodeOf(rate, false).frameRate == rate) {
        return {};
    }
    return {ValueOf(names::timeCodeFrameRate, names::timeFormatState, *text) +
            ", which NTSC timecode does not have"};
}

/// A reader takes pixel type 0 for the default.
std::vector<std::string> OfVideoFormat(const ScannedAttributes& attributes) {
    kelcore::int32 type = tses::kDefaultPixelType;
    const auto text = attributes.Find(names::pixelType);
    if (!text || !kelcore::StringToNumber(*text, type) || type != 0) {
        return {};
    }
    return {ValueOf(names::pixelType, names::videoFormat, *text)};
}

bool Exists(std::u16string_view path) {
    return kelcore::File(path).Exists();
}

/// Whether a session file at `location` that holds `path` also states a relative path to `place`.
bool StatesRelatively(std::u16string_view path, std::u16string_view place,
                      std::u16string_view location) {
    const std::u16string relative = kelcore::MakeNormalizedRelativePath(path, location);
    return !relative.empty() && kelcore::MakeFileFromPath(relative, location) == place;
}

}  // namespace

std::vector<std::string> JointLosses::AtStart(std::u16string_view name,
                                              const ScannedAttributes& attributes) {
    if (name == names::file) {
        return OfFile(attributes);
    }
    if (name == names::videoFormat) {
        return OfVideoFormat(attributes);
    }
    if (name == names::timeFormatState) {
        return OfTimeFormat(attributes);
    }
    if (name == names::session) {
        version_ = attributes.Find(names::appVersion).value_or(kFirstVersion);
    } else if (name == names::sessionState) {
        ctiPosition_ = NumberOf<kelcore::int64>(attributes, names::ctiPosition);
    } else if (name == names::selectionState) {
        selectionStart_ = NumberOf<kelcore::int64>(attributes, names::selectionStart);
    }
    return {};
}

/// A reader ends a session of the first version with one position, and any other session with
/// another. JSON has the position that a reader ended with.
std::vector<std::string> JointLosses::AtEnd(std::u16string_view name) const {
    if (name != names::session || conversion_.target == Target::Json ||
        ctiPosition_ == selectionStart_) {
        return {};
    }
    const std::u16string newVersion = kelcore::UTF8to16(kelcore::GetClientVersion());
    const auto position = [this](std::u16string_view version) {
        return version == kFirstVersion ? std::to_string(ctiPosition_) + " (ctiPosition)"
                                        : std::to_string(selectionStart_) + " (selectionStart)";
    };
    if ((version_ == kFirstVersion) == (newVersion == kFirstVersion)) {
        return {};
    }
    return {"the version " + Quoted(version_) + " of " + Tag(name) +
            ": a reader ends with the position " + position(version_) + ", and with " +
            position(newVersion) + " in a file of version " + Quoted(newVersion)};
}

/// The new file has the one path that a reader chooses: the absolute one, unless only the relative
/// one leads to a file; then the media are there. A new session file also has that path relative to
/// itself, and so will a session file made from JSON.
std::vector<std::string> JointLosses::OfFile(const ScannedAttributes& attributes) const {
    const std::u16string& from = conversion_.from;
    const std::u16string_view absolute = attributes.Find(names::absolutePath).value_or(u"");
    const std::u16string_view relative = attributes.Find(names::relativePath).value_or(u"");
    // Usually both are the same path; then the file system need not be asked.
    if (from.empty() || absolute.empty() || kelcore::LeadsPlainlyTo(absolute, relative, from)) {
        return {};
    }
    const bool isJson = conversion_.target == Target::Json;
    const std::u16string place =
        relative.empty() ? std::u16string() : kelcore::MakeFileFromPath(relative, from);
    const bool keepsRelative =
        relative.empty() || StatesRelatively(absolute, place, isJson ? from : conversion_.to);
    const bool keepsAbsolute = !isJson || IsFullMediaPath(absolute);
    if ((keepsRelative && keepsAbsolute) ||
        (!relative.empty() && !Exists(absolute) && Exists(place))) {
        return {};
    }
    const auto lost = [&](std::u16string_view name, std::u16string_view value) {
        return ValueOf(name, names::file, value, length_) + " with id " +
               std::to_string(NumberOf<kelcore::uint32>(attributes, names::id));
    };
    std::vector<std::string> losses;
    if (!keepsRelative) {
        losses.push_back(lost(names::relativePath, relative) +
                         ": the new file names the place of its absolutePath alone");
    }
    if (!keepsAbsolute) {
        losses.push_back(lost(names::absolutePath, absolute) +
                         ": it is no full path, and JSON counts such from its own folder");
    }
    return losses;
}

}  // namespace toolkit
