#pragma once

#include "Platform/Object.h"
#include "Platform/UIKit/Views.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

class UIWindow;

/// What a sheet or popover points at.
struct AlertAnchor {
    /// "view", "barButtonItem", "toolbar" or "tabBar".
    std::string kind;
    /// The rectangle pointed at, in the anchor view's coordinates; missing where there is none.
    std::optional<CGRect> rect;
    /// Where the anchor view lies; missing where the anchor is none.
    std::optional<CGRect> view = std::nullopt;
};

/// An alert as somebody who looks at the screen sees it: what its control holds.
struct AlertContents {
    /// The name of the control's class.
    std::string control;
    std::optional<std::string> title;
    std::optional<std::string> message;
    std::vector<std::optional<std::string>> buttons;
    std::optional<std::intptr_t> cancelButtonIndex;
    std::optional<std::intptr_t> destructiveButtonIndex;
    std::shared_ptr<UITextField> textField;
    std::optional<AlertAnchor> anchor;
    /// The style of the system's alert controller; the other controls have one of their own each.
    std::optional<std::intptr_t> preferredStyle;
    /// The level of the window that the alert was presented in, where it needs one.
    std::optional<CGFloat> windowLevel;
};

class Screen;

/// An alert control's share of the screen: what it shows, and the road that every dismissal takes,
/// a tap on a button as well as one from code.
///
/// States:     off screen -> presenting -> on screen -> dismissing -> off screen; it can be
///             presented again.
/// Ownership:  the screen owns it and its control from the presentation until the dismissal has
///             been reported.
/// Threads:    main thread only.
class ScreenAlert : public std::enable_shared_from_this<ScreenAlert> {
public:
    /// What the alert reports to its control.
    class Control {
    public:
        virtual ~Control() = default;
        /// Inside the presentation, before the alert is on screen.
        virtual void willPresent() = 0;
        /// Inside the dismissal.
        virtual void willDismiss(std::intptr_t buttonIndex) = 0;
        /// On a later turn of the main loop, after the alert has left the screen.
        virtual void didDismiss(std::intptr_t buttonIndex) = 0;
    };

    /// `level` tells which alerts it lies in front of while its contents name no window level.
    explicit ScreenAlert(std::string control, CGFloat level = 0);

    /// A number that no other presentation on this screen has; 0 before the first one.
    std::uint64_t id() const { return id_; }
    const AlertContents& contents() const { return contents_; }
    bool isOnScreen() const { return state_ == State::onScreen || state_ == State::dismissing; }

    /// Changes what the alert shows. On screen, a title or message that reads differently
    /// afterwards is reported to the device's observer.
    void change(const std::function<void(AlertContents&)>& change);

    /// Puts the alert on screen, in front of those of its level. Does nothing unless it is off
    /// screen.
    void present(const std::shared_ptr<Control>& control);

    /// Dismisses the alert; -1 is no button. Does nothing unless it is on screen and not already
    /// going.
    void dismiss(std::intptr_t buttonIndex);

private:
    enum class State { offScreen, presenting, onScreen, dismissing };
    friend class Screen;

    void leave(Control& control, std::intptr_t buttonIndex);
    CGFloat level() const { return contents_.windowLevel.value_or(level_); }

    std::uint64_t id_ = 0;
    State state_ = State::offScreen;
    AlertContents contents_;
    CGFloat level_;
    std::weak_ptr<Control> control_;
};

/// The simulated screen: several alerts can be up at once, and the application's windows stand
/// behind them.
class Screen {
public:
    /// The alerts that are up and not already going, front first.
    std::vector<std::shared_ptr<ScreenAlert>> alerts() const;

    /// The alert in front, or null.
    std::shared_ptr<ScreenAlert> front() const;

    /// The windows that were made visible and still live, in that order. The screen owns none.
    std::vector<std::shared_ptr<UIWindow>> windows() const;

    /// The window that was made key last, of those that still live, or null.
    std::shared_ptr<UIWindow> keyWindow() const;

    void makeVisible(const std::shared_ptr<UIWindow>& window);
    void makeKey(const std::shared_ptr<UIWindow>& window);

private:
    friend class ScreenAlert;

    struct Presentation {
        std::shared_ptr<ScreenAlert> alert;
        std::shared_ptr<ScreenAlert::Control> control;
    };

    std::uint64_t lastId_ = 0;
    std::vector<Presentation> presentations_; // in the order in which they came
    std::vector<std::weak_ptr<UIWindow>> windows_;
    std::vector<std::weak_ptr<UIWindow>> keyWindows_;
};

} // namespace platform
