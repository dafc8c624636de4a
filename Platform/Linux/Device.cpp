#include "Platform/Linux/Device.h"

#include "Platform/Linux/Application.h"

#include <atomic>
#include <mutex>

namespace platform {

namespace {

std::atomic<Device*>& currentDevice() {
    static std::atomic<Device*> device;
    return device;
}

std::set<ApplicationOperation> operationsOfAnyApplication(const SystemVersion& version) {
    if (version < SystemVersion{4, 0})
        return {};
    return {ApplicationOperation::isProtectedDataAvailable};
}

} // namespace

Device::Device(DeviceConfiguration configuration)
    : configuration_(std::move(configuration)), isUnlocked_(configuration_.isUnlocked),
      mainLoop_(configuration_.clock, configuration_.startTime),
      workers_([this] { mainLoop_.wake(); }) {
    const auto& version = configuration_.systemVersion;
    classes_.add("UIApplication",
                 std::make_shared<SimulatedApplication>(operationsOfAnyApplication(version)));
    for (const char* name : {"UIAlertView", "UIActionSheet"})
        classes_.add(name);
    if (version < SystemVersion{8, 0})
        return;
    for (const char* name : {"UIAlertController", "UIAlertAction"})
        classes_.add(name);
}

Device& Device::current() {
    static std::once_flag firstUse;
    if (Device* device = currentDevice())
        return *device;
    std::call_once(firstUse, [] {
        Device* none = nullptr;
        auto* device = new Device(DeviceConfiguration{});
        if (!currentDevice().compare_exchange_strong(none, device))
            delete device;
    });
    return *currentDevice();
}

Device& Device::start(DeviceConfiguration configuration) {
    Device* const old = currentDevice();
    if (old)
        old->workers().waitUntilFinished();
    currentDevice() = new Device(std::move(configuration));
    delete old;
    return current();
}

void Device::setObserver(DeviceObserver* observer) {
    observer_ = observer ? observer : &nobody_;
}

} // namespace platform
