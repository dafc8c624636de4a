#pragma once

#include "Simulator/Terminal/Frame.h"
#include "Simulator/Terminal/Interface.h"

#include <memory>
#include <optional>
#include <string>

namespace simulator {

/// The terminal at standard input and output while it shows frames. It is as it was before when
/// this object is gone.
///
/// Requires: that nothing else writes to the terminal meanwhile; at most one object at a time.
class TerminalScreen {
public:
    /// Why no frame can be shown on this terminal; empty when they can.
    static std::string obstacle();

    /// Requires: no `obstacle`. Errors: throws `std::runtime_error` when the terminal refuses.
    TerminalScreen();
    ~TerminalScreen();
    TerminalScreen(const TerminalScreen&) = delete;
    TerminalScreen& operator=(const TerminalScreen&) = delete;

    Size size() const;
    void show(const Frame& frame);

    /// The next key that has been pressed, if any. Does not wait.
    std::optional<Key> takeKey();

    /// Whether nobody is at the terminal any more.
    bool isHungUp() const;

    /// To be called when the window has another size.
    void resize();

    /// Draws everything anew with the next frame.
    void forgetContents();

    /// Gives the terminal back until this process, which is stopped, is continued.
    void suspend();

private:
    struct Deleter {
        void operator()(void* screen) const;
    };

    std::unique_ptr<void, Deleter> screen_;
};

} // namespace simulator
