#include <algorithm>
#include <set>

#include "host/Registration.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/CountedObject.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/Ref.h"
#include "reference_host/SessionNode.h"
#include "tests/trust/contract/ContractRequests.h"

// A host with abnormal texts, in one operation at a time, and a host whose file has an abnormal
// name.

namespace test {
namespace {

using refhost::CallDecision;
using refhost::CallRecord;
using refhost::Ref;
using tses::SessionResult;

/// A text that reports whatever a test wants.
class OddString final : public refhost::CountedObject<tses::IHostString> {
public:
    OddString(const kelcore::char16* data, kelcore::uint32 length) : data_(data), length_(length) {}

    void UnusedSlot3() override {}
    const kelcore::char16* GetData() override { return data_; }
    kelcore::uint32 GetLength() override { return length_; }

private:
    const kelcore::char16* data_;
    kelcore::uint32 length_;
};

struct OddText {
    const char* name;
    std::u16string content;  ///< what GetData points to
    bool hasData = true;
    kelcore::uint32 length = 0;  ///< what GetLength returns
    SessionResult result = SessionResult::Ok;
    bool isLong = false;
    std::u16string stored{};  ///< what a file keeps of it
};

OddText Whole(const char* name, std::u16string content, std::u16string stored) {
    const auto length = static_cast<kelcore::uint32>(content.size());
    return {
        .name = name, .content = std::move(content), .length = length, .stored = std::move(stored)};
}

const std::vector<OddText>& OddTexts() {
    using namespace std::string_literals;
    static const std::vector<OddText> texts = {
        {.name = "no data, no length", .content = {}, .hasData = false},
        {.name = "no data of length 5", .content = {}, .hasData = false, .length = 5},
        {.name = "less than there is", .content = u"abcdef", .length = 3, .stored = u"abc"},
        {.name = "a length of 4294967295",
         .content = u"abc",
         .length = 0xFFFFFFFF,
         .result = SessionResult::WriteFailed},
        {.name = "a length of 2147483647",
         .content = u"abc",
         .length = 0x7FFFFFFF,
         .result = SessionResult::WriteFailed},
        Whole("NULs", u"a\0b\0"s,
              u"a\xFFFD"
              u"b\xFFFD"),
        Whole("only a NUL", u"\0"s, u"\xFFFD"),
        Whole("a high surrogate alone", u"a\xD83D", u"a\xFFFD"),
        Whole("a low surrogate alone",
              u"\xDE00"
              u"a",
              u"\xFFFD"
              u"a"),
        Whole("surrogates the wrong way round", u"\xDE00\xD83D", u"\xFFFD\xFFFD"),
        Whole("non-characters", u"\xFFFE\xFFFF", u"\xFFFD\xFFFD"),
        {.name = "a million units",
         .content = std::u16string(1000000, u'x'),
         .length = 1000000,
         .isLong = true,
         .stored = std::u16string(1000000, u'x')},
    };
    return texts;
}

Ref<OddString> Make(const OddText& text) {
    return Ref<OddString>::Adopt(
        new OddString(text.hasData ? text.content.data() : nullptr, text.length));
}

/// Answers one operation with the text: always, or only once if the text is long.
class TextFault {
public:
    TextFault(std::string operation, OddString& string, bool once)
        : operation_(std::move(operation)), string_(string), once_(once) {}

    CallDecision operator()(const CallRecord& call) {
        if (call.interfaceName + "." + std::string(call.operation) != operation_ ||
            (once_ && isDone_)) {
            return CallDecision::Forward();
        }
        isDone_ = true;
        return CallDecision::ReturnText(string_);
    }

private:
    std::string operation_;
    OddString& string_;
    bool once_;
    bool isDone_ = false;
};

std::set<std::string> TextOperations(const Request& request) {
    std::set<std::string> operations;
    for (const HostCall& call : request.Calls()) {
        if (call.returnsText) {
            operations.insert(call.Name());
        }
    }
    return operations;
}

std::vector<std::string> Save(const Request& request, const std::string& operation,
                              const OddText& text) {
    const auto string = Make(text);
    const bool isKnownPlace = operation == "IQuerySession.GetInputDeviceId";
    return request.Disturb(
        TextFault(operation, *string, text.isLong), text.result,
        [&](const orvo::Session& session) -> std::vector<std::string> {
            if (isKnownPlace &&
                kelcore::UTF8to16(session.audioDevice.inputDeviceId) != text.stored) {
                return {"a different text comes back"};
            }
            return {};
        });
}

class OddFileReference final : public refhost::CountedObject<tses::IHostFileRef> {
public:
    explicit OddFileReference(OddString& path) : path_(path) {}

    void UnusedSlot3() override {}
    tses::IHostString* GetPath() override { return &path_; }

private:
    OddString& path_;
};

/// No file can have such a name or be created under it, so nothing is read or written. The next
/// request must work.
std::vector<std::string> NameFile(refhost::Plugin& plugin, const Options& options,
                                  const OddText& text) {
    std::vector<std::string> problems;
    const TemporaryFolder folder;
    std::filesystem::current_path(folder.Path());
    const std::size_t liveNodes = refhost::LiveNodes();
    {
        const auto string = Make(text);
        const auto reference = Ref<OddFileReference>::Adopt(new OddFileReference(*string));
        const auto session = refhost::SessionNode::Make();
        const int named = plugin.Call(3, static_cast<tses::IHostFileRef*>(reference.Get()));
        if (named != (text.result == SessionResult::Ok ? 0 : -4)) {
            problems.push_back("naming the file returns " + std::to_string(named));
        }
        if (plugin.Call(4, &session->Edit()) != -4) {
            problems.emplace_back("the read succeeds");
        }
    }
    if (refhost::LiveNodes() != liveNodes) {
        problems.emplace_back("host objects leak");
    }
    const auto path = kelcore::PathFromBytes((options.goldenFolder / "everything.orvo").string());
    if (refhost::ReadSession(plugin, path).result != SessionResult::Ok) {
        problems.emplace_back("the next request fails");
    }
    return problems;
}

}  // namespace

Tally RunTexts(const Options& options) {
    const TemporaryFolder folder;
    refhost::Plugin plugin;
    const std::vector<Request> requests = Requests(plugin, options, folder);
    std::vector<Case> cases;
    for (const OddText& text : OddTexts()) {
        for (const Request& request : requests) {
            for (const std::string& operation :
                 request.IsWrite() ? TextOperations(request) : std::set<std::string>()) {
                cases.push_back(
                    {request.Name() + ", " + operation + " returns " + text.name,
                     [&request, operation, &text] { return Save(request, operation, text); }});
            }
        }
        cases.push_back({std::string("a file name: ") + text.name,
                         [&plugin, &options, &text] { return NameFile(plugin, options, text); }});
    }
    return RunCases(EachNth(cases, options.stride));
}

}  // namespace test
