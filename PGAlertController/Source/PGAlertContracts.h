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

namespace purgo {

class PGAlertAction;

using platform::UIAlertActionStyleCancel;
using platform::UIAlertActionStyleDefault;
using platform::UIAlertActionStyleDestructive;
using platform::UIAlertControllerStyleActionSheet;
using platform::UIAlertControllerStyleAlert;

extern "C" {
/// The rectangle that means that none was passed. Any other one, a zero rectangle included, is a
/// real place to point at.
[[gnu::visibility("default")]] extern const platform::CGRect kPGACInvalidRect;
}

/// What every action of an alert answers.
class PGAlertActionProtocol {
public:
    /// Runs when an action was chosen; gets that action.
    using Handler = std::function<void(PGAlertActionProtocol& action)>;

    virtual ~PGAlertActionProtocol() = default;

    virtual std::optional<std::string> title() const = 0;
    virtual std::intptr_t style() const = 0;
};

/// An alert: what it says and what can be chosen.
///
/// Threads: main thread only.
class PGAlertControllerProtocol {
public:
    virtual ~PGAlertControllerProtocol() = default;

    virtual std::optional<std::string> title() const = 0;
    virtual void setTitle(std::optional<std::string> title) = 0;
    virtual std::optional<std::string> message() const = 0;
    virtual void setMessage(std::optional<std::string> message) = 0;

    /// The actions that were added, in the order in which the alert holds them.
    virtual std::vector<std::shared_ptr<PGAlertAction>> actions() const = 0;

    /// One of the alert styles. Fixed at creation.
    virtual std::intptr_t preferredStyle() const = 0;

    /// Requires: an action that is not null.
    virtual void addAction(std::shared_ptr<PGAlertAction> action) = 0;
};

/// How an alert comes on the screen and goes.
class PGAlertControllerAdditions {
public:
    using TextFieldHandler = std::function<void(platform::UITextField& textField)>;

    virtual ~PGAlertControllerAdditions() = default;

    /// Gives the alert a text field and lets the handler, if there is one, configure it.
    virtual void showTextFieldWithConfigurationHandler(const TextFieldHandler& handler) = 0;

    /// Presents the alert.
    ///
    /// The view controller may be null for an alert that is no action sheet. The control is a view
    /// or a bar button item that an action sheet points at, or null; the rectangle is a part of
    /// that view, or `kPGACInvalidRect`.
    virtual void
    showInViewController(const std::shared_ptr<platform::UIViewController>& viewController,
                         const std::shared_ptr<platform::Object>& fromControl,
                         platform::CGRect rect) = 0;

    /// Closes the alert without choosing an action.
    virtual void dismiss() = 0;

    /// The alert's text field, or null.
    virtual std::shared_ptr<platform::UITextField> textField() const = 0;
};

/// What a backend reports over one presentation, in this order.
class PGACDelegate {
public:
    virtual ~PGACDelegate() = default;

    /// The control is about to appear.
    virtual void concreteControllerWillShow() = 0;
    /// The control is about to go.
    virtual void concreteControllerWillDismiss() = 0;
    /// The control has left the screen.
    virtual void concreteControllerDidDismiss() = 0;
};

} // namespace purgo
