#include "PGAlertController/Source/PGACConcrete_Controller.h"

#include "PGAlertController/Source/PGAlertAction.h"
#include "PGAlertController/Source/PGAlertActionConformance.h"
#include "Platform/System.h"

#include <utility>

namespace purgo {

namespace {

std::shared_ptr<platform::UIAlertAction>
systemActionFor(const std::shared_ptr<PGAlertAction>& action) {
    const auto wrapped =
        std::dynamic_pointer_cast<PGAlertActionConformance>(action->concreteAction());
    if (wrapped)
        return wrapped->action();
    // Made while the older controls were forced, the action wraps nothing that the system knows.
    return platform::UIAlertAction::make(action->title(), action->style(),
                                         [action](const auto&) { action->performHandler(); });
}

platform::CGRect frameForPrivateWindow() {
    if (const auto key = platform::keyWindow())
        return key->frame();
    const auto windows = platform::applicationWindows();
    return windows.empty() ? platform::mainScreenBounds() : windows.front()->frame();
}

void anchor(platform::UIPopoverPresentationController& popover,
            const std::shared_ptr<platform::Object>& control,
            platform::UIViewController& viewController, platform::CGRect rect) {
    if (auto item = std::dynamic_pointer_cast<platform::UIBarButtonItem>(control))
        return popover.setBarButtonItem(std::move(item));
    auto view = std::dynamic_pointer_cast<platform::UIView>(control);
    if (!view)
        view = viewController.view();
    popover.setSourceView(view);
    popover.setSourceRect(anchorRect(rect, *view));
}

} // namespace

bool PGACConcrete_Controller::isSupported() {
    return platform::classNamed("UIAlertController") != nullptr;
}

std::shared_ptr<PGACConcrete_Controller>
PGACConcrete_Controller::alertControllerWithTitle(std::optional<std::string> title,
                                                  std::optional<std::string> message,
                                                  std::intptr_t preferredStyle) {
    std::shared_ptr<PGACConcrete_Controller> backend(new PGACConcrete_Controller(
        platform::UIAlertController::make(std::move(title), std::move(message), preferredStyle)));
    backend->controller_->setAppearanceObserver(backend);
    return backend;
}

PGACConcrete_Controller::PGACConcrete_Controller(
    std::shared_ptr<platform::UIAlertController> controller)
    : controller_(std::move(controller)) {}

void PGACConcrete_Controller::setACDelegate(std::weak_ptr<PGACDelegate> delegate) {
    ACDelegate_ = std::move(delegate);
}

void PGACConcrete_Controller::setTitle(std::optional<std::string> title) {
    controller_->setTitle(std::move(title));
}

void PGACConcrete_Controller::setMessage(std::optional<std::string> message) {
    controller_->setMessage(std::move(message));
}

void PGACConcrete_Controller::addAction(std::shared_ptr<PGAlertAction> action) {
    controller_->addAction(systemActionFor(action));
    actions_.push_back(std::move(action));
}

void PGACConcrete_Controller::showTextFieldWithConfigurationHandler(
    const TextFieldHandler& handler) {
    if (!textField())
        controller_->addTextFieldWithConfigurationHandler(handler);
}

std::shared_ptr<platform::UITextField> PGACConcrete_Controller::textField() const {
    const auto fields = controller_->textFields();
    return fields.empty() ? nullptr : fields.front();
}

void PGACConcrete_Controller::showInViewController(
    const std::shared_ptr<platform::UIViewController>& viewController,
    const std::shared_ptr<platform::Object>& fromControl, platform::CGRect rect) {
    const auto presenter = viewController ? viewController : rootOfPrivateWindow();
    if (const auto popover = controller_->popoverPresentationController())
        anchor(*popover, fromControl, *presenter, rect);
    presenter->presentViewController(controller_, true);
}

std::shared_ptr<platform::UIViewController> PGACConcrete_Controller::rootOfPrivateWindow() {
    auto window = platform::UIWindow::make(frameForPrivateWindow());
    auto root = platform::UIViewController::make();
    window->setRootViewController(root);
    window->setClearBackgroundColor();
    window->setWindowLevel(platform::UIWindowLevelAlert + 1);
    window->makeKeyAndVisible();
    setWindow(std::move(window));
    return root;
}

void PGACConcrete_Controller::dismiss() {
    if (const auto presenter = controller_->presentingViewController())
        presenter->dismissViewController(true);
}

void PGACConcrete_Controller::viewWillAppear(bool /*animated*/) {
    if (const auto delegate = ACDelegate())
        delegate->concreteControllerWillShow();
}

void PGACConcrete_Controller::viewWillDisappear(bool /*animated*/) {
    if (const auto delegate = ACDelegate())
        delegate->concreteControllerWillDismiss();
}

void PGACConcrete_Controller::viewDidDisappear(bool /*animated*/) {
    // The facade may let go of this backend when it hears of the end.
    const auto self = shared_from_this();
    setWindow(nullptr);
    if (const auto delegate = ACDelegate())
        delegate->concreteControllerDidDismiss();
}

} // namespace purgo
