#include "Platform/Linux/MainLoop.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <iterator>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace platform {

class MainLoop::ScheduledTimer : public Timer {
public:
    ScheduledTimer(Duration firstDeadline, Duration interval, std::function<void()> tick)
        : deadline_(firstDeadline), interval_(interval),
          tick_(std::make_shared<std::function<void()>>(std::move(tick))) {}

    void invalidate() override { tick_ = nullptr; }

    bool isValid() const { return tick_ != nullptr; }
    Duration deadline() const { return deadline_; }

    void fire(Duration now) {
        const auto missedIntervals = (now - deadline_) / interval_;
        deadline_ += interval_ * (missedIntervals + 1);
        // The tick may invalidate its own timer: it stays alive until it has returned.
        const auto tick = tick_;
        (*tick)();
    }

private:
    Duration deadline_;
    Duration interval_;
    std::shared_ptr<std::function<void()>> tick_;
};

MainLoop::MainLoop(ClockKind clock, Duration start)
    : clock_(clock), realStart_(std::chrono::steady_clock::now()), start_(start),
      virtualNow_(start), wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!wakeUp_.isOpen())
        throw std::system_error(errno, std::generic_category(), "main loop");
}

MainLoop::Duration MainLoop::now() const {
    if (clock_ == ClockKind::virtualTime)
        return virtualNow_;
    return start_ +
           std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now() - realStart_);
}

void MainLoop::async(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        const bool isKept = keepsBack_ && std::this_thread::get_id() != thread_;
        (isKept ? keptBack_ : queue_).push_back(std::move(work));
    }
    wake();
}

void MainLoop::keepBackOtherThreads(bool isKept) {
    const std::lock_guard lock(mutex_);
    keepsBack_ = isKept;
    if (isKept)
        return;
    std::move(keptBack_.begin(), keptBack_.end(), std::back_inserter(queue_));
    keptBack_.clear();
}

void MainLoop::wake() {
    // A full counter is as good as one more: the loop looks again either way.
    [[maybe_unused]] const auto written = eventfd_write(wakeUp_.get(), 1);
}

std::shared_ptr<Timer> MainLoop::schedule(Duration interval, std::function<void()> tick) {
    auto timer = std::make_shared<ScheduledTimer>(now() + interval, interval, std::move(tick));
    timers_.push_back(timer);
    return timer;
}

void MainLoop::watch(int descriptor, std::function<void()> onReadable) {
    descriptors_[descriptor] = std::make_shared<std::function<void()>>(std::move(onReadable));
}

void MainLoop::unwatch(int descriptor) {
    descriptors_.erase(descriptor);
}

bool MainLoop::isIdle() const {
    const std::lock_guard lock(mutex_);
    return queue_.empty();
}

/// Runs one turn: what is queued now, not what it queues in its turn.
bool MainLoop::runQueuedWork() {
    std::deque<std::function<void()>> turn;
    {
        const std::lock_guard lock(mutex_);
        turn.swap(queue_);
    }
    const bool hadWork = !turn.empty();
    for (; !turn.empty(); turn.pop_front())
        turn.front()();
    return hadWork;
}

std::shared_ptr<MainLoop::ScheduledTimer> MainLoop::nextTimer() const {
    const auto earliest =
        std::min_element(timers_.begin(), timers_.end(), [](const auto& one, const auto& other) {
            return one->deadline() < other->deadline();
        });
    return earliest == timers_.end() ? nullptr : *earliest;
}

std::optional<MainLoop::Duration> MainLoop::nextDeadline() const {
    std::optional<Duration> deadline;
    for (const auto& timer : timers_)
        if (timer->isValid() && (!deadline || timer->deadline() < *deadline))
            deadline = timer->deadline();
    return deadline;
}

bool MainLoop::fireNextTimer(Duration notAfter) {
    std::erase_if(timers_, [](const auto& timer) { return !timer->isValid(); });
    const auto timer = nextTimer();
    if (!timer || timer->deadline() > notAfter)
        return false;
    virtualNow_ = std::max(virtualNow_, timer->deadline());
    timer->fire(now());
    return true;
}

void MainLoop::drain() {
    do {
        while (runQueuedWork()) {
        }
    } while (fireNextTimer(now()));
}

void MainLoop::letPass(Duration duration) {
    if (clock_ == ClockKind::real) {
        runUntil([] { return false; }, duration);
        return;
    }
    const auto target = virtualNow_ + duration;
    drain();
    while (fireNextTimer(target))
        drain();
    virtualNow_ = target;
}

bool MainLoop::runUntil(const std::function<bool()>& condition, Duration realLimit) {
    using std::chrono::steady_clock;
    const auto begin = steady_clock::now();
    while (!condition()) {
        const bool didSomething = runQueuedWork() || fireNextTimer(now());
        const Duration passed = steady_clock::now() - begin;
        if (passed >= realLimit)
            return condition();
        if (!didSomething)
            waitForSomething(realLimit - passed);
    }
    return true;
}

void MainLoop::waitForSomething(Duration atMost) {
    if (const auto timer = nextTimer(); timer && clock_ == ClockKind::real)
        atMost = std::clamp(timer->deadline() - now(), Duration::zero(), atMost);
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(
        std::min<Duration>(atMost, std::chrono::hours(1)));

    std::vector<pollfd> polled{{wakeUp_.get(), POLLIN, 0}};
    for (const auto& [descriptor, onReadable] : descriptors_)
        polled.push_back({descriptor, POLLIN, 0});
    if (poll(polled.data(), polled.size(), static_cast<int>(milliseconds.count())) <= 0)
        return;

    eventfd_t count = 0;
    [[maybe_unused]] const auto result = eventfd_read(wakeUp_.get(), &count);
    for (std::size_t i = 1; i < polled.size(); ++i) {
        const auto watched = descriptors_.find(polled[i].fd);
        if (polled[i].revents == 0 || watched == descriptors_.end())
            continue;
        const auto onReadable = watched->second;
        (*onReadable)();
    }
}

} // namespace platform
