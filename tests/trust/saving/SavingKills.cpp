#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "platform/kelcore/Paths.h"
#include "tests/support/FeaturesUnderTest.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/saving/Saving.h"

// SavingKills SESSION COUNT SEED: COUNT times, kills a program that saves two sessions in turn to
// the same file. Whenever it dies, the file must contain one of them completely.

namespace {

constexpr int kLongestLife = 12000;  // microseconds
constexpr std::size_t kMostStrays = 1;

struct Progress {
    std::atomic<bool> withinSave;
    std::atomic<bool> failed;
    std::atomic<long> saves;
};

struct Counts {
    long withinSave = 0;
    long strays = 0;
    long lost = 0;
    long failed = 0;
};

using Sides = std::array<test::Saved, 2>;

void SaveInTurn(refhost::Plugin& plugin, const Sides& sides, const std::u16string& path,
                Progress& progress) {
    for (std::size_t turn = 0;; ++turn) {
        const auto& session = sides.at(turn % 2).session;
        progress.withinSave = true;
        const auto written = refhost::WriteSession(plugin, path, session);
        progress.withinSave = false;
        progress.failed = progress.failed || written.result != tses::SessionResult::Ok;
        ++progress.saves;
    }
}

bool IsOneOf(const Sides& sides, const std::optional<std::string>& content) {
    return content == sides[0].bytes || content == sides[1].bytes;
}

Counts KillAgainAndAgain(refhost::Plugin& plugin, const Sides& sides, const std::string& folder,
                         long count, unsigned seed, Progress& progress) {
    const std::string path = folder + "/song.orvo";
    const std::u16string path16 = kelcore::PathFromBytes(path);
    std::mt19937 random(seed);
    std::uniform_int_distribution<useconds_t> lifeTime(0, kLongestLife);
    Counts counts;
    for (long i = 0; i < count; ++i) {
        progress.withinSave = false;
        const long before = progress.saves;
        const pid_t saver = test::Begin([&] { SaveInTurn(plugin, sides, path16, progress); });
        while (i == 0 && progress.saves == before && !progress.failed) {
            usleep(100);  // until the file exists
        }
        usleep(lifeTime(random));
        kill(saver, SIGKILL);
        const int status = test::End(saver);
        counts.failed += !WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL ? 1 : 0;
        counts.withinSave += progress.withinSave ? 1 : 0;
        counts.lost += IsOneOf(sides, test::ContentOf(path)) ? 0 : 1;
        const std::size_t strays = test::CountStrays(folder);
        counts.strays += strays > 0 ? 1 : 0;
        counts.failed += strays > kMostStrays ? 1 : 0;
    }
    const auto last = refhost::WriteSession(plugin, path16, sides[0].session);
    counts.failed += last.result != tses::SessionResult::Ok ? 1 : 0;
    counts.lost += test::ContentOf(path) == sides[0].bytes ? 0 : 1;
    return counts;
}

int Run(const std::string& example, long count, unsigned seed) {
    test::UseFeaturesUnderTest();
    refhost::Plugin plugin;
    const auto session = test::SessionOf(plugin, example);
    const test::TemporaryFolder folder;
    const Sides sides{test::SaveInPeace(plugin, session, folder.Path()),
                      test::SaveInPeace(plugin, test::WithMoreFiles(session, 20), folder.Path())};
    const test::Shared<Progress> progress;
    const Counts counts = KillAgainAndAgain(plugin, sides, folder.Path(), count, seed, *progress);
    const std::size_t strays = test::CountStrays(folder.Path());
    std::printf(
        "saving_kills: %ld kills, %ld within a save, %ld left a stray for the next save to remove, "
        "%ld complete saves, %ld files lost, %ld saves failed, %zu temporary files at the end\n",
        count, counts.withinSave, counts.strays, progress->saves.load(), counts.lost,
        counts.failed + (progress->failed ? 1 : 0), strays);
    const bool isTrial = counts.withinSave * 4 >= count && counts.strays > 0;
    return isTrial && counts.lost == 0 && counts.failed == 0 && !progress->failed && strays == 0
               ? 0
               : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: SavingKills SESSION COUNT SEED\n");
        return 2;
    }
    return Run(argv[1], std::atol(argv[2]), static_cast<unsigned>(std::atol(argv[3])));
}
