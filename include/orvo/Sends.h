#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Effects.h>
#include <orvo/Ids.h>

namespace orvo {

/// One feed from a track to another track.
struct SendSlot {
    std::uint32_t slotIndex = 0;
    std::int32_t sendOutputId = kNone;  ///< the track that is fed
    bool preFader = false;
    std::int32_t destCompIndex = kNone;  ///< the component of the destination
    std::optional<Component> sendComponent{};
    std::optional<Component> panComponent{};

    friend bool operator==(const SendSlot&, const SendSlot&) = default;
};

struct SendList {
    /// A null is a slot that the host reported as null. It is not stored.
    std::vector<std::optional<SendSlot>> slots{};

    friend bool operator==(const SendList&, const SendList&) = default;
};

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const SendSlot& slot);
ORVO_API std::ostream& operator<<(std::ostream& out, const SendList& list);

}  // namespace orvo
