#include "plugin/xml/FailureTrace.h"

#include <exception>
#include <new>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "platform/kelcore/Trace.h"
#include "plugin/xml/XercesPlatform.h"

namespace tses {
namespace {

constexpr std::string_view kNoMemory = "memory ran out";

/// If the message cannot be traced, memory has run out as well.
void TraceLibraryMessage(std::string_view category, const XMLCh* message) noexcept {
    try {
        kelcore::trace::Write(category, TranscodeMessage(message));
    } catch (...) {
        kelcore::trace::Write(category, kNoMemory);
    }
}

}  // namespace

void TraceFailure(std::string_view category) noexcept {
    try {
        throw;
    } catch (const ReportedFailure&) {
        return;
    } catch (const std::bad_alloc&) {
        kelcore::trace::Write(category, kNoMemory);
    } catch (const xercesc::OutOfMemoryException&) {
        kelcore::trace::Write(category, kNoMemory);
    } catch (const std::exception& failure) {
        kelcore::trace::Write(category, failure.what());
    } catch (const xercesc::XMLException& failure) {
        TraceLibraryMessage(category, failure.getMessage());
    } catch (const xercesc::DOMException& failure) {
        TraceLibraryMessage(category, failure.getMessage());
    } catch (...) {
        kelcore::trace::Write(category, "the host threw something that is not a std::exception");
    }
}

}  // namespace tses
