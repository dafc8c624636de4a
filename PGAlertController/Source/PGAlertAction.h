#pragma once

#include "PGAlertController/Source/PGAlertContracts.h"

namespace purgo {

/// A button of an alert: a title, a style, and a handler that runs when it is chosen.
///
/// It wraps an action of the kind that the backend understands, chosen once, at its creation, and
/// adds the handler and the mark of the countdown to it.
///
/// Ownership:  shared; an alert keeps the actions that were added to it. It owns the wrapped action
///             and its handler with all that this captured.
/// Threads:    main thread only.
class PGAlertAction : public PGAlertActionProtocol,
                      public std::enable_shared_from_this<PGAlertAction> {
public:
    /// Makes an action. Title and handler may be missing; any style is kept as it is.
    static std::shared_ptr<PGAlertAction> actionWithTitle(std::optional<std::string> title,
                                                          std::intptr_t style, Handler handler);

    std::optional<std::string> title() const override { return concreteAction_->title(); }
    std::intptr_t style() const override { return concreteAction_->style(); }

    /// Runs the handler, if there is one, with this action.
    ///
    /// Reentrancy: the handler may release the last reference to the action.
    void performHandler();

    /// Whether the alert runs this action when its countdown ends. At first it does not.
    bool autoDismissFlag() const { return autoDismissFlag_; }
    void setAutoDismissFlag(bool flag) { autoDismissFlag_ = flag; }

    /// The wrapped action. Never null.
    const std::shared_ptr<PGAlertActionProtocol>& concreteAction() const { return concreteAction_; }
    void setConcreteAction(std::shared_ptr<PGAlertActionProtocol> action);

    const Handler& handler() const { return handler_; }

private:
    PGAlertAction(std::optional<std::string> title, std::intptr_t style, Handler handler);

    bool autoDismissFlag_ = false;
    std::shared_ptr<PGAlertActionProtocol> concreteAction_;
    Handler handler_;
};

} // namespace purgo
