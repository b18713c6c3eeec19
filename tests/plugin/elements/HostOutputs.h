#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Model.h>
#include "plugin/serializer/Serializer.h"
#include "reference_host/recorder/CallRecord.h"

namespace test {

/// What stands in the outputs of a host's operation before each of its calls, while a session is
/// written to a path. An operation is named as in a fault plan: "IQuerySession.GetSelection".
/// @param filled  so many calls, the first ones, the host does fill, and they are left out
std::vector<std::vector<refhost::TraceValue>> OutputsBefore(std::string_view operation,
                                                            const orvo::Session& session,
                                                            tses::Serializer& serializer,
                                                            const std::u16string& path,
                                                            std::size_t filled = 0);

}  // namespace test
