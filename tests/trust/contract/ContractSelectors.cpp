#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "host/Bases.h"
#include "platform/kelcore/Paths.h"
#include "reference_host/FileReference.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/PluginLibrary.h"
#include "reference_host/SessionNode.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/contract/Contract.h"

// Compares the selectors, in every order and with every kind of argument, with a model of them.

namespace test {
namespace {

using refhost::Ref;

enum class Argument { Null, Valid };

struct Call {
    int selector = 0;
    Argument argument = Argument::Valid;
};

std::string NameOf(const std::vector<Call>& calls) {
    std::string name = "selectors";
    for (const Call& call : calls) {
        name += " " + std::to_string(call.selector);
        name += call.argument == Argument::Null ? " (null)" : "";
    }
    return name;
}

/// A minimal model of the selectors.
class Model {
public:
    int Result(const Call& call) {
        if (call.selector < 0 || call.selector > 5) {
            return -2;
        }
        const bool wantsArgument = call.selector != 1 && call.selector != 2;
        if (wantsArgument && call.argument == Argument::Null) {
            return -6;
        }
        switch (call.selector) {
            case 0:
                phase_ = Phase::Ready;
                return 0;
            case 2:
                phase_ = Phase::Terminated;
                return 0;
            case 3:
                hasPath_ = true;
                return 0;
            case 4:
                return Worked(-4);
            case 5:
                written_ = written_ || IsDone();
                return Worked(-10);
            default:
                return 0;
        }
    }

    bool HasWritten() const { return written_; }

private:
    enum class Phase { Before, Ready, Terminated };

    bool IsDone() const { return phase_ == Phase::Ready && hasPath_; }
    int Worked(int failure) const { return phase_ == Phase::Before || IsDone() ? 0 : failure; }

    Phase phase_ = Phase::Before;
    bool hasPath_ = false;
    bool written_ = false;
};

constexpr std::string_view kEmptyDocument = "<orvo/>";

class Host {
public:
    explicit Host(const refhost::PluginLibrary& library)
        : library_(library), file_(folder_.Write("a.orvo", kEmptyDocument)) {}

    int Answer(const Call& call) {
        if (call.argument == Argument::Null) {
            return library_.Call(call.selector, nullptr);
        }
        switch (call.selector) {
            case 3: {
                const auto reference = Ref<refhost::FileReference>::Adopt(
                    new refhost::FileReference(kelcore::PathFromBytes(file_.string())));
                return library_.Call(3, static_cast<tses::IHostFileRef*>(reference.Get()));
            }
            case 4:
                return library_.Call(4, &session_->Edit());
            case 5:
                return library_.Call(5, &session_->Query());
            default:
                return library_.Call(call.selector,
                                     static_cast<tses::IPlugInRegistrar*>(registrar_.get()));
        }
    }

    bool IsWritten() const {
        std::ifstream file(file_);
        return std::string(std::istreambuf_iterator<char>(file), {}) != kEmptyDocument;
    }

private:
    const refhost::PluginLibrary& library_;
    TemporaryFolder folder_;
    std::filesystem::path file_;
    tses::Owned<tses::PlugInRegistrarBase> registrar_ =
        tses::MakeOwned<tses::PlugInRegistrarBase>();
    Ref<refhost::SessionNode> session_ = refhost::SessionNode::Make();
};

void Play(const refhost::PluginLibrary& library, const std::vector<Call>& calls,
          std::vector<std::string>& problems) {
    Model model;
    Host host(library);
    for (const Call& call : calls) {
        const int expected = model.Result(call);
        const int result = host.Answer(call);
        if (result != expected) {
            problems.push_back("selector " + std::to_string(call.selector) + " gives " +
                               std::to_string(result) + " for " + std::to_string(expected));
        }
    }
    if (host.IsWritten() != model.HasWritten()) {
        problems.emplace_back("the file contradicts the results");
    }
    library.Call(1, nullptr);
}

std::vector<std::string> Play(const refhost::PluginLibrary& library,
                              const std::vector<Call>& calls) {
    std::vector<std::string> problems;
    Play(library, calls, problems);
    if (refhost::LiveNodes() != 0) {
        problems.emplace_back("host objects leak");
    }
    return problems;
}

/// All sequences of the given length over the valid selectors.
std::vector<std::vector<Call>> Sequences(std::size_t length) {
    std::vector<std::vector<Call>> sequences = {{}};
    for (std::size_t i = 0; i < length; ++i) {
        std::vector<std::vector<Call>> longer;
        for (const std::vector<Call>& sequence : sequences) {
            for (int selector = 0; selector <= 5; ++selector) {
                longer.push_back(sequence);
                longer.back().push_back({selector});
            }
        }
        sequences = std::move(longer);
    }
    return sequences;
}

/// A single call with any number before, during and after the life of the plug-in, and a follow-up.
std::vector<std::vector<Call>> SingleCalls() {
    const std::vector<std::vector<Call>> phases = {{}, {{0}, {3}}, {{0}, {3}, {2}}};
    std::vector<std::vector<Call>> sequences;
    for (const std::vector<Call>& phase : phases) {
        for (int selector = -10; selector <= 20; ++selector) {
            for (const Argument argument : {Argument::Null, Argument::Valid}) {
                std::vector<Call>& sequence = sequences.emplace_back(phase);
                sequence.push_back({selector, argument});
                sequence.insert(sequence.end(), {{4}, {5}});
            }
        }
    }
    return sequences;
}

}  // namespace

Tally RunSelectors(const Options& options) {
    // Loaded here but used only in the children.
    const refhost::PluginLibrary library(refhost::DefaultPluginPath());
    std::vector<std::vector<Call>> sequences = SingleCalls();
    for (std::size_t length = 1; length <= 4; ++length) {
        const auto more = Sequences(length);
        sequences.insert(sequences.end(), more.begin(), more.end());
    }
    std::vector<Case> cases;
    for (const std::vector<Call>& calls : sequences) {
        cases.push_back({NameOf(calls), [&library, calls] { return Play(library, calls); }});
    }
    return RunCases(EachNth(cases, options.stride));
}

}  // namespace test
