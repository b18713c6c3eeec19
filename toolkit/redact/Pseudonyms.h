#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace toolkit {

/// Gives every text another one, the same for the same text.
class Pseudonyms {
public:
    /// "Track 1" for a track's name. White space around it stays; an empty name stays empty.
    std::u16string OfName(std::string_view thing, std::u16string_view name);

    /// "/name1/name2.wav" for a path of any system.
    std::u16string OfPath(std::u16string_view path);

    /// "urn:namespace1" for the name of a namespace.
    std::u16string OfNamespace(std::u16string_view uri);

    /// What each stands for.
    std::map<std::string, std::string> Key() const;

private:
    std::u16string OfPart(std::u16string_view part, bool isLast);
    std::size_t NumberOf(std::string_view thing, std::u16string_view text);

    std::map<std::pair<std::string, std::u16string>, std::size_t, std::less<>> numbers_;
    std::map<std::string, std::size_t, std::less<>> counts_;  // of each thing
};

/// With "x" for each letter and digit.
std::u16string Masked(std::u16string_view text);

/// Base64 of as many zero bytes. Layout stays.
std::u16string Zeroed(std::u16string_view base64);

}  // namespace toolkit
