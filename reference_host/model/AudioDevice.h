#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"

namespace refhost::model {

/// A named input or output of the audio device. Tracks refer to it by its id.
struct AudioPort {
    kelcore::int32 id = 0;
    std::u16string name{};

    friend bool operator==(const AudioPort&, const AudioPort&) = default;
};

/// The devices that the session was made with; the identifiers are the host's own texts.
struct AudioDevice {
    std::u16string inputDeviceId{};
    std::u16string outputDeviceId{};
    std::vector<AudioPort> inputPorts{};
    std::vector<AudioPort> outputPorts{};

    friend bool operator==(const AudioDevice&, const AudioDevice&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const AudioPort& port);
std::ostream& operator<<(std::ostream& out, const AudioDevice& device);

}  // namespace refhost::model
