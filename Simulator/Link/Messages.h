#pragma once

#include "Platform/Linux/Device.h"
#include "Simulator/Link/Event.h"

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <sys/types.h>

namespace simulator {

/// The descriptor under which the home screen finds its end of the socket.
inline constexpr int linkDescriptor = 3;

/// What a home screen is started with.
struct HomeScreenSettings {
    /// `startTime` holds for a virtual clock only.
    platform::DeviceConfiguration device;
    /// When the device's real clock stood at zero, on the machine's steady clock: every home
    /// screen of a device goes by the same one.
    std::chrono::nanoseconds clockOrigin{};
    bool isInSafeMode = false;
    pid_t supervisor = 0;

    /// The arguments that make the program a home screen with these settings.
    std::vector<std::string> arguments() const;
    /// Nothing when the arguments are not such ones.
    static std::optional<HomeScreenSettings> fromArguments(std::span<char* const> arguments);
};

/// What the home screen tells the supervisor, one line each.
///
/// A start ends in `ready`. The answer to a command is `begun` and in the end `done` or `failed`,
/// events and `busy` in between; no answer at all when the home screen went down.
struct Message {
    enum class Kind { event, listed, ready, begun, busy, done, failed };

    Kind kind = Kind::event;
    /// The time on the device's clock.
    std::chrono::nanoseconds now{};
    /// event: the event; listed: one that answers `listingRequest`; busy: for how many seconds
    /// longer than usual the command may take; done: whether the device is unlocked; failed: the
    /// reason.
    nlohmann::ordered_json content;

    std::string encoded() const;
    /// Nothing for a line that is no message.
    static std::optional<Message> decode(const std::string& line);
};

} // namespace simulator
