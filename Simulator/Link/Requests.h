#pragma once

#include <chrono>
#include <string>

namespace simulator {

// What the supervisor asks of the home screen beside the commands that people give. Each is a line
// that is no command, answered as a command is.

/// Asks for the toggles and the listeners as they are. They come in messages of their own, so that
/// nobody takes them for something that happened.
std::string listingRequest();

/// Virtual time passes up to the limit, but not beyond the next timer. A timer that would fire at
/// most `margin` before the limit does not fire: time stops short of it.
std::string stepRequest(std::chrono::nanoseconds limit, std::chrono::nanoseconds margin);

/// Nothing that child processes do is noticed from now on, but in a `settlingRequest`.
std::string keepingBackRequest();

/// As the command `settle`; all that was kept back is noticed.
std::string settlingRequest();

/// The home screen sends itself a signal.
std::string signalRequest(int signal);

/// Whether a line is a request.
bool isRequest(const std::string& line);

} // namespace simulator
