#pragma once

#include "PGAlertController/Source/PGACConcrete.h"
#include "Platform/UIKit/AlertController.h"
#include "Platform/UIKit/Windows.h"

namespace purgo {

/// The backend on the system's alert controller.
///
/// States:     made -> presented, from a view controller or from a window of its own -> shown ->
///             disappearing -> gone.
/// Ownership:  owns the system's controller, which tells it about its appearance without owning
///             it, and the private window while there is one.
/// Threads:    main thread only.
/// Platform:   part of 64-bit builds only.
class PGACConcrete_Controller : public PGACConcrete,
                                public platform::UIAppearanceObserver,
                                public std::enable_shared_from_this<PGACConcrete_Controller> {
public:
    /// Whether the system has an alert controller.
    static bool isSupported();

    static std::shared_ptr<PGACConcrete_Controller>
    alertControllerWithTitle(std::optional<std::string> title, std::optional<std::string> message,
                             std::intptr_t preferredStyle);

    std::shared_ptr<PGACDelegate> ACDelegate() const override { return ACDelegate_.lock(); }
    void setACDelegate(std::weak_ptr<PGACDelegate> delegate) override;

    std::optional<std::string> title() const override { return controller_->title(); }
    void setTitle(std::optional<std::string> title) override;
    std::optional<std::string> message() const override { return controller_->message(); }
    void setMessage(std::optional<std::string> message) override;
    std::vector<std::shared_ptr<PGAlertAction>> actions() const override { return actions_; }
    std::intptr_t preferredStyle() const override { return controller_->preferredStyle(); }
    void addAction(std::shared_ptr<PGAlertAction> action) override;

    /// Adds the text field and has the handler called with it; does nothing when there is one.
    void showTextFieldWithConfigurationHandler(const TextFieldHandler& handler) override;
    std::shared_ptr<platform::UITextField> textField() const override;

    /// Without a view controller the alert gets a clear window above the system's own alerts.
    void showInViewController(const std::shared_ptr<platform::UIViewController>& viewController,
                              const std::shared_ptr<platform::Object>& fromControl,
                              platform::CGRect rect) override;
    void dismiss() override;

    void viewWillAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void viewDidDisappear(bool animated) override;

    /// The private window, or null when the alert has none.
    const std::shared_ptr<platform::UIWindow>& window() const { return window_; }
    void setWindow(std::shared_ptr<platform::UIWindow> window) { window_ = std::move(window); }

private:
    explicit PGACConcrete_Controller(std::shared_ptr<platform::UIAlertController> controller);

    std::shared_ptr<platform::UIViewController> rootOfPrivateWindow();

    std::weak_ptr<PGACDelegate> ACDelegate_;
    std::shared_ptr<platform::UIWindow> window_;
    std::shared_ptr<platform::UIAlertController> controller_;
    // What stands behind the controller's own list, element by element.
    std::vector<std::shared_ptr<PGAlertAction>> actions_;
};

} // namespace purgo
