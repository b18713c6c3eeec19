#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include <orvo/Api.h>

namespace orvo {

/// A named input or output of the audio device. Tracks refer to it by its id.
struct AudioPort {
    std::int32_t id = 0;
    std::string name{};

    friend bool operator==(const AudioPort&, const AudioPort&) = default;
};

/// The devices that the session was made with; the identifiers are the host's own texts.
struct AudioDevice {
    std::string inputDeviceId{};
    std::string outputDeviceId{};
    std::vector<AudioPort> inputPorts{};
    std::vector<AudioPort> outputPorts{};

    friend bool operator==(const AudioDevice&, const AudioDevice&) = default;
};

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const AudioPort& port);
ORVO_API std::ostream& operator<<(std::ostream& out, const AudioDevice& device);

}  // namespace orvo
