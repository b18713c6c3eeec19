#include "tests/plugin/elements/HostOutputs.h"

#include <gtest/gtest.h>

#include "reference_host/SessionNode.h"
#include "reference_host/recorder/Recorder.h"

namespace test {

std::vector<std::vector<refhost::TraceValue>> OutputsBefore(std::string_view operation,
                                                            const orvo::Session& session,
                                                            tses::Serializer& serializer,
                                                            const std::u16string& path,
                                                            std::size_t filled) {
    const auto isMeant = [operation](const refhost::CallRecord& call) {
        return call.interfaceName + "." + std::string(call.operation) == operation;
    };
    std::size_t asked = 0;
    std::vector<std::vector<refhost::TraceValue>> outputs;
    refhost::Recorder::Options options;
    options.sink = [&](const refhost::CallRecord& call) {
        if (isMeant(call) && asked > filled) {
            outputs.push_back(call.outputs);
        }
    };
    // Keeps these calls from the host, so that it does not fill the outputs.
    options.interceptor = [&](const refhost::CallRecord& call) {
        asked += isMeant(call) ? 1U : 0U;
        return isMeant(call) && asked > filled ? refhost::CallDecision::ReturnNumber(0)
                                               : refhost::CallDecision::Forward();
    };
    const auto node = refhost::SessionNode::Make(session);
    refhost::Recorder recorder(options);
    EXPECT_TRUE(serializer.Write(path, tses::Retain(&recorder.Wrap(node->Query()))));
    return outputs;
}

}  // namespace test
