#include "Platform/Linux/Screen.h"

#include "Platform/Linux/Device.h"
#include "Platform/UIKit/Windows.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

using Windows = std::vector<std::weak_ptr<UIWindow>>;

void moveToBack(Windows& windows, const std::shared_ptr<UIWindow>& window) {
    std::erase_if(windows, [&window](const auto& other) {
        return other.expired() || other.lock() == window;
    });
    windows.push_back(window);
}

std::vector<std::shared_ptr<UIWindow>> alive(const Windows& windows) {
    std::vector<std::shared_ptr<UIWindow>> result;
    for (const auto& window : windows)
        if (auto locked = window.lock())
            result.push_back(std::move(locked));
    return result;
}

} // namespace

ScreenAlert::ScreenAlert(std::string control, CGFloat level) : level_(level) {
    contents_.control = std::move(control);
}

void ScreenAlert::change(const std::function<void(AlertContents&)>& change) {
    const auto title = contents_.title;
    const auto message = contents_.message;
    change(contents_);
    if (isOnScreen() && (contents_.title != title || contents_.message != message))
        Device::current().observer().alertChanged(*this);
}

void ScreenAlert::present(const std::shared_ptr<Control>& control) {
    if (state_ != State::offScreen)
        return;
    const auto self = shared_from_this();
    state_ = State::presenting;
    control_ = control;
    // The control's owner may still change the message here, so that nobody ever sees the old one.
    control->willPresent();
    auto& device = Device::current();
    auto& screen = device.screen();
    id_ = ++screen.lastId_;
    state_ = State::onScreen;
    screen.presentations_.push_back({self, control});
    device.observer().alertShown(*this);
}

void ScreenAlert::dismiss(std::intptr_t buttonIndex) {
    const auto control = control_.lock();
    if (state_ != State::onScreen || !control)
        return;
    const auto self = shared_from_this();
    state_ = State::dismissing;
    control->willDismiss(buttonIndex);
    Device::current().mainLoop().async(
        [self, control, buttonIndex] { self->leave(*control, buttonIndex); });
}

void ScreenAlert::leave(Control& control, std::intptr_t buttonIndex) {
    auto& device = Device::current();
    std::erase_if(device.screen().presentations_,
                  [this](const auto& presentation) { return presentation.alert.get() == this; });
    state_ = State::offScreen;
    device.observer().alertDismissed(*this, buttonIndex);
    control.didDismiss(buttonIndex);
}

std::vector<std::shared_ptr<ScreenAlert>> Screen::alerts() const {
    std::vector<std::shared_ptr<ScreenAlert>> result;
    for (const auto& each : presentations_)
        if (each.alert->state_ == ScreenAlert::State::onScreen)
            result.push_back(each.alert);
    std::reverse(result.begin(), result.end());
    std::stable_sort(result.begin(), result.end(), [](const auto& one, const auto& other) {
        return one->level() > other->level();
    });
    return result;
}

std::shared_ptr<ScreenAlert> Screen::front() const {
    const auto all = alerts();
    return all.empty() ? nullptr : all.front();
}

std::vector<std::shared_ptr<UIWindow>> Screen::windows() const {
    return alive(windows_);
}

std::shared_ptr<UIWindow> Screen::keyWindow() const {
    const auto windows = alive(keyWindows_);
    return windows.empty() ? nullptr : windows.back();
}

void Screen::makeVisible(const std::shared_ptr<UIWindow>& window) {
    const auto present = windows();
    if (std::find(present.begin(), present.end(), window) == present.end())
        moveToBack(windows_, window);
}

void Screen::makeKey(const std::shared_ptr<UIWindow>& window) {
    moveToBack(keyWindows_, window);
}

} // namespace platform
