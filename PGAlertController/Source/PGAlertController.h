#pragma once

#include "PGAlertController/Source/PGACConcrete.h"
#include "PGAlertController/Source/PGAlertAction.h"
#include "Platform/Timer.h"

#include <set>

namespace purgo {

/// An alert or action sheet that is the same on every system version, with a countdown that closes
/// it and runs an action.
///
/// While it counts down, the first placeholder in its message shows the seconds left. At zero the
/// alert closes and the action with the auto-dismiss flag runs, if there is one. What the facade
/// does not do itself it passes to its backend.
///
/// States:     built -> presented -> showing -> dismissing -> dismissed.
/// Ownership:  shared; the registry keeps a shown alert until it has been dismissed, so nobody else
///             needs to. It owns its backend, its actions and its callbacks.
/// Threads:    main thread only.
/// Errors:     misuse throws `NSInternalInconsistencyException`.
class PGAlertController : public PGAlertControllerProtocol,
                          public PGAlertControllerAdditions,
                          public PGACDelegate,
                          public std::enable_shared_from_this<PGAlertController> {
public:
    using Block = std::function<void()>;

    /// Whether alerts and actions made from now on keep to the older controls.
    static bool forceViewAPI() { return purgo::forceViewAPI(); }
    static void setForceViewAPI(bool force) { purgo::setForceViewAPI(force); }

    /// The text in a message that the countdown replaces. Errors: an empty or missing one throws.
    static std::string countdownPlaceholder();
    static void setCountdownPlaceholder(std::optional<std::string> placeholder);

    /// The registry: the alerts that were shown and have not been dismissed yet.
    static const std::set<std::shared_ptr<PGAlertController>>& alertControllers();

    static std::shared_ptr<PGAlertController>
    alertControllerWithTitle(std::optional<std::string> title, std::optional<std::string> message,
                             std::intptr_t preferredStyle);

    std::optional<std::string> title() const override;
    void setTitle(std::optional<std::string> title) override;
    std::optional<std::string> message() const override;
    /// While a countdown writes into the message, its next tick undoes the change.
    void setMessage(std::optional<std::string> message) override;
    std::vector<std::shared_ptr<PGAlertAction>> actions() const override;
    std::intptr_t preferredStyle() const override;

    /// Adds an action.
    ///
    /// Errors: a second Cancel, Destructive or auto-dismiss action throws, and so does a third
    ///         action beside a text field. The places that a refused action has taken before the
    ///         rule that it broke stay taken.
    void addAction(std::shared_ptr<PGAlertAction> action) override;

    /// Errors: throws on an action sheet.
    void showTextFieldWithConfigurationHandler(const TextFieldHandler& handler) override;
    std::shared_ptr<platform::UITextField> textField() const override;

    /// Shows an alert over everything. Errors: throws on an action sheet.
    void show();

    /// Errors: an action sheet without a view controller throws, and so does a control that is
    ///         neither a view nor a bar button item.
    void showInViewController(const std::shared_ptr<platform::UIViewController>& viewController);
    void showInViewController(const std::shared_ptr<platform::UIViewController>& viewController,
                              const std::shared_ptr<platform::Object>& fromControl);
    void showInViewController(const std::shared_ptr<platform::UIViewController>& viewController,
                              const std::shared_ptr<platform::Object>& fromControl,
                              platform::CGRect rect) override;
    void dismiss() override;

    /// The seconds left until the alert closes; 0, as at first, means that it stays. Read when the
    /// alert appears.
    std::uintptr_t autoDismissTimeout() const { return autoDismissTimeout_; }
    void setAutoDismissTimeout(std::uintptr_t seconds) { autoDismissTimeout_ = seconds; }

    /// Called when the alert is about to go, whatever closed it.
    const Block& willDismissBlock() const { return willDismissBlock_; }
    void setWillDismissBlock(Block block) { willDismissBlock_ = std::move(block); }

    /// Called when the alert has gone and the chosen or flagged action has run.
    const Block& didDismissBlock() const { return didDismissBlock_; }
    void setDidDismissBlock(Block block) { didDismissBlock_ = std::move(block); }

    void concreteControllerWillShow() override;
    void concreteControllerWillDismiss() override;
    void concreteControllerDidDismiss() override;

private:
    /// A part of a text. Units: bytes, not characters.
    struct Range {
        std::size_t location = 0;
        std::size_t length = 0;
    };

    PGAlertController() = default;

    void checkTextFieldSupport() const;
    void checkTextFieldMaxActions() const;
    void setAutoDismissTimer(const std::shared_ptr<platform::Timer>& timer);
    void startAutoDismissTimer();
    void stopAutoDismissTimer();
    void autoDismissTimerTick();
    std::string countdownMessage() const;
    std::shared_ptr<PGAlertAction> autoDismissAction() const;

    bool hasAutoDismissAction_ = false;
    bool hasCancelAction_ = false;
    bool hasDestructiveAction_ = false;
    bool shouldPerformAutoDismissAction_ = false;
    std::weak_ptr<platform::Timer> autoDismissTimer_;
    std::uintptr_t autoDismissTimeout_ = 0;
    std::shared_ptr<PGACConcrete> concreteController_;
    std::optional<std::string> countdownMessageFormat_;
    Block didDismissBlock_;
    Block willDismissBlock_;
    Range countDownPlaceholderRange_;
};

} // namespace purgo
