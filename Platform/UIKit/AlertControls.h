#pragma once

#include "Platform/Object.h"
#include "Platform/UIKit/Views.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace platform {

class UIAlertView;
class UIActionSheet;

/// What an alert view tells its delegate, on the main thread.
class UIAlertViewDelegate {
public:
    virtual ~UIAlertViewDelegate() = default;

    /// Called inside `show`.
    virtual void willPresentAlertView(UIAlertView& alertView) = 0;
    /// Called inside the tap or the call that dismisses. -1 stands for no button.
    virtual void willDismissWithButtonIndex(UIAlertView& alertView, std::intptr_t buttonIndex) = 0;
    /// Called on a later turn of the main loop, after the alert view has left the screen.
    virtual void didDismissWithButtonIndex(UIAlertView& alertView, std::intptr_t buttonIndex) = 0;
};

/// What an action sheet tells its delegate; as for `UIAlertViewDelegate`.
class UIActionSheetDelegate {
public:
    virtual ~UIActionSheetDelegate() = default;

    virtual void willPresentActionSheet(UIActionSheet& actionSheet) = 0;
    virtual void willDismissWithButtonIndex(UIActionSheet& actionSheet,
                                            std::intptr_t buttonIndex) = 0;
    virtual void didDismissWithButtonIndex(UIActionSheet& actionSheet,
                                           std::intptr_t buttonIndex) = 0;
};

/// What the two older alert controls have in common.
///
/// Ownership:  a control on screen is kept alive by the screen, until its delegate has been told
///             that it was dismissed.
/// Threads:    main thread only.
class UIAlertControl : public Object {
public:
    virtual void setTitle(std::optional<std::string> title) = 0;

    /// Adds a button behind the present ones and returns its index.
    virtual std::intptr_t addButtonWithTitle(std::optional<std::string> title) = 0;
    virtual void setCancelButtonIndex(std::intptr_t index) = 0;

    /// Dismisses the control as if the button of this index had been chosen; -1 is no button. Does
    /// nothing for a control that is not on screen.
    virtual void dismissWithClickedButtonIndex(std::intptr_t index, bool animated) = 0;
};

enum class UIAlertViewStyle { plain = 0, secureTextInput = 1, plainTextInput = 2 };

/// An alert in the middle of the screen: title, message, buttons, perhaps a text field.
class UIAlertView : public UIAlertControl {
public:
    static std::shared_ptr<UIAlertView> make();

    /// The delegate is not owned.
    virtual void setDelegate(std::weak_ptr<UIAlertViewDelegate> delegate) = 0;
    virtual void setMessage(std::optional<std::string> message) = 0;

    /// Whether the system has alert view styles; older ones add text fields one by one.
    virtual bool respondsToSetAlertViewStyle() const = 0;
    virtual void setAlertViewStyle(UIAlertViewStyle style) = 0;
    /// The text field of the present style at an index, or null.
    virtual std::shared_ptr<UITextField> textFieldAtIndex(std::intptr_t index) = 0;
    /// Adds a text field the older way; value and label may be missing.
    virtual std::shared_ptr<UITextField>
    addTextFieldWithValue(const std::optional<std::string>& value,
                          const std::optional<std::string>& label) = 0;

    virtual void show() = 0;
};

enum class UIActionSheetStyle { automatic = -1, plain = 0, blackOpaque = 1, blackTranslucent = 2 };

/// A sheet of buttons from the lower edge of a phone, or in a popover on a pad. It has a title and
/// no message.
class UIActionSheet : public UIAlertControl {
public:
    static std::shared_ptr<UIActionSheet> make();

    /// The delegate is not owned.
    virtual void setDelegate(std::weak_ptr<UIActionSheetDelegate> delegate) = 0;
    virtual void setActionSheetStyle(UIActionSheetStyle style) = 0;
    virtual void setDestructiveButtonIndex(std::intptr_t index) = 0;

    virtual void showFromTabBar(const std::shared_ptr<UITabBar>& tabBar) = 0;
    virtual void showFromToolbar(const std::shared_ptr<UIToolbar>& toolbar) = 0;
    virtual void showFromBarButtonItem(const std::shared_ptr<UIBarButtonItem>& item,
                                       bool animated) = 0;
    virtual void showFromRect(CGRect rect, const std::shared_ptr<UIView>& view, bool animated) = 0;
    virtual void showInView(const std::shared_ptr<UIView>& view) = 0;
};

} // namespace platform
