#pragma once

#include "Platform/Linux/Device.h"
#include "Tests/Support/TemporaryFolder.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace tests {

inline constexpr const char* hostExecutable = "/Applications/Purgo.app/iOS6_Purgo";

/// A fresh simulated device on a virtual clock, with a root of its own.
class TestDevice {
public:
    explicit TestDevice(platform::DeviceConfiguration configuration = {}) {
        configuration.root = files_.path();
        configuration.clock = platform::ClockKind::virtualTime;
        platform::Device::start(configuration);
    }
    ~TestDevice() { platform::Device::start({}); }

    const TemporaryFolder& files() const { return files_; }
    platform::Device& device() const { return platform::Device::current(); }
    platform::Screen& screen() const { return device().screen(); }

    /// Lets virtual time pass.
    void letPass(int seconds) const { device().mainLoop().letPass(std::chrono::seconds(seconds)); }

    /// Runs until no child is running and nothing is queued; false when that takes too long.
    bool settle() const {
        const auto isSettled = [this] {
            return device().workers().pendingCount() == 0 && device().mainLoop().isIdle();
        };
        return device().mainLoop().runUntil(isSettled, std::chrono::seconds(30));
    }

    /// Chooses a button of the front alert, by its title. Says whether there was one.
    bool press(std::string_view title) const {
        const auto alert = screen().front();
        if (!alert)
            return false;
        const auto& buttons = alert->contents().buttons;
        for (std::size_t index = 0; index < buttons.size(); ++index)
            if (buttons[index] == title) {
                alert->dismiss(static_cast<std::intptr_t>(index));
                device().mainLoop().drain();
                return true;
            }
        return false;
    }

    /// The message of the front alert; "no alert" when there is none.
    std::string message() const {
        const auto alert = screen().front();
        return alert ? alert->contents().message.value_or("no message") : "no alert";
    }

private:
    TemporaryFolder files_;
};

} // namespace tests
