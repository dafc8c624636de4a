#include "PGAlertController/Source/PGAlertController.h"

#include "Platform/Exceptions.h"

#include <algorithm>
#include <utility>

namespace purgo {

namespace {

using Registry = std::set<std::shared_ptr<PGAlertController>>;

// Neither is ever destroyed: at the end of the process, alerts that are up go with it.
Registry& registry() {
    static auto& alertControllers = *new Registry;
    return alertControllers;
}

std::string& placeholder() {
    static auto& text = *new std::string("<PGAlertControllerCountdown>");
    return text;
}

[[noreturn]] void refuse(const char* reason) {
    throw platform::Exception(platform::NSInternalInconsistencyException, reason);
}

/// Takes the one place that an alert has for a kind of action.
void takePlace(bool& isTaken, const char* reasonWhenTaken) {
    if (isTaken)
        refuse(reasonWhenTaken);
    isTaken = true;
}

bool isViewOrBarButtonItem(const platform::Object& control) {
    return dynamic_cast<const platform::UIView*>(&control) ||
           dynamic_cast<const platform::UIBarButtonItem*>(&control);
}

} // namespace

std::string PGAlertController::countdownPlaceholder() {
    return placeholder();
}

void PGAlertController::setCountdownPlaceholder(std::optional<std::string> newPlaceholder) {
    if (!newPlaceholder || newPlaceholder->empty())
        refuse("Default countdown placeholder cannot be empty or nil.");
    placeholder() = std::move(*newPlaceholder);
}

const Registry& PGAlertController::alertControllers() {
    return registry();
}

std::shared_ptr<PGAlertController>
PGAlertController::alertControllerWithTitle(std::optional<std::string> title,
                                            std::optional<std::string> message,
                                            std::intptr_t preferredStyle) {
    std::shared_ptr<PGAlertController> alert(new PGAlertController);
    alert->concreteController_ =
        makeConcreteController(std::move(title), std::move(message), preferredStyle);
    alert->concreteController_->setACDelegate(alert);
    return alert;
}

std::optional<std::string> PGAlertController::title() const {
    return concreteController_->title();
}

void PGAlertController::setTitle(std::optional<std::string> title) {
    concreteController_->setTitle(std::move(title));
}

std::optional<std::string> PGAlertController::message() const {
    return concreteController_->message();
}

void PGAlertController::setMessage(std::optional<std::string> message) {
    concreteController_->setMessage(std::move(message));
}

std::vector<std::shared_ptr<PGAlertAction>> PGAlertController::actions() const {
    return concreteController_->actions();
}

std::intptr_t PGAlertController::preferredStyle() const {
    return concreteController_->preferredStyle();
}

void PGAlertController::addAction(std::shared_ptr<PGAlertAction> action) {
    // A place is taken before the next rule is asked: a refused action keeps those that it got.
    if (action->style() == UIAlertActionStyleDestructive)
        takePlace(hasDestructiveAction_, "PGAlertController can only have one action with a style "
                                         "of UIAlertActionStyleDestructive.");
    else if (action->style() == UIAlertActionStyleCancel)
        takePlace(hasCancelAction_, "PGAlertController can only have one action with a style of "
                                    "UIAlertActionStyleCancel.");
    if (action->autoDismissFlag())
        takePlace(hasAutoDismissAction_, "PGAlertController can only have one action with the "
                                         "autoDismissFlag property set to YES.");
    checkTextFieldMaxActions();
    concreteController_->addAction(std::move(action));
}

void PGAlertController::checkTextFieldSupport() const {
    if (preferredStyle() != UIAlertControllerStyleAlert)
        refuse("Text field is only supported on an alert with style UIAlertControllerStyleAlert.");
}

void PGAlertController::checkTextFieldMaxActions() const {
    if (preferredStyle() != UIAlertControllerStyleAlert)
        return;
    if (actions().size() >= 2 && textField())
        refuse("PGAlertController can have a maximum of two actions when it has a text field.");
}

void PGAlertController::showTextFieldWithConfigurationHandler(const TextFieldHandler& handler) {
    checkTextFieldSupport();
    checkTextFieldMaxActions();
    concreteController_->showTextFieldWithConfigurationHandler(handler);
}

std::shared_ptr<platform::UITextField> PGAlertController::textField() const {
    checkTextFieldSupport();
    return concreteController_->textField();
}

void PGAlertController::show() {
    if (preferredStyle() != UIAlertControllerStyleAlert)
        refuse("The 'show' method is only supported on an alert with style "
               "UIAlertControllerStyleAlert.");
    showInViewController(nullptr);
}

void PGAlertController::showInViewController(
    const std::shared_ptr<platform::UIViewController>& viewController) {
    showInViewController(viewController, nullptr);
}

void PGAlertController::showInViewController(
    const std::shared_ptr<platform::UIViewController>& viewController,
    const std::shared_ptr<platform::Object>& fromControl) {
    showInViewController(viewController, fromControl, kPGACInvalidRect);
}

void PGAlertController::showInViewController(
    const std::shared_ptr<platform::UIViewController>& viewController,
    const std::shared_ptr<platform::Object>& fromControl, platform::CGRect rect) {
    if (!viewController && preferredStyle() == UIAlertControllerStyleActionSheet)
        refuse("A valid view controller is required to display an alert with style "
               "UIAlertControllerStyleActionSheet.");
    if (fromControl && !isViewOrBarButtonItem(*fromControl))
        refuse("The control argument must be an UIView or UIBarButtonItem instance.");
    registry().insert(shared_from_this());
    concreteController_->showInViewController(viewController, fromControl, rect);
}

void PGAlertController::dismiss() {
    concreteController_->dismiss();
}

void PGAlertController::concreteControllerWillShow() {
    if (autoDismissTimeout_ != 0)
        startAutoDismissTimer();
}

void PGAlertController::concreteControllerWillDismiss() {
    // A copy, because the block may set another one.
    if (const auto block = willDismissBlock_)
        block();
}

void PGAlertController::concreteControllerDidDismiss() {
    const auto self = shared_from_this();
    stopAutoDismissTimer();
    if (const auto action = shouldPerformAutoDismissAction_ ? autoDismissAction() : nullptr)
        action->performHandler();
    if (const auto block = didDismissBlock_)
        block();
    registry().erase(self);
}

/// Takes the timer of a new countdown, or null, in the place of the present one.
void PGAlertController::setAutoDismissTimer(const std::shared_ptr<platform::Timer>& timer) {
    const auto previous = autoDismissTimer_.lock();
    if (previous == timer)
        return;
    if (previous)
        previous->invalidate();
    autoDismissTimer_ = timer;
}

void PGAlertController::startAutoDismissTimer() {
    auto format = message();
    const auto& text = placeholder();
    const auto location = format ? format->find(text) : std::string::npos;
    if (location != std::string::npos) {
        countdownMessageFormat_ = std::move(format);
        countDownPlaceholderRange_ = {location, text.size()};
        setMessage(countdownMessage());
    }
    // The timer owns the facade, which is not released while it counts.
    setAutoDismissTimer(platform::Timer::scheduled(
        1.0, [self = shared_from_this()] { self->autoDismissTimerTick(); }));
}

void PGAlertController::stopAutoDismissTimer() {
    setAutoDismissTimer(nullptr);
}

void PGAlertController::autoDismissTimerTick() {
    const auto self = shared_from_this();
    --autoDismissTimeout_;
    if (countdownMessageFormat_)
        setMessage(countdownMessage());
    if (autoDismissTimeout_ != 0)
        return;
    // The timer goes on until the backend reports the dismissal.
    shouldPerformAutoDismissAction_ = true;
    dismiss();
}

std::string PGAlertController::countdownMessage() const {
    auto text = *countdownMessageFormat_;
    text.replace(countDownPlaceholderRange_.location, countDownPlaceholderRange_.length,
                 std::to_string(autoDismissTimeout_));
    return text;
}

std::shared_ptr<PGAlertAction> PGAlertController::autoDismissAction() const {
    const auto all = actions();
    const auto flagged = std::find_if(all.begin(), all.end(),
                                      [](const auto& action) { return action->autoDismissFlag(); });
    return flagged == all.end() ? nullptr : *flagged;
}

} // namespace purgo
