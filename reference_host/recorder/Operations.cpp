#include "reference_host/recorder/Operations.h"

#include <concepts>
#include <type_traits>

#include "host/AudioClips.h"
#include "host/AudioTracks.h"
#include "host/Automation.h"
#include "host/ClipGroups.h"
#include "host/ClipStretch.h"
#include "host/Effects.h"
#include "host/Fades.h"
#include "host/Files.h"
#include "host/GlobalTrackInfo.h"
#include "host/LogTarget.h"
#include "host/Metronome.h"
#include "host/MidiClips.h"
#include "host/Properties.h"
#include "host/Sends.h"
#include "host/Session.h"
#include "host/TrackVisibility.h"
#include "host/VideoClips.h"
#include "host/VideoTracks.h"

namespace refhost {
namespace {

using namespace tses;

template <class Interface, class Result, class... Parameters>
consteval HostOperation Describe(std::string_view interfaceName, std::string_view name,
                                 Result (Interface::*)(Parameters...)) {
    return {interfaceName, name, std::derived_from<std::remove_pointer_t<Result>, IHostObject>,
            std::is_arithmetic_v<Result>};
}

constexpr HostOperation kOperations[] = {
#define OPERATION(interface, name) Describe(#interface, #name, &interface::name),
#include "reference_host/recorder/Operations.def"
#undef OPERATION
};

}  // namespace

std::span<const HostOperation> HostOperations() {
    return kOperations;
}

}  // namespace refhost
