#pragma once

#include "Simulator/Link/Event.h"
#include "Simulator/Supervisor/Output.h"

#include <cstdint>
#include <map>
#include <string>

namespace simulator {

/// Puts events into words for people.
///
/// States: remembers the alerts on the screen, to tell what has changed in one, and to name the
///         button by which it was dismissed.
class EventWords {
public:
    /// One or more lines. What a text holds of control characters is made visible, so that it
    /// cannot command the terminal.
    std::string words(const Event& event);

private:
    std::string sentence(const Event& event);

    /// As they were shown, by their numbers.
    std::map<std::uint64_t, Event> alerts_;
};

enum class EventFormat { words, json };

/// Prints events on standard output.
class EventPrinter {
public:
    EventPrinter(Output& output, EventFormat format) : output_(output), format_(format) {}

    void print(const Event& event);

    EventFormat format() const { return format_; }
    Output& output() const { return output_; }

private:
    Output& output_;
    EventFormat format_;
    EventWords words_;
};

} // namespace simulator
