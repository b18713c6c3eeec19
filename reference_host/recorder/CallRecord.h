#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/kelcore/Types.h"

/// What a recorder reports about the calls that the plug-in makes.
namespace refhost {

/// An argument or a result, in this order: null, truth value, signed number, unsigned number,
/// 32-bit and 64-bit real number, text, list of numbers, block of bytes.
using TraceValue =
    std::variant<std::monostate, bool, std::int64_t, std::uint64_t, float, double, std::u16string,
                 std::vector<kelcore::uint32>, std::vector<kelcore::byte>>;

/// The host object that a call returned, or null.
struct ObjectResult {
    std::string interfaceName;       ///< as the operation declares it
    std::uint64_t objectNumber = 0;  ///< 0: null

    bool IsNull() const { return objectNumber == 0; }
    friend bool operator==(const ObjectResult&, const ObjectResult&) = default;
};

/// One call of one operation of a host object.
struct CallRecord {
    std::uint64_t sequence = 0;  ///< from 1, without a gap
    /// The interface that declares the operation: `IEditAudioTrack` for an operation of that
    /// interface, even if the caller holds the track as an `IEditAudioTrackPrivate`.
    std::string interfaceName;
    std::uint64_t objectNumber = 0;  ///< from 1, in order of first appearance; the session is 1
    std::string_view operation;
    /// What the caller passed. A pointer with its count is one value; a host string is its text.
    /// Outputs are not included.
    std::vector<TraceValue> arguments;
    /// Set if the operation returns a host object other than a string, and the call returned.
    std::optional<ObjectResult> returned;
    /// Set if the operation returns anything else (a host string counts as its text), and the call
    /// returned.
    std::optional<TraceValue> value;
    /// What the call left in its outputs, except for the bytes of a buffer.
    std::vector<TraceValue> outputs;
    /// The buffer that the call was given to fill, valid while the sink runs; null if there was
    /// none. Its size was the result of an earlier call of the object.
    const kelcore::byte* buffer = nullptr;
};

/// Receives each call when it is over, even if it threw.
using CallSink = std::function<void(const CallRecord&)>;

}  // namespace refhost
