#include "Platform/Linux/WorkerQueue.h"

#include <system_error>
#include <thread>

namespace platform {

struct WorkerQueue::State {
    std::mutex mutex; // guards all but onFinished
    std::condition_variable noThreadLeft;
    std::deque<std::function<void()>> waiting;
    std::size_t pendingCount = 0;
    std::size_t threadCount = 0;
    std::function<void()> onFinished;

    std::function<void()> takeWork() {
        const std::lock_guard lock(mutex);
        if (waiting.empty())
            return nullptr;
        auto work = std::move(waiting.front());
        waiting.pop_front();
        return work;
    }

    void workUntilNothingWaits() {
        while (auto work = takeWork()) {
            work();
            // What the work captured goes before the work counts as finished.
            work = nullptr;
            {
                const std::lock_guard lock(mutex);
                --pendingCount;
            }
            onFinished();
        }
    }

    /// Also the last use of `onFinished` lies before this: who waited may take away what it uses.
    void threadEnds() {
        const std::lock_guard lock(mutex);
        --threadCount;
        noThreadLeft.notify_all();
    }
};

WorkerQueue::WorkerQueue(std::function<void()> onFinished) : state_(std::make_shared<State>()) {
    state_->onFinished = std::move(onFinished);
}

void WorkerQueue::async(std::function<void()> work) {
    const std::lock_guard lock(state_->mutex);
    state_->waiting.push_back(std::move(work));
    try {
        std::thread([state = state_] {
            state->workUntilNothingWaits();
            state->threadEnds();
        }).detach();
        ++state_->threadCount;
    } catch (const std::system_error&) {
        // A thread that runs now takes the work when it is done with its own.
        if (state_->threadCount == 0) {
            state_->waiting.pop_back();
            throw;
        }
    }
    ++state_->pendingCount;
}

std::size_t WorkerQueue::pendingCount() const {
    const std::lock_guard lock(state_->mutex);
    return state_->pendingCount;
}

void WorkerQueue::waitUntilFinished() const {
    std::unique_lock lock(state_->mutex);
    state_->noThreadLeft.wait(lock, [this] { return state_->threadCount == 0; });
}

} // namespace platform
