#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

// Runs a fuzzer without a fuzzing engine: FUZZER -runs=N FOLDER. The files of the folder, once
// each, then N inputs made of them by chance, always the same. What was running when the process
// ends unexpectedly is in "crash-input".

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Input = std::vector<std::uint8_t>;

constexpr std::size_t kLongestInput = 4096;

Input Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Input> Corpus(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<Input> corpus;
    for (const auto& path : paths) {
        corpus.push_back(Content(path));
    }
    return corpus;
}

class Mutator {
public:
    explicit Mutator(const std::vector<Input>& corpus) : corpus_(corpus) {}

    Input Next() {
        Input input = corpus_[Below(corpus_.size())];
        for (std::size_t changes = 1 + Below(6); changes > 0; --changes) {
            Change(input);
        }
        input.resize(std::min(input.size(), kLongestInput));
        return input;
    }

private:
    std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }
    std::uint8_t Byte() { return static_cast<std::uint8_t>(random_()); }
    static std::ptrdiff_t At(std::size_t place) { return static_cast<std::ptrdiff_t>(place); }

    void Change(Input& input) {
        const std::size_t place = Below(input.size());
        const std::size_t length = std::min(1 + Below(16), input.size() - place);
        switch (Below(5)) {
            case 0:  // another byte
                if (!input.empty()) {
                    input[place] = Byte();
                }
                break;
            case 1:  // another bit
                if (!input.empty()) {
                    input[place] ^= static_cast<std::uint8_t>(1U << Below(8));
                }
                break;
            case 2:  // fewer bytes
                input.erase(input.begin() + At(place), input.begin() + At(place + length));
                break;
            case 3:  // more bytes
                for (std::size_t count = 1 + Below(16); count > 0; --count) {
                    input.insert(input.begin() + At(place), Byte());
                }
                break;
            default:  // a part of another input
                Splice(input, place);
        }
    }

    void Splice(Input& input, std::size_t place) {
        const Input& other = corpus_[Below(corpus_.size())];
        const std::size_t from = Below(other.size());
        const std::size_t length = Below(std::min<std::size_t>(other.size() - from, 256) + 1);
        input.insert(input.begin() + At(place), other.begin() + At(from),
                     other.begin() + At(from + length));
    }

    const std::vector<Input>& corpus_;
    std::mt19937_64 random_{20261121};
};

/// Keeps the input that runs in a file, for when it ends the process.
class InputOnDisk {
public:
    InputOnDisk() : descriptor_(::open(kPath, O_CREAT | O_RDWR | O_CLOEXEC, 0644)) {}
    ~InputOnDisk() {
        ::close(descriptor_);
        std::filesystem::remove(kPath);
    }
    InputOnDisk(const InputOnDisk&) = delete;
    InputOnDisk& operator=(const InputOnDisk&) = delete;

    void Put(const Input& input) const {
        const bool kept = ::pwrite(descriptor_, input.data(), input.size(), 0) ==
                              static_cast<ssize_t>(input.size()) &&
                          ::ftruncate(descriptor_, static_cast<off_t>(input.size())) == 0;
        if (!kept) {
            std::perror(kPath);
        }
    }

private:
    static constexpr char kPath[] = "crash-input";

    int descriptor_;
};

void Run(const Input& input, const InputOnDisk& onDisk) {
    onDisk.Put(input);
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

}  // namespace

int main(int count, char** arguments) {
    constexpr std::string_view kRuns = "-runs=";
    if (count != 3 || !std::string_view(arguments[1]).starts_with(kRuns) ||
        !std::filesystem::is_directory(arguments[2])) {
        std::fprintf(stderr, "usage: %s -runs=N FOLDER\n", arguments[0]);
        return 2;
    }
    const long runs = std::atol(arguments[1] + kRuns.size());
    const std::vector<Input> corpus = Corpus(arguments[2]);
    if (corpus.empty()) {
        std::fprintf(stderr, "%s: nothing in %s\n", arguments[0], arguments[2]);
        return 1;
    }
    const InputOnDisk onDisk;
    for (const Input& input : corpus) {
        Run(input, onDisk);
    }
    Mutator mutator(corpus);
    for (long run = 0; run < runs; ++run) {
        Run(mutator.Next(), onDisk);
    }
    std::printf("%zu inputs of the corpus, %ld made of them\n", corpus.size(), runs);
    return 0;
}
