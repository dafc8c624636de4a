#pragma once

#include "Platform/Linux/ClassRegistry.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/Screen.h"
#include "Platform/Linux/SystemVersion.h"
#include "Platform/Linux/WorkerQueue.h"
#include "Platform/Notifications.h"

#include <string>

namespace platform {

/// The environment variable from which a child learns where the simulated device's root is.
inline constexpr const char* deviceRootVariable = "PURGO_DEVICE_ROOT";

/// What a simulated device is like when it starts.
struct DeviceConfiguration {
    /// The folder that stands for the device's "/"; empty when the device has no files of its own.
    std::string root;
    SystemVersion systemVersion = {6, 1};
    UserInterfaceIdiom idiom = UserInterfaceIdiom::phone;
    ClockKind clock = ClockKind::real;
    MainLoop::Duration startTime{};
    bool isUnlocked = false;
};

/// Somebody who follows what happens on the device. Called on the main thread, while it happens.
class DeviceObserver {
public:
    virtual ~DeviceObserver() = default;

    virtual void alertShown(const ScreenAlert&) {}
    virtual void alertChanged(const ScreenAlert&) {}
    virtual void alertDismissed(const ScreenAlert&, std::intptr_t /*buttonIndex*/) {}
    /// `through` is the application object's operation: "applicationOpenURL" or "openURL".
    virtual void urlOpened(const std::string& /*url*/, const std::string& /*through*/) {}
    virtual void switchRegistered(const std::string& /*identifier*/) {}
    virtual void listenerRegistered(const std::string& /*name*/) {}
};

/// The simulated device: all the state that belongs to the process.
///
/// A process that never starts one gets a device of its own on first use: locked, without files of
/// its own, on the real clock.
///
/// Ownership:  lives until the next one starts; the last one is never destroyed, so that nothing
///             that still runs at the end of the process misses it.
/// Threads:    main thread, except for what says otherwise.
class Device {
public:
    /// The device of this process. Threads: any.
    static Device& current();

    /// Replaces the device by a fresh one. Waits for the workers of the old one, since they end
    /// with it.
    static Device& start(DeviceConfiguration configuration);

    const DeviceConfiguration& configuration() const { return configuration_; }

    bool isUnlocked() const { return isUnlocked_; }
    void setUnlocked(bool unlocked) { isUnlocked_ = unlocked; }

    /// The observer; not owned. Null for none.
    void setObserver(DeviceObserver* observer);
    DeviceObserver& observer() { return *observer_; }

    MainLoop& mainLoop() { return mainLoop_; }
    WorkerQueue& workers() { return workers_; }
    ClassRegistry& classes() { return classes_; }
    Screen& screen() { return screen_; }
    NotificationCenter& notifications() { return notifications_; }

private:
    explicit Device(DeviceConfiguration configuration);

    DeviceConfiguration configuration_;
    bool isUnlocked_;
    DeviceObserver nobody_;
    DeviceObserver* observer_ = &nobody_;
    MainLoop mainLoop_;
    WorkerQueue workers_;
    ClassRegistry classes_;
    Screen screen_;
    NotificationCenter notifications_;
};

} // namespace platform
