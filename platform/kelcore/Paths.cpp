#include "platform/kelcore/Paths.h"

#include <algorithm>
#include <boost/container/small_vector.hpp>
#include <filesystem>
#include <new>
#include <system_error>

#include "platform/kelcore/Unicode.h"

namespace kelcore {
namespace {

constexpr char16_t kSeparator = u'/';
constexpr char16_t kForeignSeparator = u'\\';
constexpr std::u16string_view kThisFolder = u".";
constexpr std::u16string_view kParentFolder = u"..";

/// Bytes 0x80 to 0xFF that are not UTF-8 become U+DC80 to U+DCFF.
constexpr char32_t kByteEscapes = 0xDC00;

bool IsEscapedByte(char32_t codePoint) {
    return codePoint >= kByteEscapes + 0x80 && codePoint <= kByteEscapes + 0xFF;
}

bool IsAbsolute(std::u16string_view path) {
    return path.starts_with(kSeparator);
}

/// Whether ".." is resolved or kept.
enum class StepsBack { WorkedOut, Kept };

/// The names of a path, with "." removed and, unless kept, ".." resolved. Leading ".." of a
/// relative path always stay, because the names before them are unknown.
class Names {
public:
    explicit Names(std::u16string_view path, StepsBack stepsBack = StepsBack::WorkedOut)
        : absolute_(IsAbsolute(path)), stepsBack_(stepsBack) {
        Append(path);
    }

    void Append(std::u16string_view path) {
        while (!path.empty()) {
            const std::size_t end = std::min(path.find(kSeparator), path.size());
            AppendName(path.substr(0, end));
            path.remove_prefix(std::min(end + 1, path.size()));
        }
    }

    /// Moves to the parent folder. The root has none and stays.
    void RemoveLast() {
        if (!names_.empty()) {
            names_.pop_back();
        }
    }

    /// Paths of usual depth need no allocation.
    using NameList = boost::container::small_vector<std::u16string_view, 16>;
    const NameList& List() const { return names_; }

    std::u16string Path() const {
        std::u16string path;
        for (const std::u16string_view name : names_) {
            if (absolute_ || !path.empty()) {
                path += kSeparator;
            }
            path += name;
        }
        if (path.empty()) {
            return absolute_ ? std::u16string(1, kSeparator) : std::u16string(kThisFolder);
        }
        return path;
    }

private:
    void AppendName(std::u16string_view name) {
        if (name.empty() || name == kThisFolder) {
            return;
        }
        const bool isStepBack = name == kParentFolder && stepsBack_ == StepsBack::WorkedOut;
        if (isStepBack && !names_.empty() && names_.back() != kParentFolder) {
            names_.pop_back();
        } else if (!isStepBack || !absolute_) {
            names_.push_back(name);
        }
    }

    bool absolute_;
    StepsBack stepsBack_;
    NameList names_;
};

/// The folder that contains the file `location`.
Names FolderOf(std::u16string_view location) {
    Names names(location);
    names.RemoveLast();
    return names;
}

/// Whether a path needs no resolving: it is absolute, contains no "\", and no name in it is empty
/// or begins with a dot.
bool IsPlain(std::u16string_view path) {
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char16_t next = i + 1 < path.size() ? path[i + 1] : kSeparator;
        if (path[i] == kForeignSeparator ||
            (path[i] == kSeparator && (next == kSeparator || next == u'.'))) {
            return false;
        }
    }
    return IsAbsolute(path);
}

/// A plain path without its last name.
std::u16string_view Parent(std::u16string_view path) {
    return path.substr(0, path.rfind(kSeparator));
}

}  // namespace

std::string PathToBytes(std::u16string_view path) {
    std::string bytes;
    bytes.reserve(path.size());
    std::size_t position = unicode::AppendAscii(bytes, path);
    while (position < path.size()) {
        const char32_t codePoint = unicode::NextCodePoint(path, position);
        if (IsEscapedByte(codePoint)) {
            bytes.push_back(
                static_cast<char>(static_cast<unsigned char>(codePoint - kByteEscapes)));
        } else {
            unicode::AppendUtf8(bytes, codePoint);
        }
        position += unicode::AppendAscii(bytes, path.substr(position));
    }
    return bytes;
}

std::u16string PathFromBytes(std::string_view bytes) {
    std::u16string path;
    path.reserve(bytes.size());
    while (!bytes.empty()) {
        const unicode::Utf8Part part = unicode::FirstPart(bytes);
        // A surrogate encoded as three bytes is not UTF-8, and surrogates stand for bytes here.
        if (part.wellFormed && !unicode::IsSurrogate(part.codePoint)) {
            unicode::AppendUtf16(path, part.codePoint);
        } else {
            for (const char escaped : bytes.substr(0, part.length)) {
                path.push_back(
                    static_cast<char16_t>(kByteEscapes + static_cast<unsigned char>(escaped)));
            }
        }
        bytes.remove_prefix(part.length);
    }
    return path;
}

std::u16string PathForMessage(std::u16string_view path) {
    std::u16string shown;
    for (const char16_t unit : path) {
        unit == u'\0' ? shown.append(u"\\0") : shown.append(1, unit);
    }
    return shown;
}

std::u16string MakeFileFromPath(std::u16string_view path, std::u16string_view location) {
    if (path.empty()) {
        return {};
    }
    if (IsAbsolute(path)) {
        return Names(path).Path();
    }
    std::u16string relative(path);
    std::replace(relative.begin(), relative.end(), kForeignSeparator, kSeparator);
    Names names = FolderOf(location);
    names.Append(relative);
    return names.Path();
}

std::u16string MakeNormalizedRelativePath(std::u16string_view path, std::u16string_view location) {
    if (!IsAbsolute(path) || !IsAbsolute(location)) {
        return {};
    }
    const Names target(path);
    const Names folder = FolderOf(location);
    const auto [targetRest, folderRest] = std::mismatch(target.List().begin(), target.List().end(),
                                                        folder.List().begin(), folder.List().end());
    std::u16string relative;
    relative.reserve(path.size() + 3 * folder.List().size());  // the most: "../" for each folder
    const auto append = [&relative](std::u16string_view name) {
        if (!relative.empty()) {
            relative += kSeparator;
        }
        relative += name;
    };
    std::for_each(folderRest, folder.List().end(), [&](auto) { append(kParentFolder); });
    std::for_each(targetRest, target.List().end(), append);
    if (relative.find(kForeignSeparator) != std::u16string::npos) {
        return {};
    }
    return relative.empty() ? std::u16string(kThisFolder) : relative;
}

bool LeadsPlainlyTo(std::u16string_view path, std::u16string_view relative,
                    std::u16string_view location) {
    constexpr std::u16string_view kUp = u"../";
    if (!IsPlain(path) || !IsPlain(location)) {
        return false;
    }
    std::u16string_view folder = Parent(location);
    for (; relative.starts_with(kUp) && !folder.empty(); folder = Parent(folder)) {
        relative.remove_prefix(kUp.size());
    }
    return path.size() == folder.size() + 1 + relative.size() && path.starts_with(folder) &&
           path[folder.size()] == kSeparator && path.ends_with(relative);
}

std::u16string FileUtils::PrepAsLongPathName(std::u16string_view path) {
    if (path.empty()) {
        return {};
    }
    if (IsAbsolute(path)) {
        return Names(path, StepsBack::Kept).Path();
    }
    std::error_code error;
    const std::filesystem::path workingFolder = std::filesystem::current_path(error);
    if (error == std::errc::not_enough_memory) {
        throw std::bad_alloc();
    }
    if (error) {
        return Names(path, StepsBack::Kept).Path();
    }
    const std::u16string base = PathFromBytes(workingFolder.native());
    Names names(base, StepsBack::Kept);
    names.Append(path);
    return names.Path();
}

}  // namespace kelcore
