#include <grp.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/kelcore/Paths.h"
#include "tests/support/FeaturesUnderTest.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/saving/Saving.h"
#include "tests/trust/saving/SavingScenarios.h"
#include "tests/trust/saving/SystemFaults.h"

// SavingFaults SESSION: saves a session over another while one system call goes wrong: each call,
// in each way, in each scenario, in its own process. Afterwards the file must be the old one or the
// new one, as the result says, and the next save must remove everything else.

namespace {

using test::Extent;
using test::Fault;
using test::Wrong;

constexpr std::size_t kFewestCases = 300;  // per scenario

/// What the saving process reports to the judging one.
struct Report {
    bool ended;
    bool succeeded;
    bool saidWhy;
    bool saidInPlace;
    std::size_t openBefore;
    std::size_t openAfter;
};

struct Sides {
    test::Saved old;
    test::Saved next;
};

std::size_t OpenDescriptors() {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

void GiveUpPrivileges() {
    constexpr uid_t kNobody = 65534;
    if (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0) {
        throw std::runtime_error("cannot drop privileges");
    }
}

std::vector<std::string> SaveAndReport(refhost::Plugin& plugin, const std::string& path,
                                       const orvo::Session& session, const Fault& fault,
                                       Report& report) {
    report.openBefore = OpenDescriptors();
    test::BeginFaults(fault);
    const auto written = refhost::WriteSession(plugin, kelcore::PathFromBytes(path), session);
    std::vector<std::string> calls = test::EndFaults();
    report.openAfter = OpenDescriptors();
    report.succeeded = written.result == tses::SessionResult::Ok;
    report.saidWhy = written.messages.size() == 1;
    report.saidInPlace =
        report.saidWhy && written.messages[0].find("is in place") != std::string::npos;
    report.ended = true;
    return calls;
}

/// The ways in which a call can fail.
std::vector<Fault> FaultsOf(const std::string& call, std::size_t at) {
    std::vector<Fault> faults;
    std::vector<int> errors{EIO, ENOSPC, EDQUOT, ENOMEM};
    if (call == "openat") {
        errors.push_back(EMFILE);
    }
    for (const int error : errors) {
        for (const Extent extent : {Extent::Once, Extent::SameName, Extent::All}) {
            faults.push_back({Wrong::Fails, error, extent, at});
        }
    }
    faults.push_back({Wrong::Fails, EINTR, Extent::Once, at});
    faults.push_back({Wrong::DiesBefore, 0, Extent::Once, at});
    faults.push_back({Wrong::DiesAfter, 0, Extent::Once, at});
    if (call == "write") {
        faults.push_back({Wrong::DoesHalf, 0, Extent::Once, at});
        faults.push_back({Wrong::DoesHalf, 0, Extent::SameName, at});
        faults.push_back({Wrong::DoesNothing, 0, Extent::Once, at});
    }
    if (call == "renameat") {
        faults.push_back({Wrong::FailsAfterwards, EIO, Extent::Once, at});
        faults.push_back({Wrong::FailsAfterwards, EINTR, Extent::Once, at});
    }
    return faults;
}

std::string Describe(const Fault& fault) {
    static const char* const kWrongs[] = {
        "nothing is wrong", "fails",      "fails having done its work", "does half", "does nothing",
        "is never reached", "is the last"};
    static const char* const kExtents[] = {"", ", as do all of its name", ", as do all"};
    return std::string(kWrongs[static_cast<int>(fault.wrong)]) +
           (fault.error != 0 ? std::string(" with ") + strerrorname_np(fault.error) : "") +
           kExtents[static_cast<int>(fault.extent)];
}

/// Runs all cases of one scenario.
class Trial {
public:
    Trial(refhost::Plugin& plugin, const Sides& sides, const test::Scenario& scenario,
          const std::string& folder)
        : plugin_(plugin), sides_(sides), scenario_(scenario), stage_(folder, scenario) {}

    void Run() {
        const std::vector<std::string> calls = CallsInPeace();
        CheckOrder(calls);
        for (std::size_t at = 0; at < calls.size(); ++at) {
            for (const Fault& fault : FaultsOf(calls[at], at)) {
                case_ = calls[at] + " (call " + std::to_string(at) + ") " + Describe(fault);
                Try(fault, calls[at]);
            }
        }
        std::printf("%s: %zu calls in a save, %zu cases\n", scenario_.name, calls.size(), cases_);
        case_ = "all";
        Expect(cases_ >= kFewestCases, "too few cases");
    }

    std::size_t Cases() const { return cases_; }
    std::size_t Kills() const { return kills_; }
    std::size_t Problems() const { return problems_; }

private:
    void Expect(bool holds, const char* otherwise) {
        if (!holds) {
            ++problems_;
            std::printf("%s: %s: %s\n", scenario_.name, case_.c_str(), otherwise);
        }
    }

    /// The calls of an undisturbed save, in a child process like all saves.
    std::vector<std::string> CallsInPeace() {
        constexpr std::size_t kMostCalls = 200;
        constexpr std::size_t kLongestName = 16;
        struct Names {
            std::size_t count;
            char text[kMostCalls][kLongestName];
        };
        const test::Shared<Names> names;
        case_ = "undisturbed";
        Prepare();
        const int status = Save([&] {
            const std::vector<std::string> calls =
                SaveAndReport(plugin_, stage_.Path(), sides_.next.session, {}, *report_);
            names->count = std::min(calls.size(), kMostCalls);
            for (std::size_t i = 0; i < names->count; ++i) {
                calls[i].copy(names->text[i], kLongestName - 1);
            }
        });
        JudgeEnd(status);
        Expect(report_->succeeded, "the save fails");
        kept_ = stage_.PropertiesOfFile();
        Expect(!scenario_.hasOld || !scenario_.isPrivileged || kept_ == before_,
               "the file lost a property");
        return {names->text, names->text + names->count};
    }

    /// The bytes must reach the disk before the rename, and the rename before the save ends.
    void CheckOrder(const std::vector<std::string>& calls) {
        std::vector<std::string> order;
        for (const std::string& call : calls) {
            if (call == "write" || call == "fsync" || call == "renameat" || call == "syncfs") {
                order.push_back(call);
            }
        }
        const char* const last = scenario_.isReadable ? "fsync" : "syncfs";
        Expect(order == std::vector<std::string>{"write", "fsync", "renameat", last},
               "the calls come in another order");
    }

    void Prepare() {
        stage_.Prepare(sides_.old.bytes);
        before_ = stage_.PropertiesOfFile();
        *report_ = Report{};
    }

    template <class Work>
    int Save(Work work) {
        return test::End(test::Begin([&] {
            if (!scenario_.isPrivileged) {
                GiveUpPrivileges();
            }
            work();
        }));
    }

    void Try(const Fault& fault, const std::string& call) {
        ++cases_;
        Prepare();
        const int status = Save(
            [&] { SaveAndReport(plugin_, stage_.Path(), sides_.next.session, fault, *report_); });
        const bool isKilled = fault.wrong == Wrong::DiesBefore || fault.wrong == Wrong::DiesAfter;
        kills_ += isKilled ? 1U : 0U;
        if (isKilled) {
            Expect(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL, "it was not killed");
        } else {
            JudgeEnd(status);
            JudgeResult();
            JudgeStrays(fault, call);
        }
        JudgeFile();
        SaveOnceMore();
    }

    void JudgeEnd(int status) {
        Expect(status == 0 && report_->ended, "the saver crashed");
        Expect(report_->openAfter == report_->openBefore, "a descriptor stays open");
    }

    void JudgeResult() {
        const auto content = test::ContentOf(stage_.File());
        if (report_->succeeded) {
            Expect(content == sides_.next.bytes, "it claims a save that did not happen");
        } else {
            Expect(report_->saidWhy, "it gives no reason");
            Expect((content == sides_.next.bytes) == report_->saidInPlace,
                   "it does not say which content is in place");
        }
    }

    /// A save may leave its own file only if removing it fails. It should also remove leftovers of
    /// others, at the latest on the next save.
    void JudgeStrays(const Fault& fault, const std::string& call) {
        const bool canRemove = call == "unlinkat"
                                   ? fault.extent == Extent::Once && fault.error == EINTR
                                   : fault.extent != Extent::All && !scenario_.hasStray;
        if (canRemove) {
            Expect(stage_.Strays() == 0, "it leaves a temporary file");
        }
    }

    void JudgeFile() {
        const auto content = test::ContentOf(stage_.File());
        const bool isNew = content == sides_.next.bytes;
        const bool isOld = scenario_.hasOld ? content == sides_.old.bytes : !content;
        Expect(isNew || isOld, "the file is lost");
        Expect(!isNew || stage_.PropertiesOfFile() == kept_, "the file lost a property");
        Expect(isNew || stage_.PropertiesOfFile() == before_, "the old file changed");
        Expect(stage_.IsSurroundingKept(), "something else changed");
    }

    void SaveOnceMore() {
        const auto path = kelcore::PathFromBytes(stage_.Path());
        const auto written = refhost::WriteSession(plugin_, path, sides_.old.session);
        Expect(written.result == tses::SessionResult::Ok, "the next save fails");
        Expect(test::ContentOf(stage_.File()) == sides_.old.bytes,
               "the next save did not replace the file");
        Expect(stage_.IsTidy(), "the next save leaves other files");
    }

    refhost::Plugin& plugin_;
    const Sides& sides_;
    test::Scenario scenario_;
    test::Stage stage_;
    test::Shared<Report> report_;
    test::Properties before_;
    test::Properties kept_;
    std::string case_;
    std::size_t cases_ = 0;
    std::size_t kills_ = 0;
    std::size_t problems_ = 0;
};

int Run(const std::string& example) {
    test::UseFeaturesUnderTest();
    refhost::Plugin plugin;
    const auto session = test::SessionOf(plugin, example);
    const test::TemporaryFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
    const std::string peaceful = folder / "peace";  // as deep as the folders of the scenarios
    std::filesystem::create_directory(peaceful);
    const Sides sides{test::SaveInPeace(plugin, session, peaceful),
                      test::SaveInPeace(plugin, test::WithMoreFiles(session, 5), peaceful)};
    std::size_t cases = 0;
    std::size_t kills = 0;
    std::size_t problems = 0;
    for (const test::Scenario& scenario : test::Scenarios()) {
        Trial trial(plugin, sides, scenario, folder.Path());
        trial.Run();
        cases += trial.Cases();
        kills += trial.Kills();
        problems += trial.Problems();
    }
    std::printf("saving_faults: %zu cases, %zu of them kills, %zu problems\n", cases, kills,
                problems);
    return problems == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: SavingFaults SESSION\n");
        return 2;
    }
    return Run(argv[1]);
}
