#include "PGAlertController/Source/PGACConcrete_View.h"

#include "Platform/Text.h"

#include <algorithm>
#include <utility>

namespace purgo {

std::shared_ptr<PGACConcrete_View>
PGACConcrete_View::alertControllerWithTitle(std::optional<std::string> title,
                                            std::optional<std::string> message,
                                            std::intptr_t preferredStyle) {
    return std::shared_ptr<PGACConcrete_View>(
        new PGACConcrete_View(std::move(title), std::move(message), preferredStyle));
}

PGACConcrete_View::PGACConcrete_View(std::optional<std::string> title,
                                     std::optional<std::string> message,
                                     std::intptr_t preferredStyle)
    : message_(std::move(message)), title_(std::move(title)), preferredStyle_(preferredStyle) {}

void PGACConcrete_View::setACDelegate(std::weak_ptr<PGACDelegate> delegate) {
    ACDelegate_ = std::move(delegate);
}

void PGACConcrete_View::setTitle(std::optional<std::string> title) {
    title_ = std::move(title);
    refreshControlTitle();
}

void PGACConcrete_View::setMessage(std::optional<std::string> message) {
    message_ = std::move(message);
    refreshControlMessage();
}

void PGACConcrete_View::addAction(std::shared_ptr<PGAlertAction> action) {
    privateActions_.push_back(std::move(action));
}

platform::UIAlertControl& PGACConcrete_View::control() {
    if (!alertView_ && !actionSheet_)
        makeControl();
    if (alertView_)
        return *alertView_;
    return *actionSheet_;
}

void PGACConcrete_View::makeControl() {
    if (isAlert()) {
        alertView_ = platform::UIAlertView::make();
        alertView_->setDelegate(weak_from_this());
        return;
    }
    actionSheet_ = platform::UIActionSheet::make();
    actionSheet_->setActionSheetStyle(platform::UIActionSheetStyle::blackTranslucent);
    actionSheet_->setDelegate(weak_from_this());
}

void PGACConcrete_View::refreshControlTitle() {
    // A sheet has no line for a message, so its title carries both.
    if (!isAlert() && message_)
        control().setTitle(platform::formatted(title_) + "\n\n" + *message_);
    else
        control().setTitle(title_);
}

void PGACConcrete_View::refreshControlMessage() {
    if (!isAlert())
        return refreshControlTitle();
    control();
    alertView_->setMessage(message_);
}

void PGACConcrete_View::configureControl() {
    configureButtons();
    refreshControlTitle();
    refreshControlMessage();
}

void PGACConcrete_View::configureButtons() {
    if (privateActions_.empty())
        return;
    const auto cancelIndex = moveCancelAction();
    const auto destructiveIndex = indexOfActionWithStyle(UIAlertActionStyleDestructive);
    for (const auto& action : privateActions_)
        control().addButtonWithTitle(action->title());
    if (cancelIndex)
        control().setCancelButtonIndex(*cancelIndex);
    // An alert view knows no destructive button.
    if (actionSheet_ && destructiveIndex)
        actionSheet_->setDestructiveButtonIndex(*destructiveIndex);
}

std::optional<std::intptr_t> PGACConcrete_View::indexOfActionWithStyle(std::intptr_t style) const {
    const auto found =
        std::find_if(privateActions_.begin(), privateActions_.end(),
                     [style](const auto& action) { return action->style() == style; });
    if (found == privateActions_.end())
        return std::nullopt;
    return found - privateActions_.begin();
}

/// Moves the Cancel action to where its button belongs and returns that place. The actions
/// themselves move, so that a button's index is its action's.
std::optional<std::intptr_t> PGACConcrete_View::moveCancelAction() {
    const auto index = indexOfActionWithStyle(UIAlertActionStyleCancel);
    if (!index)
        return std::nullopt;
    // One or two buttons of an alert stand side by side, with Cancel on the left.
    const bool isSideBySide = isAlert() && privateActions_.size() < 3;
    const auto target = isSideBySide ? 0 : static_cast<std::intptr_t>(privateActions_.size()) - 1;
    const auto cancel = privateActions_.begin() + *index;
    if (*index < target)
        std::rotate(cancel, cancel + 1, privateActions_.begin() + target + 1);
    else
        std::rotate(privateActions_.begin() + target, cancel, cancel + 1);
    return target;
}

void PGACConcrete_View::showTextFieldWithConfigurationHandler(const TextFieldHandler& handler) {
    control();
    if (!textField_ && alertView_->respondsToSetAlertViewStyle()) {
        alertView_->setAlertViewStyle(platform::UIAlertViewStyle::plainTextInput);
        textField_ = alertView_->textFieldAtIndex(0);
    } else if (!textField_) {
        textField_ = alertView_->addTextFieldWithValue(std::nullopt, std::nullopt);
    }
    if (handler)
        handler(*textField_);
}

void PGACConcrete_View::showInViewController(
    const std::shared_ptr<platform::UIViewController>& viewController,
    const std::shared_ptr<platform::Object>& fromControl, platform::CGRect rect) {
    configureControl();
    if (alertView_)
        alertView_->show();
    else
        showActionSheet(viewController.get(), fromControl, rect);
}

void PGACConcrete_View::showActionSheet(platform::UIViewController* viewController,
                                        const std::shared_ptr<platform::Object>& fromControl,
                                        platform::CGRect rect) {
    if (showFromBar(fromControl))
        return;
    auto anchorView = std::dynamic_pointer_cast<platform::UIView>(fromControl);
    if (!anchorView)
        anchorView = viewController->view();
    if (platform::userInterfaceIdiom() == platform::UserInterfaceIdiom::phone)
        actionSheet_->showInView(anchorView);
    else
        actionSheet_->showFromRect(anchorRect(rect, *anchorView), anchorView, true);
}

/// Shows the sheet from a bar or from a button in one. On a pad only the button has a place of its
/// own; a bar is a view like any other there.
bool PGACConcrete_View::showFromBar(const std::shared_ptr<platform::Object>& bar) {
    const bool isPhone = platform::userInterfaceIdiom() == platform::UserInterfaceIdiom::phone;
    const auto tabBar = std::dynamic_pointer_cast<platform::UITabBar>(bar);
    const auto toolbar = std::dynamic_pointer_cast<platform::UIToolbar>(bar);
    const auto item = std::dynamic_pointer_cast<platform::UIBarButtonItem>(bar);
    if (isPhone && tabBar)
        actionSheet_->showFromTabBar(tabBar);
    else if (isPhone && toolbar)
        actionSheet_->showFromToolbar(toolbar);
    else if (item)
        actionSheet_->showFromBarButtonItem(item, true);
    else
        return false;
    return true;
}

void PGACConcrete_View::dismiss() {
    control().dismissWithClickedButtonIndex(-1, true);
}

void PGACConcrete_View::willPresentAlertView(platform::UIAlertView& /*alertView*/) {
    willShow();
}

void PGACConcrete_View::willDismissWithButtonIndex(platform::UIAlertView& /*alertView*/,
                                                   std::intptr_t /*buttonIndex*/) {
    willDismiss();
}

void PGACConcrete_View::didDismissWithButtonIndex(platform::UIAlertView& /*alertView*/,
                                                  std::intptr_t buttonIndex) {
    didDismiss(buttonIndex);
}

void PGACConcrete_View::willPresentActionSheet(platform::UIActionSheet& /*actionSheet*/) {
    willShow();
}

void PGACConcrete_View::willDismissWithButtonIndex(platform::UIActionSheet& /*actionSheet*/,
                                                   std::intptr_t /*buttonIndex*/) {
    willDismiss();
}

void PGACConcrete_View::didDismissWithButtonIndex(platform::UIActionSheet& /*actionSheet*/,
                                                  std::intptr_t buttonIndex) {
    didDismiss(buttonIndex);
}

void PGACConcrete_View::willShow() {
    if (const auto delegate = ACDelegate())
        delegate->concreteControllerWillShow();
}

void PGACConcrete_View::willDismiss() {
    if (const auto delegate = ACDelegate())
        delegate->concreteControllerWillDismiss();
}

void PGACConcrete_View::didDismiss(std::intptr_t buttonIndex) {
    // The chosen action or the facade may let go of this backend.
    const auto self = shared_from_this();
    clickedButtonAtIndex(buttonIndex);
    if (const auto delegate = ACDelegate())
        delegate->concreteControllerDidDismiss();
}

void PGACConcrete_View::clickedButtonAtIndex(std::intptr_t index) {
    if (index < 0 || static_cast<std::size_t>(index) >= privateActions_.size())
        return;
    const auto action = privateActions_[static_cast<std::size_t>(index)];
    action->performHandler();
}

} // namespace purgo
