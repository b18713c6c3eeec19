#pragma once

#include <functional>
#include <string_view>

namespace toolkit {

/// Gives the next bytes of a document, valid until the next call; empty at the end.
using NextBytes = std::function<std::string_view()>;

}  // namespace toolkit
