#include "Platform/UIKit/AlertControls.h"

#include "Platform/Linux/Device.h"
#include "Platform/UIKit/Windows.h"

#include <utility>

namespace platform {

namespace {

std::optional<std::intptr_t> validIndex(std::intptr_t index) {
    return index < 0 ? std::nullopt : std::optional(index);
}

/// What both controls do alike, on their share of the screen.
class ControlOnScreen {
public:
    explicit ControlOnScreen(std::shared_ptr<ScreenAlert> alert) : alert_(std::move(alert)) {}

    ScreenAlert& alert() const { return *alert_; }

    void setTitle(std::optional<std::string> title) const {
        alert_->change([&title](auto& contents) { contents.title = std::move(title); });
    }

    std::intptr_t addButton(std::optional<std::string> title) const {
        alert_->change([&title](auto& contents) { contents.buttons.push_back(std::move(title)); });
        return static_cast<std::intptr_t>(alert_->contents().buttons.size()) - 1;
    }

    void setCancelButtonIndex(std::intptr_t index) const {
        alert_->change([index](auto& contents) { contents.cancelButtonIndex = validIndex(index); });
    }

private:
    std::shared_ptr<ScreenAlert> alert_;
};

class SimulatedAlertView : public UIAlertView,
                           public ScreenAlert::Control,
                           public std::enable_shared_from_this<SimulatedAlertView> {
public:
    void setTitle(std::optional<std::string> title) override {
        control_.setTitle(std::move(title));
    }
    std::intptr_t addButtonWithTitle(std::optional<std::string> title) override {
        return control_.addButton(std::move(title));
    }
    void setCancelButtonIndex(std::intptr_t index) override {
        control_.setCancelButtonIndex(index);
    }
    void dismissWithClickedButtonIndex(std::intptr_t index, bool /*animated*/) override {
        control_.alert().dismiss(index);
    }

    void setDelegate(std::weak_ptr<UIAlertViewDelegate> delegate) override {
        delegate_ = std::move(delegate);
    }

    void setMessage(std::optional<std::string> message) override {
        control_.alert().change(
            [&message](auto& contents) { contents.message = std::move(message); });
    }

    bool respondsToSetAlertViewStyle() const override {
        return Device::current().configuration().systemVersion >= SystemVersion{5, 0};
    }

    void setAlertViewStyle(UIAlertViewStyle style) override {
        const bool hasTextField = style != UIAlertViewStyle::plain;
        showTextField(hasTextField ? std::make_shared<UITextField>() : nullptr);
    }

    std::shared_ptr<UITextField> textFieldAtIndex(std::intptr_t index) override {
        return index == 0 ? control_.alert().contents().textField : nullptr;
    }

    std::shared_ptr<UITextField>
    addTextFieldWithValue(const std::optional<std::string>& value,
                          const std::optional<std::string>& label) override {
        auto field = std::make_shared<UITextField>();
        field->setText(value.value_or(""));
        field->setPlaceholder(label.value_or(""));
        showTextField(field);
        return field;
    }

    void show() override { control_.alert().present(shared_from_this()); }

    void willPresent() override {
        if (const auto delegate = delegate_.lock())
            delegate->willPresentAlertView(*this);
    }
    void willDismiss(std::intptr_t buttonIndex) override {
        if (const auto delegate = delegate_.lock())
            delegate->willDismissWithButtonIndex(*this, buttonIndex);
    }
    void didDismiss(std::intptr_t buttonIndex) override {
        if (const auto delegate = delegate_.lock())
            delegate->didDismissWithButtonIndex(*this, buttonIndex);
    }

private:
    void showTextField(std::shared_ptr<UITextField> field) {
        control_.alert().change(
            [&field](auto& contents) { contents.textField = std::move(field); });
    }

    ControlOnScreen control_{std::make_shared<ScreenAlert>("UIAlertView", UIWindowLevelAlert)};
    std::weak_ptr<UIAlertViewDelegate> delegate_;
};

class SimulatedActionSheet : public UIActionSheet,
                             public ScreenAlert::Control,
                             public std::enable_shared_from_this<SimulatedActionSheet> {
public:
    void setTitle(std::optional<std::string> title) override {
        control_.setTitle(std::move(title));
    }
    std::intptr_t addButtonWithTitle(std::optional<std::string> title) override {
        return control_.addButton(std::move(title));
    }
    void setCancelButtonIndex(std::intptr_t index) override {
        control_.setCancelButtonIndex(index);
    }
    void dismissWithClickedButtonIndex(std::intptr_t index, bool /*animated*/) override {
        control_.alert().dismiss(index);
    }

    void setDelegate(std::weak_ptr<UIActionSheetDelegate> delegate) override {
        delegate_ = std::move(delegate);
    }

    // The simulated screen shows no colours.
    void setActionSheetStyle(UIActionSheetStyle /*style*/) override {}

    void setDestructiveButtonIndex(std::intptr_t index) override {
        control_.alert().change(
            [index](auto& contents) { contents.destructiveButtonIndex = validIndex(index); });
    }

    void showFromTabBar(const std::shared_ptr<UITabBar>& tabBar) override {
        show({"tabBar", std::nullopt, tabBar->frame()});
    }
    void showFromToolbar(const std::shared_ptr<UIToolbar>& toolbar) override {
        show({"toolbar", std::nullopt, toolbar->frame()});
    }
    void showFromBarButtonItem(const std::shared_ptr<UIBarButtonItem>& /*item*/,
                               bool /*animated*/) override {
        show({"barButtonItem", std::nullopt});
    }
    void showFromRect(CGRect rect, const std::shared_ptr<UIView>& view,
                      bool /*animated*/) override {
        show({"view", rect, view->frame()});
    }
    void showInView(const std::shared_ptr<UIView>& view) override {
        show({"view", std::nullopt, view->frame()});
    }

    void willPresent() override {
        if (const auto delegate = delegate_.lock())
            delegate->willPresentActionSheet(*this);
    }
    void willDismiss(std::intptr_t buttonIndex) override {
        if (const auto delegate = delegate_.lock())
            delegate->willDismissWithButtonIndex(*this, buttonIndex);
    }
    void didDismiss(std::intptr_t buttonIndex) override {
        if (const auto delegate = delegate_.lock())
            delegate->didDismissWithButtonIndex(*this, buttonIndex);
    }

private:
    void show(AlertAnchor anchor) {
        control_.alert().change([&anchor](auto& contents) { contents.anchor = std::move(anchor); });
        control_.alert().present(shared_from_this());
    }

    ControlOnScreen control_{std::make_shared<ScreenAlert>("UIActionSheet")};
    std::weak_ptr<UIActionSheetDelegate> delegate_;
};

} // namespace

std::shared_ptr<UIAlertView> UIAlertView::make() {
    return std::make_shared<SimulatedAlertView>();
}

std::shared_ptr<UIActionSheet> UIActionSheet::make() {
    return std::make_shared<SimulatedActionSheet>();
}

} // namespace platform
