#include "toolkit/view/page/PageSounds.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>

#include "platform/kelcore/BinaryText.h"
#include "toolkit/media/MediaFile.h"

namespace orvo::page {
namespace {

/// Writes a file in blocks that Base64 turns into text without padding between them.
void WriteFile(const std::string& path, const TextSink& sink) {
    constexpr std::size_t kBlock = std::size_t{3} << 18;
    std::ifstream file(path, std::ios::binary);
    std::vector<char> block(kBlock);
    while (file.read(block.data(), static_cast<std::streamsize>(block.size())) ||
           file.gcount() > 0) {
        sink(kelcore::EncodeBinaryDataToUTF8String(
            reinterpret_cast<const kelcore::byte*>(block.data()),
            static_cast<std::size_t>(file.gcount())));
    }
}

}  // namespace

std::string SoundId(std::size_t media) {
    return fmt::format("sound-{}", media);
}

void WriteSounds(const Layout& layout, const TextSink& sink) {
    for (const std::size_t media : MediaToHear(layout)) {
        sink(fmt::format("<script type=\"application/octet-stream\" id=\"{}\">", SoundId(media)));
        WriteFile(layout.media[media].path, sink);
        sink("</script>\n");
    }
}

}  // namespace orvo::page

namespace orvo {

std::vector<std::size_t> MediaToHear(const Layout& layout) {
    std::vector<std::size_t> heard;
    for (const LayoutRow& row : layout.rows) {
        for (const LayoutBox& box : row.boxes) {
            if (box.kind == BoxKind::Audio && box.media) {
                heard.push_back(*box.media);
            }
        }
    }
    std::ranges::sort(heard);
    heard.erase(std::unique(heard.begin(), heard.end()), heard.end());
    std::erase_if(heard, [&layout](std::size_t media) {
        return !layout.media[media].found || !toolkit::IsMediaFile(layout.media[media].path);
    });
    return heard;
}

}  // namespace orvo
