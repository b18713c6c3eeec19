#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Runs a fuzzer over the files of a folder, once each: REPLAY FOLDER. For builds without a fuzzing
// engine.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::uint8_t> Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2 || !std::filesystem::is_directory(arguments[1])) {
        std::fprintf(stderr, "usage: %s FOLDER\n", arguments[0]);
        return 2;
    }
    int replayed = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::printf("%s\n", entry.path().c_str());
        std::fflush(stdout);
        const std::vector<std::uint8_t> content = Content(entry.path());
        LLVMFuzzerTestOneInput(content.data(), content.size());
        ++replayed;
    }
    std::printf("%d files replayed\n", replayed);
    return replayed > 0 ? 0 : 1;
}
