#pragma once

#include "PGAlertController/Source/PGACConcrete.h"
#include "PGAlertController/Source/PGAlertAction.h"
#include "Platform/UIKit/AlertControls.h"

namespace purgo {

/// The backend on the two older controls: an alert view for an alert, an action sheet for a sheet.
///
/// States:     without a control -> with one, from the first change of a text, text field or
///             presentation on -> shown -> dismissing -> dismissed.
/// Ownership:  owns its control, its actions and the text field; the control does not own it.
/// Threads:    main thread only.
class PGACConcrete_View : public PGACConcrete,
                          public platform::UIAlertViewDelegate,
                          public platform::UIActionSheetDelegate,
                          public std::enable_shared_from_this<PGACConcrete_View> {
public:
    static std::shared_ptr<PGACConcrete_View>
    alertControllerWithTitle(std::optional<std::string> title, std::optional<std::string> message,
                             std::intptr_t preferredStyle);

    std::shared_ptr<PGACDelegate> ACDelegate() const override { return ACDelegate_.lock(); }
    void setACDelegate(std::weak_ptr<PGACDelegate> delegate) override;

    std::optional<std::string> title() const override { return title_; }
    void setTitle(std::optional<std::string> title) override;
    std::optional<std::string> message() const override { return message_; }
    void setMessage(std::optional<std::string> message) override;

    /// In the order in which they were added; from the first presentation on in that of the
    /// buttons.
    std::vector<std::shared_ptr<PGAlertAction>> actions() const override { return privateActions_; }
    std::intptr_t preferredStyle() const override { return preferredStyle_; }
    void addAction(std::shared_ptr<PGAlertAction> action) override;

    /// Makes the text field at the first call; calls the handler at every one.
    void showTextFieldWithConfigurationHandler(const TextFieldHandler& handler) override;
    std::shared_ptr<platform::UITextField> textField() const override { return textField_; }

    /// Each presentation adds its buttons to those that the control already has.
    void showInViewController(const std::shared_ptr<platform::UIViewController>& viewController,
                              const std::shared_ptr<platform::Object>& fromControl,
                              platform::CGRect rect) override;
    void dismiss() override;

    void willPresentAlertView(platform::UIAlertView& alertView) override;
    void willDismissWithButtonIndex(platform::UIAlertView& alertView,
                                    std::intptr_t buttonIndex) override;
    void didDismissWithButtonIndex(platform::UIAlertView& alertView,
                                   std::intptr_t buttonIndex) override;

    void willPresentActionSheet(platform::UIActionSheet& actionSheet) override;
    void willDismissWithButtonIndex(platform::UIActionSheet& actionSheet,
                                    std::intptr_t buttonIndex) override;
    void didDismissWithButtonIndex(platform::UIActionSheet& actionSheet,
                                   std::intptr_t buttonIndex) override;

private:
    PGACConcrete_View(std::optional<std::string> title, std::optional<std::string> message,
                      std::intptr_t preferredStyle);

    bool isAlert() const { return preferredStyle_ == UIAlertControllerStyleAlert; }
    platform::UIAlertControl& control();
    void makeControl();
    void configureControl();
    void configureButtons();
    std::optional<std::intptr_t> indexOfActionWithStyle(std::intptr_t style) const;
    std::optional<std::intptr_t> moveCancelAction();
    void refreshControlTitle();
    void refreshControlMessage();
    void showActionSheet(platform::UIViewController* viewController,
                         const std::shared_ptr<platform::Object>& fromControl,
                         platform::CGRect rect);
    bool showFromBar(const std::shared_ptr<platform::Object>& bar);
    void clickedButtonAtIndex(std::intptr_t index);
    void willShow();
    void willDismiss();
    void didDismiss(std::intptr_t buttonIndex);

    // The control: the one of the two that goes with the style, once it is made.
    std::shared_ptr<platform::UIAlertView> alertView_;
    std::shared_ptr<platform::UIActionSheet> actionSheet_;
    std::optional<std::string> message_;
    std::vector<std::shared_ptr<PGAlertAction>> privateActions_;
    std::optional<std::string> title_;
    std::weak_ptr<PGACDelegate> ACDelegate_;
    std::intptr_t preferredStyle_;
    std::shared_ptr<platform::UITextField> textField_;
};

} // namespace purgo
