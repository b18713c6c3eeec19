#include "toolkit/view/PeakCache.h"

#include <fmt/format.h>

#include <bit>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <variant>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "toolkit/media/Sha256.h"

namespace toolkit {
namespace {

using orvo::Peak;

std::string DigestOf(std::string_view text) {
    Sha256 digest;
    digest.Add(text);
    return digest.Digest();
}

/// What the peaks are of. The number is that of the form of these files.
std::string HeadOf(const std::string& path, const FileIdentity& state,
                   std::uint32_t framesPerPeak) {
    return fmt::format("peaks 1\n{} {}.{:09} {}\n{}\n", state.size, state.changedSeconds,
                       state.changedNanoseconds, framesPerPeak, path);
}

constexpr std::size_t kLevelSize = 4;

void AppendLevel(std::string& content, float level) {
    const auto bits = std::bit_cast<std::uint32_t>(level);
    for (std::size_t i = 0; i < kLevelSize; ++i) {
        content += static_cast<char>(bits >> (8 * i));
    }
}

float LevelAt(std::string_view content, std::size_t place) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kLevelSize; ++i) {
        bits |= std::uint32_t{static_cast<unsigned char>(content[place + i])} << (8 * i);
    }
    return std::bit_cast<float>(bits);
}

}  // namespace

std::string PeakCache::PlaceOf(const std::string& path) const {
    return folder_ + "/" + DigestOf(path) + ".peaks";
}

std::optional<std::vector<Peak>> PeakCache::Find(const std::string& path, const FileIdentity& state,
                                                 std::uint32_t framesPerPeak) const {
    const auto read = ReadFileContent(PlaceOf(path));
    const auto* const text = std::get_if<std::string>(&read);
    const std::string head = HeadOf(path, state, framesPerPeak);
    if (text == nullptr || !text->starts_with(head)) {
        return std::nullopt;
    }
    std::string_view content = *text;
    constexpr std::size_t kDigestSize = 64;
    if (content.size() < head.size() + kDigestSize) {
        return std::nullopt;
    }
    const std::string_view digest = content.substr(content.size() - kDigestSize);
    content.remove_suffix(kDigestSize);
    const std::size_t size = content.size() - head.size();
    if (size % (2 * kLevelSize) != 0 || DigestOf(content) != digest) {
        return std::nullopt;
    }
    std::vector<Peak> peaks;
    peaks.reserve(size / (2 * kLevelSize));
    for (std::size_t place = head.size(); place < content.size(); place += 2 * kLevelSize) {
        peaks.push_back({LevelAt(content, place), LevelAt(content, place + kLevelSize)});
    }
    return peaks;
}

void PeakCache::Keep(const std::string& path, const FileIdentity& state,
                     std::uint32_t framesPerPeak, const std::vector<Peak>& peaks) const {
    std::string content = HeadOf(path, state, framesPerPeak);
    for (const Peak& peak : peaks) {
        AppendLevel(content, peak.lowest);
        AppendLevel(content, peak.highest);
    }
    content += DigestOf(content);
    try {
        std::error_code ignored;
        std::filesystem::create_directories(folder_, ignored);
        kelcore::File file(kelcore::PathFromBytes(PlaceOf(path)));
        file.Create();
        kelcore::OPlatformByteStream stream(file);
        stream.WriteBlock(content.data(), content.size());
        stream.Close();
    } catch (const kelcore::file_exception&) {
        return;  // as announced
    }
}

}  // namespace toolkit
