#include "platform/kelcore/ClientVersion.h"

#include <mutex>
#include <utility>

namespace kelcore {
namespace {

struct Client {
    std::mutex mutex;
    std::string version = ORVO_VERSION;
    uint32 buildNumber = 0;
};

/// Never destroyed: a plug-in may ask during process exit.
Client& TheClient() {
    static Client& client = *new Client;
    return client;
}

}  // namespace

std::string GetClientVersion() {
    Client& client = TheClient();
    const std::lock_guard lock(client.mutex);
    return client.version;
}

uint32 GetClientBuildNumber() {
    Client& client = TheClient();
    const std::lock_guard lock(client.mutex);
    return client.buildNumber;
}

void SetClientVersion(std::string version, uint32 buildNumber) {
    Client& client = TheClient();
    const std::lock_guard lock(client.mutex);
    client.version = std::move(version);
    client.buildNumber = buildNumber;
}

}  // namespace kelcore
