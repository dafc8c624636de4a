#pragma once

#include "Platform/Object.h"
#include "Platform/UIKit/AlertStyles.h"
#include "Platform/UIKit/ViewControllers.h"
#include "Platform/UIKit/Views.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A button of the system's alert controller.
///
/// Platform: the class "UIAlertAction" is missing on systems before 8.0.
class UIAlertAction : public Object {
public:
    /// Gets the chosen action.
    using Handler = std::function<void(const std::shared_ptr<UIAlertAction>& action)>;

    /// Makes an action; without a handler its button only closes the alert.
    static std::shared_ptr<UIAlertAction> make(std::optional<std::string> title,
                                               std::intptr_t style, Handler handler);

    virtual std::optional<std::string> title() const = 0;
    virtual std::intptr_t style() const = 0;
};

/// What a popover points at: a bar button item, or a rectangle of a view.
class UIPopoverPresentationController : public Object {
public:
    virtual void setBarButtonItem(std::shared_ptr<UIBarButtonItem> item) = 0;
    virtual void setSourceView(std::shared_ptr<UIView> view) = 0;
    virtual void setSourceRect(CGRect rect) = 0;
};

/// What an alert controller tells about its appearance, on the main thread.
class UIAppearanceObserver {
public:
    virtual ~UIAppearanceObserver() = default;

    /// Called inside the presentation, before the alert is on screen.
    virtual void viewWillAppear(bool animated) = 0;
    /// Called inside the tap or the call that dismisses.
    virtual void viewWillDisappear(bool animated) = 0;
    /// Called on a later turn of the main loop, after the alert has left the screen and before the
    /// handler of a chosen button.
    virtual void viewDidDisappear(bool animated) = 0;
};

/// The system's own alert: title, message, actions, perhaps text fields.
///
/// Ownership:  the system keeps it while it is presented, until the handler of the chosen button
///             has run. It owns its actions.
/// Threads:    main thread only.
/// Platform:   the class "UIAlertController" is missing on systems before 8.0.
class UIAlertController : public Object {
public:
    static std::shared_ptr<UIAlertController> make(std::optional<std::string> title,
                                                   std::optional<std::string> message,
                                                   std::intptr_t preferredStyle);

    /// The observer is told after the controller's own work. Not owned.
    virtual void setAppearanceObserver(std::weak_ptr<UIAppearanceObserver> observer) = 0;

    virtual std::optional<std::string> title() const = 0;
    virtual void setTitle(std::optional<std::string> title) = 0;
    virtual std::optional<std::string> message() const = 0;
    virtual void setMessage(std::optional<std::string> message) = 0;
    virtual std::intptr_t preferredStyle() const = 0;

    virtual void addAction(const std::shared_ptr<UIAlertAction>& action) = 0;

    /// Adds a text field and calls the handler, if there is one, with it.
    virtual void
    addTextFieldWithConfigurationHandler(const std::function<void(UITextField&)>& handler) = 0;

    virtual std::vector<std::shared_ptr<UITextField>> textFields() const = 0;

    /// The view controller that presents this alert, or null.
    virtual std::shared_ptr<UIViewController> presentingViewController() const = 0;

    /// What anchors the alert, or null where it needs no anchor. Action sheets on pads have one.
    virtual std::shared_ptr<UIPopoverPresentationController> popoverPresentationController() = 0;
};

} // namespace platform
