#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <string>

namespace simulator {

/// Something that happened on the device, as scripts see it: a JSON object whose first two members
/// are "time", in seconds on the device's clock, and "event", its name.
using Event = nlohmann::ordered_json;

/// The names of the events.
namespace eventName {
inline constexpr const char* homeScreenStarted = "home-screen-started";
inline constexpr const char* homeScreenRestarted = "home-screen-restarted";
inline constexpr const char* homeScreenCrashed = "home-screen-crashed";
inline constexpr const char* libraryLoaded = "library-loaded";
inline constexpr const char* switchRegistered = "switch-registered";
inline constexpr const char* listenerRegistered = "listener-registered";
inline constexpr const char* switchListed = "switch";
inline constexpr const char* listenerListed = "listener";
inline constexpr const char* switchActivated = "switch-activated";
inline constexpr const char* eventFired = "event-fired";
inline constexpr const char* alertShown = "alert-shown";
inline constexpr const char* alertChanged = "alert-changed";
inline constexpr const char* alertDismissed = "alert-dismissed";
inline constexpr const char* screen = "screen";
inline constexpr const char* urlOpened = "url-opened";
inline constexpr const char* exhibitListed = "exhibit";
inline constexpr const char* exhibitAction = "exhibit-action";
} // namespace eventName

/// An event without further members. Units: `time` is cut to whole milliseconds.
Event makeEvent(std::chrono::nanoseconds time, const char* name);

/// JSON on one line, without the line's end. What is not UTF-8 is replaced, never refused.
std::string jsonLine(const nlohmann::ordered_json& value);

} // namespace simulator
