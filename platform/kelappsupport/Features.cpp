#include "platform/kelappsupport/Features.h"

#include <functional>
#include <mutex>
#include <set>
#include <shared_mutex>
#include <string>

namespace kelappsupport {
namespace {

struct Features {
    std::shared_mutex mutex;
    std::set<std::string, std::less<>> enabled;
};

/// Never destroyed: a plug-in may ask during process exit.
Features& TheFeatures() {
    static Features& features = *new Features;
    return features;
}

}  // namespace

bool IsFeatureEnabled(std::string_view name) {
    Features& features = TheFeatures();
    const std::shared_lock lock(features.mutex);
    return features.enabled.contains(name);
}

void SetFeatureEnabled(std::string_view name, bool enabled) {
    Features& features = TheFeatures();
    const std::unique_lock lock(features.mutex);
    if (enabled) {
        features.enabled.emplace(name);
    } else if (const auto found = features.enabled.find(name); found != features.enabled.end()) {
        features.enabled.erase(found);
    }
}

}  // namespace kelappsupport
