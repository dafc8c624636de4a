#include "Platform/Dispatch.h"

#include "Platform/Linux/Device.h"

namespace platform {

void asyncOnMainQueue(std::function<void()> work) {
    Device::current().mainLoop().async(std::move(work));
}

void asyncOnHighPriorityQueue(std::function<void()> work) {
    Device::current().workers().async(std::move(work));
}

std::shared_ptr<Timer> Timer::scheduled(double interval, std::function<void()> tick) {
    const std::chrono::duration<double> seconds(interval);
    return Device::current().mainLoop().schedule(
        std::chrono::duration_cast<MainLoop::Duration>(seconds), std::move(tick));
}

NotificationCenter& NotificationCenter::defaultCenter() {
    return Device::current().notifications();
}

} // namespace platform
