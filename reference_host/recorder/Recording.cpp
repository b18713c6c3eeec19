#include "reference_host/recorder/Recording.h"

namespace refhost {

std::uint64_t Recording::NumberOf(tses::IHostObject& real) {
    return numbers_.try_emplace(&real, numbers_.size() + 1).first->second;
}

CallRecord Recording::Begin(std::string_view interfaceName, std::uint64_t objectNumber,
                            std::string_view operation) {
    CallRecord call;
    call.sequence = ++sequence_;
    call.interfaceName = interfaceName;
    call.objectNumber = objectNumber;
    call.operation = operation;
    return call;
}

CallDecision Recording::Decide(const CallRecord& call) const {
    return options_.interceptor ? options_.interceptor(call) : CallDecision::Forward();
}

void Recording::Report(const CallRecord& call) const {
    if (options_.sink) {
        options_.sink(call);
    }
}

TraceValue ToTraceValue(const kelcore::char16* text) {
    return text == nullptr ? TraceValue() : TraceValue(std::u16string(text));
}

TraceValue ToTraceValue(tses::IHostString* text) {
    return text == nullptr ? TraceValue()
                           : TraceValue(std::u16string(text->GetData(), text->GetLength()));
}

}  // namespace refhost
