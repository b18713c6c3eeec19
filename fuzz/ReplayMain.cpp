#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

// Runs a fuzzer without a fuzzing engine: FUZZER -runs=N [-seed=S] FOLDER. Runs each file in the
// folder once, then N random mutations of them; the same seed gives the same inputs. If the process
// dies, "crash-input" contains the input that was running. Each input may take one second of
// processor time, the process one gibibyte of memory.

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
    Mutator(const std::vector<Input>& corpus, std::uint64_t seed)
        : corpus_(corpus), random_(seed) {}

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
            case 0:  // change a byte
                if (!input.empty()) {
                    input[place] = Byte();
                }
                break;
            case 1:  // flip a bit
                if (!input.empty()) {
                    input[place] ^= static_cast<std::uint8_t>(1U << Below(8));
                }
                break;
            case 2:  // remove bytes
                input.erase(input.begin() + At(place), input.begin() + At(place + length));
                break;
            case 3:  // add bytes
                for (std::size_t count = 1 + Below(16); count > 0; --count) {
                    input.insert(input.begin() + At(place), Byte());
                }
                break;
            default:  // splice in part of another input
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
    std::mt19937_64 random_;
};

/// Stores the running input in a file until it has finished, in case it kills the process.
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

double ProcessorSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

void Run(const Input& input, const InputOnDisk& onDisk) {
    constexpr double kMostSeconds = 1;
    onDisk.Put(input);
    const double before = ProcessorSeconds();
    LLVMFuzzerTestOneInput(input.data(), input.size());
    if (ProcessorSeconds() - before > kMostSeconds) {
        std::fprintf(stderr, "fuzz: an input took more than a second\n");
        std::abort();
    }
}

/// The peak memory use of the process in KiB.
long MostMemory() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

struct Arguments {
    unsigned long long runs = 0;
    unsigned long long seed = 20261121;
    std::filesystem::path folder;
};

/// Parses "-NAME=NUMBER".
bool TakeNumber(std::string_view argument, std::string_view name, unsigned long long& number) {
    if (!argument.starts_with(name)) {
        return false;
    }
    argument.remove_prefix(name.size());
    const auto [end, error] =
        std::from_chars(argument.data(), argument.data() + argument.size(), number);
    return error == std::errc() && end == argument.data() + argument.size();
}

std::optional<Arguments> Parse(int count, char** texts) {
    Arguments arguments;
    for (int place = 1; place < count; ++place) {
        const std::string_view text = texts[place];
        if (TakeNumber(text, "-runs=", arguments.runs) ||
            TakeNumber(text, "-seed=", arguments.seed)) {
            continue;
        }
        if (text.starts_with('-') || !arguments.folder.empty()) {
            return std::nullopt;
        }
        arguments.folder = text;
    }
    return std::filesystem::is_directory(arguments.folder) ? std::optional(arguments)
                                                           : std::nullopt;
}

}  // namespace

int main(int count, char** texts) {
    const std::optional<Arguments> arguments = Parse(count, texts);
    if (!arguments) {
        std::fprintf(stderr, "usage: %s -runs=N [-seed=S] FOLDER\n", texts[0]);
        return 2;
    }
    const std::vector<Input> corpus = Corpus(arguments->folder);
    if (corpus.empty()) {
        std::fprintf(stderr, "%s: no inputs in %s\n", texts[0], arguments->folder.c_str());
        return 1;
    }
    const InputOnDisk onDisk;
    for (const Input& input : corpus) {
        Run(input, onDisk);
    }
    Mutator mutator(corpus, arguments->seed);
    for (unsigned long long run = 0; run < arguments->runs; ++run) {
        Run(mutator.Next(), onDisk);
    }
    constexpr long kMostMemory = 1 << 20;
    std::printf("%zu corpus inputs, %llu mutations; peak memory %ld MiB\n", corpus.size(),
                arguments->runs, MostMemory() >> 10);
    return MostMemory() > kMostMemory ? 1 : 0;
}
