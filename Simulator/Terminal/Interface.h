#pragma once

#include "Simulator/Picture/PhoneScreen.h"
#include "Simulator/Terminal/Frame.h"
#include "Simulator/Terminal/InterfaceState.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>

namespace simulator {

/// Something that a person does at the terminal.
struct Key {
    enum class Kind {
        character,
        enter,
        escape,
        tab,
        backTab,
        up,
        down,
        left,
        right,
        pageUp,
        pageDown,
        home,
        end,
        backspace,
        remove,
        click,
        wheelUp,
        wheelDown
    };

    Kind kind = Kind::character;
    char32_t character = 0;
    /// Where the mouse was.
    int column = 0;
    int row = 0;
};

/// The full-screen interface without its terminal: keys go in, frames and commands come out.
///
/// States: has the focus, the log, and the commands that the home screen has not taken yet. A
///         press that was meant for an alert that is no longer in front is forgotten.
class Interface {
public:
    /// `screen` is somebody else's, and may be changed at any time. `pictureName` names a file for
    /// the next picture.
    Interface(PhoneScreen& screen, std::function<std::string()> pictureName)
        : screen_(screen), pictureName_(std::move(pictureName)) {}

    Frame draw(Size size);
    void handle(const Key& key, Size size);

    std::optional<std::string> takeCommand();
    bool hasCommands() const { return !pending_.empty(); }
    bool wantsToQuit() const { return wantsToQuit_; }

    void log(LogEntry entry);
    void eventHappened(const Event& event);
    void setBusy(const std::string& command) { state_.busyWith = command; }
    void setTime(double seconds) { state_.now = seconds; }

private:
    struct PendingCommand {
        std::string line;
        /// The alert that it is meant for.
        std::optional<std::uint64_t> alert;
    };

    void handleCommandLine(const Key& key);
    void handleGallery(const Key& key);
    bool handleField(const Key& key);
    void handleLetter(char32_t letter);
    void handleMovement(const Key& key, const Frame& frame);
    void scroll(const Key& key, const Frame& frame);
    void click(const Key& key, const Frame& frame);
    void moveFocus(const Frame& frame, bool isForward, bool staysInAlert);
    void setFocus(const std::optional<TargetId>& focus);
    void commitField();
    void activate(const TargetId& target);
    void escape();
    void pressButton(std::size_t index);
    void assignGesture(bool isForward);
    void assignMissingGestures();
    void tellListener(const std::string& command);
    void openGallery();
    void showExhibit(const std::string& backend);
    void command(std::string line, std::optional<std::uint64_t> alert = {});
    void note(std::string text);
    void keepFocusValid();
    const ShownAlert* frontAlert() const;

    PhoneScreen& screen_;
    std::function<std::string()> pictureName_;
    InterfaceState state_;
    std::deque<PendingCommand> pending_;
    /// The alert that was in front when the focus was looked at last.
    std::uint64_t seenAlert_ = 0;
    /// Where the focus was before an alert took it.
    std::optional<TargetId> focusBehind_;
    bool wantsToQuit_ = false;
};

} // namespace simulator
