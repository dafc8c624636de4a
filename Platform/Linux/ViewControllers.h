#pragma once

#include "Platform/Linux/Screen.h"
#include "Platform/UIKit/AlertController.h"
#include "Platform/UIKit/ViewControllers.h"
#include "Platform/UIKit/Windows.h"

#include <vector>

namespace platform {

class SimulatedAlertController;

/// A window of the simulated device. It shows nothing itself; its level decides which alerts lie in
/// front.
class SimulatedWindow : public UIWindow, public std::enable_shared_from_this<SimulatedWindow> {
public:
    using UIWindow::UIWindow;

    CGFloat windowLevel() const { return level_; }

    void setRootViewController(std::shared_ptr<UIViewController> controller) override;
    void setWindowLevel(CGFloat level) override { level_ = level; }
    void setClearBackgroundColor() override {}
    void makeKeyAndVisible() override;

private:
    CGFloat level_ = 0;
    std::shared_ptr<UIViewController> rootViewController_;
};

/// A plain view controller of the simulated device.
///
/// Ownership: it knows the alert controller that it presents; the screen owns both meanwhile.
class SimulatedViewController : public UIViewController,
                                public std::enable_shared_from_this<SimulatedViewController> {
public:
    SimulatedViewController() : view_(std::make_shared<UIView>(mainScreenBounds())) {}

    /// The window whose root view controller it is.
    void setWindow(std::weak_ptr<SimulatedWindow> window) { window_ = std::move(window); }
    std::shared_ptr<SimulatedWindow> window() const { return window_.lock(); }

    std::shared_ptr<UIView> view() override { return view_; }
    void presentViewController(const std::shared_ptr<UIAlertController>& controller,
                               bool animated) override;
    void dismissViewController(bool animated) override;

private:
    std::shared_ptr<SimulatedAlertController> presentedViewController() const;

    std::shared_ptr<UIView> view_;
    std::weak_ptr<SimulatedWindow> window_;
    std::weak_ptr<SimulatedAlertController> presented_;
};

/// The system's alert controller on the simulated screen.
class SimulatedAlertController final
    : public UIAlertController,
      public std::enable_shared_from_this<SimulatedAlertController> {
public:
    SimulatedAlertController(std::optional<std::string> title, std::optional<std::string> message,
                             std::intptr_t preferredStyle);

    void setAppearanceObserver(std::weak_ptr<UIAppearanceObserver> observer) override;

    std::optional<std::string> title() const override { return alert_->contents().title; }
    void setTitle(std::optional<std::string> title) override;
    std::optional<std::string> message() const override { return alert_->contents().message; }
    void setMessage(std::optional<std::string> message) override;
    std::intptr_t preferredStyle() const override { return preferredStyle_; }

    void addAction(const std::shared_ptr<UIAlertAction>& action) override;
    void
    addTextFieldWithConfigurationHandler(const std::function<void(UITextField&)>& handler) override;
    std::vector<std::shared_ptr<UITextField>> textFields() const override { return textFields_; }

    std::shared_ptr<UIViewController> presentingViewController() const override;
    std::shared_ptr<UIPopoverPresentationController> popoverPresentationController() override;

    void presentFrom(const std::shared_ptr<SimulatedViewController>& presenter, bool animated);
    void dismissAnimated(bool animated);

private:
    class Presentation;
    class Popover;

    void layOutButtons();
    void performAction(std::intptr_t buttonIndex);

    std::intptr_t preferredStyle_;
    std::shared_ptr<ScreenAlert> alert_;
    std::vector<std::shared_ptr<UIAlertAction>> actions_; // in the order of their buttons
    std::vector<std::shared_ptr<UITextField>> textFields_;
    std::weak_ptr<UIAppearanceObserver> observer_;
    std::weak_ptr<SimulatedViewController> presenter_;
    std::shared_ptr<UIPopoverPresentationController> popover_;
    bool isAnimated_ = true;
};

} // namespace platform
