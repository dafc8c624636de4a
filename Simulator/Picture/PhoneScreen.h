#pragma once

#include "Platform/Linux/SystemVersion.h"
#include "Platform/UIKit/Views.h"
#include "Simulator/Link/Event.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// A toggle of the panel. Its title is missing until it has been listed.
struct ShownToggle {
    std::string identifier;
    std::optional<std::string> title;
    bool isEnabled = true;
    /// The device's path of the bundle that holds its icon.
    std::optional<std::string> bundle;
};

/// Somebody who waits for gestures. Title and description are missing until it has been listed.
struct ShownListener {
    std::string name;
    std::optional<std::string> title;
    std::optional<std::string> description;
};

struct ShownTextField {
    std::string text;
    std::string placeholder;
};

/// What an alert points at.
struct ShownAnchor {
    /// "view", "barButtonItem", "toolbar" or "tabBar".
    std::string kind;
    /// In points of the screen.
    std::optional<platform::CGRect> rect;
};

struct ShownAlert {
    std::uint64_t id = 0;
    /// The name of the control's class.
    std::string control;
    std::optional<std::string> title;
    std::optional<std::string> message;
    /// The titles, in the order in which a person sees the buttons.
    std::vector<std::optional<std::string>> buttons;
    std::optional<std::size_t> cancelButtonIndex;
    std::optional<std::size_t> destructiveButtonIndex;
    std::optional<ShownTextField> textField;
    std::optional<ShownAnchor> anchor;
    std::optional<double> windowLevel;
    /// The style that an alert controller was made with, where an event tells it.
    std::optional<std::intptr_t> preferredStyle;

    /// Whether it is a sheet of actions rather than an alert in the middle of the screen.
    bool isSheet() const;
};

/// What a person sees of the simulated device, put together from the home screen's events.
///
/// No event tells the idiom or whether the device is unlocked, so its owner sets them.
struct PhoneScreen {
    platform::SystemVersion system{6, 1};
    platform::UserInterfaceIdiom idiom = platform::UserInterfaceIdiom::phone;
    /// Seconds on the device's clock.
    double time = 0;
    bool isUnlocked = false;
    bool isSafeMode = false;
    std::vector<ShownToggle> toggles;
    std::vector<ShownListener> listeners;
    /// Those that are up, front first.
    std::vector<ShownAlert> alerts;
    /// The URL that the host application was opened with, while it is in front.
    std::optional<std::string> hostApplicationURL;

    /// Takes in what has happened. An event of another name only moves the time on, and a member
    /// that is missing or of another kind than it should be changes nothing.
    void apply(const Event& event);

    /// Locks or unlocks the device. Locking it leaves the host application.
    void setUnlocked(bool unlocked);
};

} // namespace simulator
