#include "toolkit/relink/PathNames.h"

#include <algorithm>

#include "toolkit/media/FoldedName.h"

namespace toolkit {
namespace {

bool HasDrive(std::string_view path) {
    const char letter = path.empty() ? '\0' : path.front();
    const bool isLetter = (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
    return isLetter && path.size() > 1 && path[1] == ':' &&
           (path.size() == 2 || path[2] == '\\' || path[2] == '/');
}

bool IsSameName(std::string_view one, std::string_view other, bool inAnyCase) {
    return one == other || (inAnyCase && FoldedName(one) == FoldedName(other));
}

}  // namespace

PathNames NamesOf(std::string_view path) {
    PathNames result;
    result.isWindows = HasDrive(path) || path.starts_with('\\');
    result.isFull = result.isWindows || path.starts_with('/');
    const std::string_view separators = result.isWindows ? "/\\" : "/";
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find_first_of(separators, at), path.size());
        if (end != at) {
            result.names.push_back(path.substr(at, end - at));
        }
        at = end + 1;
    }
    return result;
}

std::string_view LastNameOf(std::string_view path) {
    const PathNames split = NamesOf(path);
    return split.names.empty() ? std::string_view() : split.names.back();
}

std::size_t SharedFolders(std::string_view one, std::string_view other) {
    const PathNames first = NamesOf(one);
    const PathNames second = NamesOf(other);
    const std::size_t most = std::min(first.names.size(), second.names.size());
    std::size_t shared = 0;
    while (shared + 1 < most && IsSameName(first.names[first.names.size() - shared - 2],
                                           second.names[second.names.size() - shared - 2], true)) {
        ++shared;
    }
    return shared;
}

std::optional<std::vector<std::string_view>> NamesBehind(std::string_view path,
                                                         std::string_view beginning) {
    const PathNames whole = NamesOf(path);
    const PathNames begin = NamesOf(beginning);
    if (begin.isWindows != whole.isWindows || begin.isFull != whole.isFull ||
        begin.names.size() >= whole.names.size() ||
        !std::equal(begin.names.begin(), begin.names.end(), whole.names.begin(),
                    [&](std::string_view one, std::string_view other) {
                        return IsSameName(one, other, begin.isWindows);
                    })) {
        return std::nullopt;
    }
    return std::vector<std::string_view>(
        whole.names.begin() + static_cast<std::ptrdiff_t>(begin.names.size()), whole.names.end());
}

}  // namespace toolkit
