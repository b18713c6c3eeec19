#include "toolkit/media/MediaProperties.h"

#include <fcntl.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <future>
#include <memory>

#include "toolkit/media/DetachedThread.h"

namespace toolkit {
namespace {

using SoundFile = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

bool IsRegularFile(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

MediaResult Look(const std::string& path) {
    if (!IsRegularFile(path)) {
        return MediaObstacle::Missing;
    }
    // A pipe that has just taken the file's place does not hold this up.
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return MediaObstacle::Refused;
    }
    SF_INFO info{};
    const SoundFile file(sf_open_fd(descriptor, SFM_READ, &info, SF_TRUE), &sf_close);
    if (!file || info.frames < 0) {
        return MediaObstacle::Unknown;
    }
    return MediaProperties{static_cast<std::uint64_t>(info.frames),
                           static_cast<std::uint32_t>(info.samplerate),
                           static_cast<std::uint32_t>(info.channels)};
}

}  // namespace

MediaResult ReadMediaProperties(const std::string& path, std::chrono::milliseconds patience) {
    const auto task =
        std::make_shared<std::packaged_task<MediaResult()>>([path] { return Look(path); });
    std::future<MediaResult> answer = task->get_future();
    RunDetached([task] { (*task)(); });
    if (patience.count() <= 0 || answer.wait_for(patience) != std::future_status::ready) {
        return MediaObstacle::Silent;
    }
    return answer.get();
}

}  // namespace toolkit
