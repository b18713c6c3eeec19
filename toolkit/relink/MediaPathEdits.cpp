#include "toolkit/relink/MediaPathEdits.h"

#include "format/Ids.h"
#include "format/Names.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"

namespace toolkit {
namespace {

namespace names = tses::names;

const std::string kElement = kelcore::UTF16to8(names::file);
const std::string kId = kelcore::UTF16to8(names::id);
const std::string kAbsolutePath = kelcore::UTF16to8(names::absolutePath);
const std::string kRelativePath = kelcore::UTF16to8(names::relativePath);

std::u16string FullPathOf(const std::filesystem::path& file) {
    return kelcore::File(kelcore::PathFromBytes(file.string())).FullPath();
}

std::u16string_view FolderOf(std::u16string_view path) {
    return path.substr(0, path.rfind(u'/') + 1);
}

std::uint32_t IdOf(const orvo::Edit& edit, std::size_t element) {
    kelcore::uint32 id = tses::kNoId;
    kelcore::StringToNumber(kelcore::UTF8to16(edit.Attribute(element, kId).value_or("")), id);
    return id;
}

/// The relative path from the target to a full path; an empty one leads nowhere.
std::optional<orvo::Message> SetRelativePath(orvo::Edit& edit, std::size_t element,
                                             const std::u16string& path,
                                             const std::u16string& target) {
    const std::u16string relative = kelcore::MakeNormalizedRelativePath(path, target);
    const bool isNew = !edit.Attribute(element, kRelativePath);
    return relative.empty() && isNew
               ? std::nullopt
               : edit.SetAttribute(element, kRelativePath, kelcore::UTF16to8(relative));
}

std::optional<orvo::Message> SetPaths(orvo::Edit& edit, std::size_t element,
                                      const std::string& path, const std::u16string& target) {
    auto refused = edit.SetAttribute(element, kAbsolutePath, path);
    return refused ? refused : SetRelativePath(edit, element, kelcore::UTF8to16(path), target);
}

std::optional<orvo::Message> MoveRelativePath(orvo::Edit& edit, std::size_t element,
                                              const std::u16string& source,
                                              const std::u16string& target) {
    const std::u16string relative =
        kelcore::UTF8to16(edit.Attribute(element, kRelativePath).value_or(""));
    return relative.empty() || FolderOf(source) == FolderOf(target)
               ? std::nullopt
               : SetRelativePath(edit, element, kelcore::MakeFileFromPath(relative, source),
                                 target);
}

}  // namespace

void SetMediaPaths(orvo::Edit& edit, const std::filesystem::path& source,
                   const std::filesystem::path& target, const MediaPlaces& places,
                   const std::function<void(std::uint32_t id, const orvo::Message& why)>& refuse) {
    const std::u16string from = FullPathOf(source);
    const std::u16string to = FullPathOf(target);
    for (std::size_t element = 0; element < edit.ElementCount(); ++element) {
        if (!edit.IsKnown(element) || edit.Name(element) != kElement) {
            continue;
        }
        const std::uint32_t id = IdOf(edit, element);
        const auto place = places(id);
        const auto refused =
            place ? SetPaths(edit, element, *place, to) : MoveRelativePath(edit, element, from, to);
        if (refused) {
            refuse(id, *refused);
        }
    }
}

}  // namespace toolkit
