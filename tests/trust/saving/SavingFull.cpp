#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/kelcore/Paths.h"
#include "tests/support/FeaturesUnderTest.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/saving/Saving.h"

// SavingFull SESSION ROUNDS: saves to a small private file system until it is full, then with every
// number of free blocks from none to plenty, ROUNDS times with sessions of different sizes. A
// failed save must leave the old file.

namespace {

constexpr int kSkipped = 77;
constexpr const char* kSize = "size=400k,nr_inodes=4";  // root, session, filler, one spare

struct Counts {
    long saves = 0;
    long failed = 0;
    long problems = 0;
};

/// A small file system that only this process sees.
class SmallFileSystem {
public:
    explicit SmallFileSystem(const std::string& folder) : folder_(folder) {
        isMounted_ = unshare(CLONE_NEWNS) == 0 &&
                     mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                     mount("small", folder.c_str(), "tmpfs", 0, kSize) == 0;
        reason_ = std::strerror(errno);
    }
    ~SmallFileSystem() {
        if (isMounted_) {
            umount2(folder_.c_str(), MNT_DETACH);
        }
    }
    SmallFileSystem(const SmallFileSystem&) = delete;
    SmallFileSystem& operator=(const SmallFileSystem&) = delete;

    bool IsMounted() const { return isMounted_; }
    const std::string& Reason() const { return reason_; }
    std::string operator/(const char* name) const { return folder_ + "/" + name; }
    const std::string& Folder() const { return folder_; }

    /// The number of free blocks.
    std::size_t FreeBlocks() const { return Status().f_bfree; }
    std::size_t BlockSize() const { return Status().f_bsize; }

private:
    struct statvfs Status() const {
        struct statvfs status {};
        statvfs(folder_.c_str(), &status);
        return status;
    }

    std::string folder_;
    bool isMounted_ = false;
    std::string reason_;
};

class Trial {
public:
    Trial(refhost::Plugin& plugin, const SmallFileSystem& small)
        : plugin_(plugin), small_(small), path_(small / "song.orvo") {}

    /// @returns whether the save succeeded
    bool Save(const test::Saved& next) {
        const auto before = test::ContentOf(path_);
        const auto written =
            refhost::WriteSession(plugin_, kelcore::PathFromBytes(path_), next.session);
        const bool succeeded = written.result == tses::SessionResult::Ok;
        ++counts_.saves;
        counts_.failed += succeeded ? 0 : 1;
        Expect(test::ContentOf(path_) == (succeeded ? next.bytes : before), "the file is lost");
        Expect(succeeded || !written.messages.empty(), "a failure without a reason");
        Expect(test::CountStrays(small_.Folder()) == 0, "a temporary file is left");
        return succeeded;
    }

    /// Fills the file system until `blocks` are free.
    void LeaveFree(std::size_t blocks) {
        const std::string filler = small_ / "filler";
        std::filesystem::remove(filler);
        const std::size_t taken = small_.FreeBlocks() - blocks;
        std::ofstream(filler) << std::string(taken * small_.BlockSize(), 'x');
        Expect(small_.FreeBlocks() == blocks, "the filler has the wrong size");
    }

    void LeaveAllFree() { std::filesystem::remove(small_ / "filler"); }
    void LeaveNoNewFile() { std::ofstream(small_ / "last") << ""; }
    void LeaveNewFiles() { std::filesystem::remove(small_ / "last"); }

    void Expect(bool holds, const char* otherwise) {
        if (!holds) {
            ++counts_.problems;
            std::printf("save %ld: %s\n", counts_.saves, otherwise);
        }
    }

    const Counts& Result() const { return counts_; }

private:
    refhost::Plugin& plugin_;
    const SmallFileSystem& small_;
    std::string path_;
    Counts counts_;
};

/// Saves a growing session until the new one no longer fits next to the old one.
void GrowUntilFull(Trial& trial, refhost::Plugin& plugin, const orvo::Session& session,
                   const std::string& peaceful) {
    constexpr std::size_t kStep = 100;
    constexpr std::size_t kTooMany = 10000;
    std::size_t files = 0;
    while (files < kTooMany &&
           trial.Save(test::SaveInPeace(plugin, test::WithMoreFiles(session, files), peaceful))) {
        files += kStep;
    }
    trial.Expect(files > kStep, "too little room from the start");
    trial.Expect(
        !trial.Save(test::SaveInPeace(plugin, test::WithMoreFiles(session, files), peaceful)),
        "what did not fit before fits now");
}

/// Saves with no free block, with one, and so on, until a save succeeds.
void SaveWithEveryRoom(Trial& trial, const test::Saved& old, const test::Saved& next,
                       std::size_t blockSize) {
    trial.LeaveAllFree();
    trial.Expect(trial.Save(old), "a save failed despite enough room");
    const std::size_t enough = next.bytes.size() / blockSize + 2;  // rounded up, plus one
    std::size_t blocks = 0;
    do {
        trial.LeaveFree(blocks);
    } while (!trial.Save(next) && ++blocks < enough);
    trial.Expect(blocks >= next.bytes.size() / blockSize, "a save succeeded without enough room");
    trial.Expect(blocks < enough, "a save failed with enough blocks");
}

void SaveWhereNoFileCanBeMade(Trial& trial, const test::Saved& old, const test::Saved& next) {
    trial.LeaveFree(50);
    trial.Expect(trial.Save(old), "a save failed despite enough room");
    trial.LeaveNoNewFile();
    trial.Expect(!trial.Save(next), "a save succeeded without a free inode");
    trial.LeaveNewFiles();
    trial.Expect(trial.Save(next), "a save failed although an inode is free again");
}

int Run(const std::string& example, std::size_t rounds) {
    test::UseFeaturesUnderTest();
    refhost::Plugin plugin;
    const auto session = test::SessionOf(plugin, example);
    const test::TemporaryFolder folder;
    const test::TemporaryFolder peaceful;
    const SmallFileSystem small(folder.Path());
    if (!small.IsMounted()) {
        std::printf("saving_full: skipped, cannot mount a file system: %s\n",
                    small.Reason().c_str());
        return kSkipped;
    }
    Trial trial(plugin, small);
    const auto old = test::SaveInPeace(plugin, session, peaceful.Path());
    for (std::size_t round = 0; round < rounds; ++round) {
        const auto next = test::SaveInPeace(
            plugin, test::WithMoreFiles(session, 7 + 13 * (round % 50)), peaceful.Path());
        SaveWithEveryRoom(trial, old, next, small.BlockSize());
        SaveWhereNoFileCanBeMade(trial, old, next);
        trial.LeaveAllFree();
        GrowUntilFull(trial, plugin, session, peaceful.Path());
    }
    const Counts& counts = trial.Result();
    std::printf("saving_full: %ld saves, %ld without enough room, %ld problems\n", counts.saves,
                counts.failed, counts.problems);
    return counts.failed > 0 && counts.problems == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: SavingFull SESSION ROUNDS\n");
        return 2;
    }
    return Run(argv[1], std::strtoul(argv[2], nullptr, 10));
}
