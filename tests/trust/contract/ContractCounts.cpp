#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>

#include "platform/kelcore/Paths.h"
#include "reference_host/recorder/Operations.h"
#include "tests/trust/contract/ContractRequests.h"

// A host that reports impossible numbers: in every operation that returns one, above all in the
// lengths of lists that have no items.

namespace test {
namespace {

using refhost::CallDecision;
using refhost::CallRecord;
using tses::SessionResult;

constexpr std::uint64_t kItems = 16777216;
constexpr std::uint64_t kChannels = 1024;
constexpr std::uint64_t kBlockBytes = 1073741824;
constexpr std::uint64_t kBeats = 100000;  // their names fit into one tag

/// The operation that returns the length of a list, the longest accepted length, and the operations
/// that return its items.
struct List {
    std::string_view length;
    std::uint64_t longest;
    std::vector<std::string_view> items;
};

const std::vector<List>& Lists() {
    static const std::vector<List> lists = {
        {"IQuerySession.GetFileCount", kItems, {"IQuerySession.GetFile"}},
        {"IQuerySession.GetVideoTrackCount", kItems, {"IQuerySession.GetVideoTrack"}},
        {"IQuerySession.GetAudioTrackCount", kItems, {"IQuerySession.GetAudioTrack"}},
        {"IQuerySession.GetTrackVisibilityPresetCount",
         kItems,
         {"IQuerySession.GetTrackVisibilityPreset"}},
        {"IQuerySession.GetInputPortCount",
         kItems,
         {"IQuerySession.GetInputPortId", "IQuerySession.GetInputPortName"}},
        {"IQuerySession.GetOutputPortCount",
         kItems,
         {"IQuerySession.GetOutputPortId", "IQuerySession.GetOutputPortName"}},
        {"IQuerySession.GetClipGroupCount", kItems, {"IQuerySession.GetClipGroup"}},
        {"IQueryAudioTrack.GetClipCount", kItems, {"IQueryAudioTrack.GetClip"}},
        {"IQueryAudioTrackPrivate.GetEditParameterCount",
         kItems,
         {"IQueryAudioTrackPrivate.GetEditParameter"}},
        {"IQueryVideoTrack.GetVideoClipCount", kItems, {"IQueryVideoTrack.GetVideoClip"}},
        {"IQueryTrackVisibilityPreset.GetTrackCount",
         kItems,
         {"IQueryTrackVisibilityPreset.GetTrack"}},
        {"IQuerySendList.GetSlotCount", kItems, {"IQuerySendList.GetSlot"}},
        {"IQueryAudioClip.GetTakeCount", kItems, {"IQueryAudioClip.GetTakeSourceInPoint"}},
        {"IQueryAudioClip.GetEditParameterCount", kItems, {"IQueryAudioClip.GetEditParameter"}},
        {"IQueryAudioClip.GetChannelCount", kChannels, {"IQueryAudioClip.GetChannelSource"}},
        {"IQueryMIDIClip.GetMIDIEventsSize", kBlockBytes, {"IQueryMIDIClip.GetMIDIEvents"}},
        {"IQueryMIDIClipList.GetCount", kItems, {"IQueryMIDIClipList.GetClip"}},
        {"IQueryGlobalTrackInfo.GetTempoEventsSize",
         kBlockBytes,
         {"IQueryGlobalTrackInfo.GetTempoEvents"}},
        {"IQueryGlobalTrackInfo.GetTimeSignatureEventsSize",
         kBlockBytes,
         {"IQueryGlobalTrackInfo.GetTimeSignatureEvents"}},
        {"IQueryGlobalTrackInfo.GetKeySignatureEventsSize",
         kBlockBytes,
         {"IQueryGlobalTrackInfo.GetKeySignatureEvents"}},
        {"IQueryClipGroup.GetItemCount", kItems, {"IQueryClipGroup.GetItem"}},
        {"IQueryComponent.GetParameterCount", kItems, {"IQueryComponent.GetParameterValue"}},
        {"IQueryComponent.GetPresetChunkSize", kBlockBytes, {"IQueryComponent.GetPresetChunk"}},
        {"IQueryEffectsSlot.GetInputChannelCount",
         kChannels,
         {"IQueryEffectsSlot.GetInputChannel"}},
        {"IQueryEffectsSlot.GetOutputChannelCount",
         kChannels,
         {"IQueryEffectsSlot.GetOutputChannel"}},
        {"IQueryEffectsRack.GetSlotCount",
         kItems,
         {"IQueryEffectsRack.GetSlotIndex", "IQueryEffectsRack.GetSlot"}},
        {"IQueryAutomationLane.GetKeyframeCount", kItems, {"IQueryAutomationLane.GetKeyframe"}},
        {"IQueryMetronomeInfo.GetPatternLength", kBeats, {"IQueryMetronomeInfo.GetPatternBeat"}},
        {"IQueryProperties.GetCount",
         kItems,
         {"IQueryProperties.GetKey", "IQueryProperties.GetValue"}},
    };
    return lists;
}

const List* ListOf(const std::string& length) {
    for (const List& list : Lists()) {
        if (list.length == length) {
            return &list;
        }
    }
    return nullptr;
}

/// The answer of an item's operation if there is no item.
CallDecision Nothing(std::string_view name) {
    for (const refhost::HostOperation& operation : refhost::HostOperations()) {
        if (std::string(operation.interfaceName) + "." + std::string(operation.name) == name) {
            return operation.returnsObject ? CallDecision::ReturnNull()
                                           : CallDecision::ReturnNumber(0);
        }
    }
    throw std::invalid_argument(std::string(name) + " is no operation");
}

/// Falsifies the number of one operation, once or always, and returns no items for lists.
class NumberFault {
public:
    NumberFault(const HostCall& operation, std::uint64_t number, bool once)
        : operation_(operation.Name()), number_(number), once_(once) {
        if (const List* const list = ListOf(operation_)) {
            for (const std::string_view item : list->items) {
                items_.emplace(item, Nothing(item));
            }
        }
    }

    CallDecision operator()(const CallRecord& call) {
        const std::string name = call.interfaceName + "." + std::string(call.operation);
        if (name == operation_ && (!once_ || objects_.empty())) {
            objects_.insert(call.objectNumber);
            return CallDecision::ReturnNumber(number_);
        }
        const auto item = items_.find(name);
        return item != items_.end() && objects_.contains(call.objectNumber)
                   ? item->second
                   : CallDecision::Forward();
    }

private:
    std::string operation_;
    std::map<std::string, CallDecision, std::less<>> items_;
    std::uint64_t number_;
    bool once_;
    std::set<std::uint64_t> objects_;  // that returned the number
};

/// One call of each operation that returns a number to a write.
std::vector<HostCall> NumberOperations(const Request& request) {
    std::vector<HostCall> operations;
    std::set<std::string> known;
    for (const HostCall& call : request.Calls()) {
        if (call.returnsNumber && known.insert(call.Name()).second) {
            operations.push_back(call);
        }
    }
    return operations;
}

SessionResult ResultOf(const HostCall& operation, std::uint64_t number) {
    const List* const list = ListOf(operation.Name());
    return list != nullptr && number > list->longest ? SessionResult::WriteFailed
                                                     : SessionResult::Ok;
}

/// Checks that `work` stays within the time and the memory that a host would tolerate.
std::vector<std::string> Bounded(const Options& options,
                                 const std::function<std::vector<std::string>()>& work) {
    constexpr double kSeconds = 2;
    constexpr long kKibibytes = 1024L * 1024;
    const long memoryBefore = ResidentKibibytes();
    const double begin = ComputedSeconds();
    std::vector<std::string> problems = work();
    const double seconds = ComputedSeconds() - begin;
    const long kibibytes = PeakKibibytes() - memoryBefore;
    const auto factor = static_cast<long>(options.factor);
    if (seconds > kSeconds * static_cast<double>(factor)) {
        problems.push_back("took " + std::to_string(seconds) + " s");
    }
    if (kibibytes > kKibibytes * factor) {
        problems.push_back("took " + std::to_string(kibibytes) + " KiB");
    }
    return problems;
}

/// Lists for which every item exists, so that all of them are written.
bool HasAllItems(const HostCall& operation) {
    constexpr std::string_view kLengths[] = {
        "IQueryAudioClip.GetTakeCount",     "IQueryAutomationLane.GetKeyframeCount",
        "IQueryClipGroup.GetItemCount",     "IQueryMetronomeInfo.GetPatternLength",
        "IQueryProperties.GetCount",        "IQuerySession.GetInputPortCount",
        "IQuerySession.GetOutputPortCount", "IQueryTrackVisibilityPreset.GetTrackCount"};
    return std::ranges::find(kLengths, operation.Name()) != std::end(kLengths);
}

/// The "no id" value denotes a track that the host does not know.
bool IsNoTrack(const HostCall& operation, std::uint64_t number) {
    return operation.Name() == "IQueryAudioTrackPrivate.GetId" && number == 0xFFFFFFFF;
}

void AddNumberCase(const Options& options, const Request& request, const HostCall& operation,
                   std::uint64_t number, bool once, std::vector<Case>& cases) {
    if (IsNoTrack(operation, number)) {
        return;
    }
    cases.push_back(
        {request.Name() + ", " + operation.Name() + " returns " + std::to_string(number),
         [&options, &request, operation, number, once] {
             return Bounded(options, [&] {
                 return request.Disturb(NumberFault(operation, number, once),
                                        ResultOf(operation, number));
             });
         }});
}

void AddNumberCases(const Options& options, const Request& request, std::vector<Case>& cases) {
    for (const HostCall& operation : NumberOperations(request)) {
        AddNumberCase(options, request, operation, 0xFFFFFFFF, false, cases);
        AddNumberCase(options, request, operation, 0x7FFFFFFF, false, cases);
        AddNumberCase(options, request, operation, HasAllItems(operation) ? 100000 : 1000000, true,
                      cases);
    }
}

/// A document that contains a number, and the expected result of saving it again.
struct StoredNumber {
    const char* name;
    std::string document;
    SessionResult saved;
};

std::string InComponent(const std::string& content) {
    return "<orvo><session><tracks><masterTrack id='1'><trackAudioParameters>"
           "<component id='trackFader'>" +
           content + "</component></trackAudioParameters></masterTrack></tracks></session></orvo>";
}

std::string InClip(const std::string& content) {
    return "<orvo><session><tracks><audioTrack id='1'><audioClip id='1'>" + content +
           "</audioClip></audioTrack></tracks></session></orvo>";
}

std::vector<StoredNumber> StoredNumbers() {
    const auto parameter = [](const std::string& index) {
        return InComponent("<parameter index='" + index + "' parameterValue='1'>" +
                           "<parameterKeyframes><parameterKeyframe/></parameterKeyframes>" +
                           "</parameter>");
    };
    const auto channel = [](const std::string& index) {
        return InClip("<channelMap><channel index='" + index + "'/></channelMap>");
    };
    return {
        {"parameter 4294967295", parameter("4294967295"), SessionResult::WriteFailed},
        {"parameter 4294967294", parameter("4294967294"), SessionResult::WriteFailed},
        {"parameter 1000000", parameter("1000000"), SessionResult::Ok},
        {"channel 4294967295", channel("4294967295"), SessionResult::WriteFailed},
        {"channel 1024", channel("1024"), SessionResult::WriteFailed},
        {"channel 1023", channel("1023"), SessionResult::Ok},
        {"edited parameter 4294967294 of slot 4294967294",
         InClip("<editParameter slotIndex='4294967294' parameterIndex='4294967294'/>"),
         SessionResult::Ok},
        {"slot 4294967295 with channel 2147483647",
         InClip("<effectsRack><slot slotIndex='4294967295'><component><channelMap direction='in'>"
                "<channel index='2147483647' sourceIndex='2147483647'/></channelMap></component>"
                "</slot></effectsRack>"),
         SessionResult::Ok},
    };
}

std::vector<std::string> ReadAndSave(refhost::Plugin& plugin, const StoredNumber& stored) {
    const TemporaryFolder folder;
    const auto path = [&](const std::filesystem::path& file) {
        return kelcore::PathFromBytes(file.string());
    };
    const auto source = path(folder.Write("source.orvo", stored.document));
    const refhost::ReadResult read = refhost::ReadSession(plugin, source);
    if (read.result != SessionResult::Ok) {
        return {"the document is not read"};
    }
    const auto written = refhost::WriteSession(plugin, path(folder / "target.orvo"), read.session);
    std::vector<std::string> problems;
    if (written.result != stored.saved) {
        problems.push_back("saving returns " + std::to_string(static_cast<int>(written.result)));
    }
    if ((written.result == SessionResult::Ok) != written.messages.empty()) {
        problems.emplace_back("the message does not match the result");
    }
    return problems;
}

}  // namespace

Tally RunCounts(const Options& options) {
    const TemporaryFolder folder;
    refhost::Plugin plugin;
    const std::vector<Request> requests = Requests(plugin, options, folder);
    std::vector<Case> cases;
    for (const Request& request : requests) {
        if (request.IsWrite()) {
            AddNumberCases(options, request, cases);
        }
    }
    for (const StoredNumber& stored : StoredNumbers()) {
        cases.push_back(
            {std::string("a document with ") + stored.name, [&options, &plugin, stored] {
                 return Bounded(options, [&] { return ReadAndSave(plugin, stored); });
             }});
    }
    return RunCases(EachNth(cases, options.stride));
}

}  // namespace test
