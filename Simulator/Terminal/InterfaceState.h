#pragma once

#include "Simulator/Terminal/Canvas.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// Something on the screen that a person can choose.
struct TargetId {
    enum class Kind { toggle, listener, hostApplication, home, button, textField, exhibit };

    Kind kind = Kind::toggle;
    /// Of a toggle, a listener or an exhibit.
    std::string name = {};
    /// The alert that a button or text field belongs to.
    std::uint64_t alert = 0;
    /// Of a button.
    std::size_t index = 0;

    bool isOfAlert() const { return kind == Kind::button || kind == Kind::textField; }
    bool operator==(const TargetId&) const = default;
};

struct Target {
    TargetId id;
    /// Where it is to be seen; empty while it is not.
    Area area;
};

struct LogEntry {
    enum class Kind { event, command, failure, note };

    Kind kind = Kind::event;
    double time = 0;
    std::string text;
};

/// A text that is being typed.
struct TextDraft {
    std::u32string text;
    std::size_t cursor = 0;
};

struct ListedExhibit {
    std::string name;
    std::string description;
};

/// The gestures that can be assigned to a listener.
inline constexpr std::array gestureNames = {
    "double tap on the status bar", "swipe up from the corner",
    "hold the home button",         "shake the device",
    "press both volume buttons",    "slide in from the right edge"};

/// What the interface shows beside the device itself.
struct InterfaceState {
    enum class Overlay { none, help, gallery };

    std::optional<TargetId> focus;
    /// The gesture of each listener, by the listener's name; past the last one for none.
    std::map<std::string, std::size_t> gestures;
    std::deque<LogEntry> log;
    /// How many lines the log is scrolled back, and the front alert's text forward.
    int logScroll = 0;
    int textScroll = 0;
    Overlay overlay = Overlay::none;
    std::vector<ListedExhibit> exhibits;
    std::size_t exhibit = 0;
    /// The command that is being typed.
    std::optional<TextDraft> commandLine;
    /// What is being typed into the text field that has the focus.
    std::optional<TextDraft> fieldText;
    /// Whether the host application was opened by its icon.
    bool isHostApplicationOpen = false;
    /// The command that the home screen has been carrying out for a while.
    std::string busyWith;
    /// Seconds on the device's clock.
    double now = 0;
};

} // namespace simulator
