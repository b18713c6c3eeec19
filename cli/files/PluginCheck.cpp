#include "cli/files/PluginCheck.h"

#include <sstream>
#include <stdexcept>

#include <orvo/Session.h>

namespace cli {

void RequirePlugin() {
    if (const auto problem = orvo::CheckPlugin()) {
        std::ostringstream text;
        text << *problem;
        throw std::runtime_error(text.str());
    }
}

}  // namespace cli
