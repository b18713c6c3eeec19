#include "plugin/entry/SessionInterface.h"

#include "platform/kelcore/Trace.h"
#include "plugin/serializer/Serializer.h"

namespace tses {
namespace {

bool IsSelector(std::int32_t selector) {
    return static_cast<std::uint32_t>(selector) <=
           static_cast<std::uint32_t>(SessionSelector::WriteSession);
}

bool NeedsArgument(SessionSelector selector) {
    return selector != SessionSelector::Reserved && selector != SessionSelector::Terminate;
}

SessionResult Initialize(SessionInterface& plugIn, IPlugInRegistrar* registrar) {
    registrar->DeclareInterfaceVersion(kInterfaceMajor, kInterfaceMinor);
    return plugIn.Initialize(registrar);
}

SessionResult WriteSession(SessionInterface& plugIn, IQuerySession* session) {
    plugIn.HoldContext(session->GetContext());
    return plugIn.WriteSession(session);
}

bool IsWrite(std::int32_t selector) {
    return selector == static_cast<std::int32_t>(SessionSelector::WriteSession);
}

}  // namespace

SessionResult Dispatch(SessionInterface& plugIn, std::int32_t selectorNumber, void* argument) {
    plugIn.ReleaseContext();
    if (!IsSelector(selectorNumber)) {
        return SessionResult::UnknownSelector;
    }
    const auto selector = static_cast<SessionSelector>(selectorNumber);
    if (argument == nullptr && NeedsArgument(selector)) {
        return SessionResult::NullArgument;
    }
    switch (selector) {
        case SessionSelector::Initialize:
            return Initialize(plugIn, static_cast<IPlugInRegistrar*>(argument));
        case SessionSelector::Reserved:
            return plugIn.Reserved();
        case SessionSelector::Terminate:
            return plugIn.Terminate();
        case SessionSelector::SetFilePath:
            return plugIn.SetFilePath(static_cast<IHostFileRef*>(argument));
        case SessionSelector::ReadSession:
            return plugIn.ReadSession(static_cast<IEditSession*>(argument));
        case SessionSelector::WriteSession:
            return WriteSession(plugIn, static_cast<IQuerySession*>(argument));
    }
    return SessionResult::UnknownSelector;
}

SessionResult DispatchGuarded(SessionInterface& plugIn, std::int32_t selector,
                              void* argument) noexcept {
    try {
        return Dispatch(plugIn, selector, argument);
    } catch (...) {
        Serializer::TraceFailure(IsWrite(selector) ? kelcore::trace::kWriterCategory
                                                   : kelcore::trace::kReaderCategory);
        return IsWrite(selector) ? SessionResult::WriteFailed : SessionResult::ReadFailed;
    }
}

}  // namespace tses
