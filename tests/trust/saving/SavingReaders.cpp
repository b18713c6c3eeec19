#include <sys/wait.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "tests/support/FeaturesUnderTest.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/saving/Saving.h"

// SavingReaders SESSION COUNT: reads a file repeatedly while another program saves two sessions in
// turn to it, COUNT times. Every read must return one of them completely.

namespace {

struct Progress {
    std::atomic<bool> failed;
    std::atomic<long> saves;
};

struct Counts {
    long reads = 0;
    long first = 0;
    long second = 0;
    long changes = 0;
    long refused = 0;
    long mixed = 0;
};

struct Sides {
    test::Saved first;
    test::Saved second;
};

void SaveInTurn(refhost::Plugin& plugin, const Sides& sides, const std::u16string& path, long count,
                Progress& progress) {
    while (progress.saves < count) {
        const auto& side = progress.saves % 2 == 0 ? sides.second : sides.first;
        const auto written = refhost::WriteSession(plugin, path, side.session);
        progress.failed = progress.failed || written.result != tses::SessionResult::Ok;
        ++progress.saves;
    }
}

void Count(const refhost::ReadResult& read, const Sides& sides, Counts& counts) {
    ++counts.reads;
    if (read.result != tses::SessionResult::Ok || !read.messages.empty()) {
        ++counts.refused;
        for (const std::u16string& message : read.messages) {
            std::printf("%s\n", kelcore::UTF16to8(message).c_str());
        }
    } else if (read.session == sides.first.readBack) {
        ++counts.first;
    } else if (read.session == sides.second.readBack) {
        ++counts.second;
    } else {
        ++counts.mixed;
    }
}

/// Reads until the saving process has ended.
Counts ReadMeanwhile(refhost::Plugin& plugin, const Sides& sides, const std::u16string& path,
                     pid_t saver, Progress& progress) {
    Counts counts;
    int status = 0;
    while (waitpid(saver, &status, WNOHANG) == 0) {
        const long before = progress.saves;
        Count(refhost::ReadSession(plugin, path), sides, counts);
        counts.changes += progress.saves != before ? 1 : 0;
    }
    progress.failed = progress.failed || status != 0;
    return counts;
}

int Run(const std::string& example, long count) {
    test::UseFeaturesUnderTest();
    refhost::Plugin plugin;
    const auto session = test::SessionOf(plugin, example);
    const test::TemporaryFolder folder;
    const Sides sides{test::SaveInPeace(plugin, session, folder.Path()),
                      test::SaveInPeace(plugin, test::WithMoreFiles(session, 100), folder.Path())};
    const std::u16string path =
        kelcore::PathFromBytes(folder.Write("song.orvo", sides.first.bytes).native());
    const test::Shared<Progress> progress;
    const pid_t saver = test::Begin([&] { SaveInTurn(plugin, sides, path, count, *progress); });
    const Counts counts = ReadMeanwhile(plugin, sides, path, saver, *progress);
    std::printf(
        "saving_readers: %ld reads, %ld of one session and %ld of the other, %ld while a save "
        "ended, %ld refused, %ld mixed; %ld saves%s\n",
        counts.reads, counts.first, counts.second, counts.changes, counts.refused, counts.mixed,
        progress->saves.load(), progress->failed ? ", not all of them successful" : "");
    const bool isTrial = counts.first > 0 && counts.second > 0 && counts.changes > 0;
    return isTrial && counts.refused == 0 && counts.mixed == 0 && !progress->failed ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: SavingReaders SESSION COUNT\n");
        return 2;
    }
    return Run(argv[1], std::atol(argv[2]));
}
