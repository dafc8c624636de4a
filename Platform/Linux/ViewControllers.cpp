#include "Platform/Linux/ViewControllers.h"

#include "Platform/Linux/Device.h"

#include <utility>

namespace platform {

std::shared_ptr<UIViewController> UIViewController::make() {
    return std::make_shared<SimulatedViewController>();
}

std::shared_ptr<UIWindow> UIWindow::make(CGRect frame) {
    return std::make_shared<SimulatedWindow>(frame);
}

std::shared_ptr<UIWindow> keyWindow() {
    return Device::current().screen().keyWindow();
}

std::vector<std::shared_ptr<UIWindow>> applicationWindows() {
    return Device::current().screen().windows();
}

void SimulatedWindow::setRootViewController(std::shared_ptr<UIViewController> controller) {
    rootViewController_ = std::move(controller);
    if (const auto root = std::dynamic_pointer_cast<SimulatedViewController>(rootViewController_))
        root->setWindow(weak_from_this());
}

void SimulatedWindow::makeKeyAndVisible() {
    auto& screen = Device::current().screen();
    screen.makeVisible(shared_from_this());
    screen.makeKey(shared_from_this());
}

std::shared_ptr<SimulatedAlertController> SimulatedViewController::presentedViewController() const {
    const auto presented = presented_.lock();
    const bool isPresenting = presented && presented->presentingViewController().get() == this;
    return isPresenting ? presented : nullptr;
}

void SimulatedViewController::presentViewController(
    const std::shared_ptr<UIAlertController>& controller, bool animated) {
    const auto alert = std::dynamic_pointer_cast<SimulatedAlertController>(controller);
    if (presentedViewController() || alert->presentingViewController())
        return;
    presented_ = alert;
    alert->presentFrom(shared_from_this(), animated);
}

void SimulatedViewController::dismissViewController(bool animated) {
    if (const auto presented = presentedViewController())
        presented->dismissAnimated(animated);
}

} // namespace platform
