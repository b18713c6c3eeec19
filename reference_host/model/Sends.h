#pragma once

#include <iosfwd>
#include <optional>
#include <vector>

#include "platform/kelcore/Types.h"
#include "reference_host/model/Effects.h"

namespace refhost::model {

/// One feed from a track to another track.
struct SendSlot {
    kelcore::uint32 slotIndex = 0;
    kelcore::int32 sendOutputId = -1;  ///< the track that is fed; -1: none
    bool preFader = false;
    kelcore::int32 destCompIndex = -1;  ///< the component of the destination; -1: not said
    std::optional<Component> sendComponent{};
    std::optional<Component> panComponent{};

    friend bool operator==(const SendSlot&, const SendSlot&) = default;
};

struct SendList {
    std::vector<std::optional<SendSlot>> slots{};  ///< none: a host may report that; not stored

    friend bool operator==(const SendList&, const SendList&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const SendSlot& slot);
std::ostream& operator<<(std::ostream& out, const SendList& list);

}  // namespace refhost::model
