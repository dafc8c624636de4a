#include "Simulator/HomeScreen/CommandActions.h"

#include "Simulator/Device/Litter.h"
#include "Simulator/Frameworks/EventActivator.h"
#include "Simulator/Frameworks/SwitchPanel.h"
#include "Simulator/HomeScreen/HomeScreen.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <memory>
#include <optional>

#include <unistd.h>

namespace simulator {

namespace {

using platform::Device;

// The clock ends after a thousand million seconds, far inside what nanoseconds can count.
constexpr double lastSecond = 1e9;
constexpr std::size_t defaultLitter = 200;

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

/// The panel, or null while no framework is loaded that has one.
std::shared_ptr<SwitchPanel> switchPanel() {
    const auto* panelClass = platform::classNamed("FSSwitchPanel");
    return panelClass ? std::dynamic_pointer_cast<SwitchPanel>(
                            platform::FSSwitchPanel::sharedPanel(*panelClass))
                      : nullptr;
}

std::shared_ptr<EventActivator> eventActivator() {
    const auto* activatorClass = platform::classNamed("LAActivator");
    return activatorClass ? std::dynamic_pointer_cast<EventActivator>(
                                platform::LAActivator::sharedInstance(*activatorClass))
                          : nullptr;
}

struct RegisteredListener {
    std::shared_ptr<EventActivator> activator;
    std::shared_ptr<platform::LAListener> listener;
};

RegisteredListener registeredListener(const std::string& name) {
    const auto activator = eventActivator();
    const auto listener = activator ? activator->listener(name) : nullptr;
    if (!listener)
        throw CommandFailure("no listener is registered under " + quoted(name));
    return {activator, listener};
}

std::shared_ptr<platform::ScreenAlert> frontAlert() {
    auto alert = Device::current().screen().front();
    if (!alert)
        throw CommandFailure("no alert is on the screen");
    return alert;
}

template <typename Number>
std::optional<Number> parseNumber(const std::string& text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

std::optional<std::size_t> buttonIndex(const platform::AlertContents& alert,
                                       const std::string& button) {
    for (std::size_t index = 0; index < alert.buttons.size(); ++index)
        if (alert.buttons[index] == button)
            return index;
    const auto number =
        button.starts_with('#') ? parseNumber<std::size_t>(button.substr(1)) : std::nullopt;
    return number && *number < alert.buttons.size() ? number : std::nullopt;
}

} // namespace

void listSwitches(HomeScreen& homeScreen, const Arguments&) {
    const auto panel = switchPanel();
    if (!panel)
        return;
    for (const auto& identifier : panel->identifiers()) {
        const auto dataSource = panel->dataSource(identifier);
        const auto bundle = dataSource->bundleForSwitchIdentifier(identifier);
        homeScreen.reporter().report(
            eventName::switchListed,
            {{"identifier", identifier},
             {"title", orNull(dataSource->titleForSwitchIdentifier(identifier).displayed())},
             {"enabled", dataSource->switchWithIdentifierIsEnabled(identifier)},
             {"simpleAction", dataSource->switchWithIdentifierIsSimpleAction(identifier)},
             {"state", static_cast<int>(dataSource->stateForSwitchIdentifier(identifier))},
             {"bundle", bundle ? Event(bundle->path) : Event(nullptr)}});
    }
}

void listListeners(HomeScreen& homeScreen, const Arguments&) {
    const auto activator = eventActivator();
    if (!activator)
        return;
    for (const auto& name : activator->names()) {
        const auto listener = activator->listener(name);
        const auto title = listener->requiresLocalizedTitleForListenerName(*activator, name);
        const auto description =
            listener->requiresLocalizedDescriptionForListenerName(*activator, name);
        homeScreen.reporter().report(eventName::listenerListed,
                                     {{"name", name},
                                      {"title", orNull(title.displayed())},
                                      {"description", orNull(description.displayed())}});
    }
}

void toggle(HomeScreen& homeScreen, const Arguments& arguments) {
    const auto& identifier = arguments.front();
    const auto panel = switchPanel();
    const auto dataSource = panel ? panel->dataSource(identifier) : nullptr;
    if (!dataSource)
        throw CommandFailure("no switch is registered under " + quoted(identifier));
    homeScreen.reporter().report(eventName::switchActivated, {{"identifier", identifier}});
    dataSource->applyActionForSwitchIdentifier(identifier);
}

void fireEvent(HomeScreen& homeScreen, const Arguments& arguments) {
    const auto& name = arguments.front();
    const auto [activator, listener] = registeredListener(name);
    platform::LAEvent event;
    listener->receiveEvent(*activator, event, name);
    homeScreen.reporter().report(eventName::eventFired,
                                 {{"name", name}, {"handled", event.isHandled()}});
}

void abortEvent(HomeScreen&, const Arguments& arguments) {
    const auto [activator, listener] = registeredListener(arguments.front());
    platform::LAEvent event;
    listener->abortEvent(*activator, event);
}

void otherListenerHandledEvent(HomeScreen&, const Arguments& arguments) {
    const auto [activator, listener] = registeredListener(arguments.front());
    platform::LAEvent event;
    event.setHandled(true);
    listener->otherListenerDidHandleEvent(*activator, event);
}

void showScreen(HomeScreen& homeScreen, const Arguments&) {
    Event alerts = Event::array();
    for (const auto& alert : Device::current().screen().alerts())
        alerts.push_back(describe(*alert));
    homeScreen.reporter().report(eventName::screen, {{"alerts", std::move(alerts)}});
}

void press(HomeScreen&, const Arguments& arguments) {
    const auto& button = arguments.front();
    const auto alert = frontAlert();
    const auto index = buttonIndex(alert->contents(), button);
    if (!index)
        throw CommandFailure("the front alert has no button " + quoted(button));
    alert->dismiss(static_cast<std::intptr_t>(*index));
}

void typeText(HomeScreen& homeScreen, const Arguments& arguments) {
    const auto alert = frontAlert();
    const auto& field = alert->contents().textField;
    if (!field)
        throw CommandFailure("the front alert has no text field");
    field->setText(arguments.empty() ? "" : arguments.front());
    homeScreen.reporter().alertChanged(*alert);
}

void wait(HomeScreen& homeScreen, const Arguments& arguments) {
    using std::chrono::nanoseconds;
    using Seconds = std::chrono::duration<double>;
    auto& mainLoop = Device::current().mainLoop();
    const auto seconds = parseNumber<double>(arguments.front());
    if (!seconds || !std::isfinite(*seconds) || *seconds < 0)
        throw CommandFailure(quoted(arguments.front()) + " is no number of seconds");
    if (*seconds > lastSecond - Seconds(mainLoop.now()).count())
        throw CommandFailure("the clock ends before " + arguments.front() + " seconds have passed");
    if (Device::current().configuration().clock == platform::ClockKind::real)
        homeScreen.takeLonger(Seconds(*seconds));
    mainLoop.letPass(std::chrono::round<nanoseconds>(Seconds(*seconds)));
}

void settle(HomeScreen& homeScreen, const Arguments&) {
    constexpr std::chrono::seconds limit{60};
    auto& device = Device::current();
    // In this order, since a worker queues its notification before it ends.
    const auto isSettled = [&device] {
        return device.workers().pendingCount() == 0 && device.mainLoop().isIdle();
    };
    homeScreen.takeLonger(limit);
    if (!device.mainLoop().runUntil(isSettled, limit))
        throw CommandFailure("after 60 seconds child processes are still running, or work is "
                             "still queued");
}

void lock(HomeScreen&, const Arguments&) {
    Device::current().setUnlocked(false);
}

void unlock(HomeScreen&, const Arguments&) {
    Device::current().setUnlocked(true);
}

void litter(HomeScreen&, const Arguments& arguments) {
    const auto count =
        arguments.empty() ? defaultLitter : parseNumber<std::size_t>(arguments.front());
    if (!count)
        throw CommandFailure(quoted(arguments.front()) + " is no number of files");
    const auto made = makeLitter(Device::current().configuration().root, *count);
    if (!made.error.empty())
        throw CommandFailure(made.error);
}

void restart(HomeScreen&, const Arguments&) {
    _exit(0);
}

} // namespace simulator
