#include "toolkit/media/Presence.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <unordered_set>
#include <utility>

#include "toolkit/media/DetachedThread.h"

namespace toolkit {
namespace {

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.find_last_of("/\\") + 1);
}

/// What the asking thread and the waiting one share. The asking one may outlive the other.
struct Questions {
    std::vector<std::string> paths;
    PresenceTest isPresent;
    std::mutex mutex;
    std::condition_variable complete;
    std::vector<bool> answers;
};

void Ask(Questions& questions) {
    for (const std::string& path : questions.paths) {
        const bool answer = questions.isPresent(path);
        const std::scoped_lock lock(questions.mutex);
        questions.answers.push_back(answer);
    }
    questions.complete.notify_one();
}

/// The answers until one does not come in time.
std::vector<bool> AnswersInTime(std::vector<std::string> paths, const PresenceTest& isPresent,
                                std::chrono::milliseconds patience) {
    const std::size_t count = paths.size();
    const auto questions = std::make_shared<Questions>();
    questions->paths = std::move(paths);
    questions->isPresent = isPresent;
    RunDetached([questions] { Ask(*questions); });
    std::unique_lock lock(questions->mutex);
    std::size_t known = 0;
    const auto isComplete = [&] { return questions->answers.size() == count; };
    while (!questions->complete.wait_for(lock, patience, isComplete) &&
           questions->answers.size() != known) {
        known = questions->answers.size();
    }
    return questions->answers;
}

}  // namespace

std::vector<Presence> FindPresence(const std::vector<std::string>& paths,
                                   std::chrono::milliseconds patience,
                                   const PresenceTest& isPresent) {
    std::vector<Presence> result(paths.size(), Presence::Silent);
    std::unordered_set<std::string> silent;  // folders
    std::vector<std::size_t> left(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        left[i] = i;
    }
    while (!left.empty()) {
        std::vector<std::string> asked;
        for (const std::size_t i : left) {
            asked.push_back(paths[i]);
        }
        const std::vector<bool> answers = AnswersInTime(std::move(asked), isPresent, patience);
        for (std::size_t i = 0; i < answers.size(); ++i) {
            result[left[i]] = answers[i] ? Presence::Present : Presence::Missing;
        }
        left.erase(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(answers.size()));
        if (!left.empty()) {
            silent.insert(FolderOf(paths[left.front()]));
            std::erase_if(left, [&](std::size_t i) { return silent.contains(FolderOf(paths[i])); });
        }
    }
    return result;
}

}  // namespace toolkit
