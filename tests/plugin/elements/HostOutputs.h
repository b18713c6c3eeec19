#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Model.h>
#include "plugin/serializer/Serializer.h"
#include "reference_host/recorder/CallRecord.h"

namespace test {

/// The outputs of a host's operation as they are before each of its calls, while a session is
/// written to a path. The operation has the form of a fault plan: "IQuerySession.GetSelection".
/// @param filled  the number of first calls that the host does fill; they are left out
std::vector<std::vector<refhost::TraceValue>> OutputsBefore(std::string_view operation,
                                                            const orvo::Session& session,
                                                            tses::Serializer& serializer,
                                                            const std::u16string& path,
                                                            std::size_t filled = 0);

}  // namespace test
