#include "Platform/UIKit/AlertController.h"

#include "Platform/Linux/ViewControllers.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

class SimulatedAlertAction : public UIAlertAction,
                             public std::enable_shared_from_this<SimulatedAlertAction> {
public:
    SimulatedAlertAction(std::optional<std::string> title, std::intptr_t style, Handler handler)
        : title_(std::move(title)), style_(style), handler_(std::move(handler)) {}

    std::optional<std::string> title() const override { return title_; }
    std::intptr_t style() const override { return style_; }

    void perform() {
        if (handler_)
            handler_(shared_from_this());
    }

private:
    std::optional<std::string> title_;
    std::intptr_t style_;
    Handler handler_;
};

} // namespace

std::shared_ptr<UIAlertAction> UIAlertAction::make(std::optional<std::string> title,
                                                   std::intptr_t style, Handler handler) {
    return std::make_shared<SimulatedAlertAction>(std::move(title), style, std::move(handler));
}

std::shared_ptr<UIAlertController> UIAlertController::make(std::optional<std::string> title,
                                                           std::optional<std::string> message,
                                                           std::intptr_t preferredStyle) {
    return std::make_shared<SimulatedAlertController>(std::move(title), std::move(message),
                                                      preferredStyle);
}

/// One presentation of an alert controller; it keeps both controllers for as long.
class SimulatedAlertController::Presentation : public ScreenAlert::Control {
public:
    Presentation(std::shared_ptr<SimulatedAlertController> presented,
                 std::shared_ptr<SimulatedViewController> presenter)
        : presented_(std::move(presented)), presenter_(std::move(presenter)) {}

    void willPresent() override {
        if (const auto observer = presented_->observer_.lock())
            observer->viewWillAppear(presented_->isAnimated_);
    }

    void willDismiss(std::intptr_t /*buttonIndex*/) override {
        if (const auto observer = presented_->observer_.lock())
            observer->viewWillDisappear(presented_->isAnimated_);
    }

    void didDismiss(std::intptr_t buttonIndex) override {
        presented_->presenter_.reset();
        if (const auto observer = presented_->observer_.lock())
            observer->viewDidDisappear(presented_->isAnimated_);
        presented_->performAction(buttonIndex);
    }

private:
    std::shared_ptr<SimulatedAlertController> presented_;
    std::shared_ptr<SimulatedViewController> presenter_;
};

class SimulatedAlertController::Popover : public UIPopoverPresentationController {
public:
    explicit Popover(std::shared_ptr<ScreenAlert> alert) : alert_(std::move(alert)) {}

    void setBarButtonItem(std::shared_ptr<UIBarButtonItem> /*item*/) override {
        setAnchor({"barButtonItem", std::nullopt});
    }
    void setSourceView(std::shared_ptr<UIView> view) override {
        setAnchor({"view", view->bounds(), view->frame()});
    }
    void setSourceRect(CGRect rect) override {
        alert_->change([rect](auto& contents) {
            if (contents.anchor)
                contents.anchor->rect = rect;
        });
    }

private:
    void setAnchor(AlertAnchor anchor) {
        alert_->change([&anchor](auto& contents) { contents.anchor = std::move(anchor); });
    }

    std::shared_ptr<ScreenAlert> alert_;
};

SimulatedAlertController::SimulatedAlertController(std::optional<std::string> title,
                                                   std::optional<std::string> message,
                                                   std::intptr_t preferredStyle)
    : preferredStyle_(preferredStyle), alert_(std::make_shared<ScreenAlert>("UIAlertController")) {
    setTitle(std::move(title));
    setMessage(std::move(message));
    alert_->change([preferredStyle](auto& contents) { contents.preferredStyle = preferredStyle; });
    const bool isSheet = preferredStyle_ == UIAlertControllerStyleActionSheet;
    if (isSheet && userInterfaceIdiom() == UserInterfaceIdiom::pad)
        popover_ = std::make_shared<Popover>(alert_);
}

void SimulatedAlertController::setAppearanceObserver(std::weak_ptr<UIAppearanceObserver> observer) {
    observer_ = std::move(observer);
}

void SimulatedAlertController::setTitle(std::optional<std::string> title) {
    alert_->change([&title](auto& contents) { contents.title = std::move(title); });
}

void SimulatedAlertController::setMessage(std::optional<std::string> message) {
    alert_->change([&message](auto& contents) { contents.message = std::move(message); });
}

void SimulatedAlertController::addAction(const std::shared_ptr<UIAlertAction>& action) {
    actions_.push_back(action);
    layOutButtons();
}

/// The system puts Cancel on the left of two buttons side by side, and last of all others.
void SimulatedAlertController::layOutButtons() {
    const auto isCancel = [](const auto& action) {
        return action->style() == UIAlertActionStyleCancel;
    };
    const bool isSideBySide =
        preferredStyle_ == UIAlertControllerStyleAlert && actions_.size() == 2;
    std::stable_partition(actions_.begin(), actions_.end(), [&](const auto& action) {
        return isSideBySide ? isCancel(action) : !isCancel(action);
    });
    alert_->change([this](auto& contents) {
        contents.buttons.clear();
        contents.cancelButtonIndex.reset();
        contents.destructiveButtonIndex.reset();
        for (const auto& action : actions_) {
            const auto index = static_cast<std::intptr_t>(contents.buttons.size());
            if (action->style() == UIAlertActionStyleCancel)
                contents.cancelButtonIndex = index;
            if (action->style() == UIAlertActionStyleDestructive)
                contents.destructiveButtonIndex = index;
            contents.buttons.push_back(action->title());
        }
    });
}

void SimulatedAlertController::performAction(std::intptr_t buttonIndex) {
    if (buttonIndex < 0 || static_cast<std::size_t>(buttonIndex) >= actions_.size())
        return;
    const auto chosen = actions_[static_cast<std::size_t>(buttonIndex)];
    if (const auto action = std::dynamic_pointer_cast<SimulatedAlertAction>(chosen))
        action->perform();
}

void SimulatedAlertController::addTextFieldWithConfigurationHandler(
    const std::function<void(UITextField&)>& handler) {
    const auto field = std::make_shared<UITextField>();
    textFields_.push_back(field);
    alert_->change([this](auto& contents) { contents.textField = textFields_.front(); });
    if (handler)
        handler(*field);
}

std::shared_ptr<UIViewController> SimulatedAlertController::presentingViewController() const {
    return presenter_.lock();
}

std::shared_ptr<UIPopoverPresentationController>
SimulatedAlertController::popoverPresentationController() {
    return popover_;
}

void SimulatedAlertController::presentFrom(
    const std::shared_ptr<SimulatedViewController>& presenter, bool animated) {
    presenter_ = presenter;
    isAnimated_ = animated;
    alert_->change([&presenter](auto& contents) {
        const auto window = presenter->window();
        contents.windowLevel = window ? std::optional(window->windowLevel()) : std::nullopt;
    });
    alert_->present(std::make_shared<Presentation>(shared_from_this(), presenter));
}

void SimulatedAlertController::dismissAnimated(bool animated) {
    isAnimated_ = animated;
    alert_->dismiss(-1);
}

} // namespace platform
