#include "Simulator/Picture/PhoneScreen.h"

#include "Platform/UIKit/AlertStyles.h"
#include "Platform/UIKit/Windows.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace simulator {
namespace {

/// A member of an object, or null when the value is no object or has no such member.
const Event* member(const Event& object, const char* name) {
    const auto found = object.is_object() ? object.find(name) : object.end();
    return found == object.end() ? nullptr : &*found;
}

std::optional<std::string> textMember(const Event& object, const char* name) {
    const Event* value = member(object, name);
    return value && value->is_string() ? std::optional(value->get<std::string>()) : std::nullopt;
}

std::optional<double> numberMember(const Event& object, const char* name) {
    const Event* value = member(object, name);
    return value && value->is_number() ? std::optional(value->get<double>()) : std::nullopt;
}

std::optional<bool> flagMember(const Event& object, const char* name) {
    const Event* value = member(object, name);
    return value && value->is_boolean() ? std::optional(value->get<bool>()) : std::nullopt;
}

std::optional<std::int64_t> integerMember(const Event& object, const char* name) {
    const Event* value = member(object, name);
    return value && value->is_number_integer() ? std::optional(value->get<std::int64_t>())
                                               : std::nullopt;
}

std::optional<std::size_t> indexMember(const Event& object, const char* name) {
    const auto value = integerMember(object, name);
    return value && *value >= 0 ? std::optional(static_cast<std::size_t>(*value)) : std::nullopt;
}

std::uint64_t idMember(const Event& object) {
    return static_cast<std::uint64_t>(integerMember(object, "id").value_or(0));
}

/// Takes a text over where the event has it: null means that there is none any more.
void updateText(std::optional<std::string>& text, const Event& event, const char* name) {
    if (member(event, name))
        text = textMember(event, name);
}

std::optional<platform::CGRect> rectMember(const Event& object, const char* name) {
    const Event* value = member(object, name);
    if (!value)
        return std::nullopt;
    const auto x = numberMember(*value, "x");
    const auto y = numberMember(*value, "y");
    const auto width = numberMember(*value, "width");
    const auto height = numberMember(*value, "height");
    if (!x || !y || !width || !height)
        return std::nullopt;
    const auto coordinate = [](double number) {
        return static_cast<platform::CGFloat>(number);
    };
    return platform::CGRect{coordinate(*x), coordinate(*y), coordinate(*width),
                            coordinate(*height)};
}

/// Where an anchor lies on the screen: its rectangle is one of the view's.
ShownAnchor anchorFrom(const Event& event) {
    auto rect = rectMember(event, "rect");
    const auto view = rectMember(event, "view");
    if (rect && view) {
        rect->x += view->x;
        rect->y += view->y;
    }
    return {textMember(event, "kind").value_or("view"), rect};
}

void updateTextField(ShownAlert& alert, const Event& event) {
    if (const Event* field = member(event, "textField"); field && field->is_object())
        alert.textField = ShownTextField{textMember(*field, "text").value_or(""),
                                         textMember(*field, "placeholder").value_or("")};
}

ShownAlert alertFrom(const Event& event) {
    ShownAlert alert;
    alert.id = idMember(event);
    alert.control = textMember(event, "control").value_or("UIAlertView");
    alert.title = textMember(event, "title");
    alert.message = textMember(event, "message");
    if (const Event* buttons = member(event, "buttons"); buttons && buttons->is_array())
        for (const Event& title : *buttons)
            alert.buttons.push_back(title.is_string() ? std::optional(title.get<std::string>())
                                                      : std::nullopt);
    alert.cancelButtonIndex = indexMember(event, "cancelButtonIndex");
    alert.destructiveButtonIndex = indexMember(event, "destructiveButtonIndex");
    updateTextField(alert, event);
    if (const Event* anchor = member(event, "anchor"); anchor && anchor->is_object())
        alert.anchor = anchorFrom(*anchor);
    alert.windowLevel = numberMember(event, "windowLevel");
    if (const auto style = integerMember(event, "preferredStyle"))
        alert.preferredStyle = static_cast<std::intptr_t>(*style);
    return alert;
}

/// The level of the window that an alert lies in, by which alerts cover each other.
double levelOf(const ShownAlert& alert) {
    const bool isAlertView = alert.control == "UIAlertView";
    return alert.windowLevel.value_or(isAlertView ? platform::UIWindowLevelAlert : 0);
}

void show(PhoneScreen& screen, ShownAlert alert) {
    const auto place =
        std::find_if(screen.alerts.begin(), screen.alerts.end(),
                     [&alert](const auto& other) { return levelOf(other) <= levelOf(alert); });
    screen.alerts.insert(place, std::move(alert));
}

void change(PhoneScreen& screen, const Event& event) {
    const auto alert =
        std::find_if(screen.alerts.begin(), screen.alerts.end(),
                     [id = idMember(event)](const auto& other) { return other.id == id; });
    if (alert == screen.alerts.end())
        return;
    updateText(alert->title, event, "title");
    updateText(alert->message, event, "message");
    updateTextField(*alert, event);
}

void replaceAlerts(PhoneScreen& screen, const Event& event) {
    const Event* alerts = member(event, "alerts");
    if (!alerts || !alerts->is_array())
        return;
    screen.alerts.clear();
    for (const Event& alert : *alerts)
        screen.alerts.push_back(alertFrom(alert));
}

ShownToggle& toggle(PhoneScreen& screen, const std::string& identifier) {
    for (auto& known : screen.toggles)
        if (known.identifier == identifier)
            return known;
    return screen.toggles.emplace_back(ShownToggle{identifier, {}, true, {}});
}

void list(PhoneScreen& screen, const std::string& identifier, const Event& event) {
    ShownToggle& listed = toggle(screen, identifier);
    updateText(listed.title, event, "title");
    updateText(listed.bundle, event, "bundle");
    listed.isEnabled = flagMember(event, "enabled").value_or(listed.isEnabled);
}

void listListener(PhoneScreen& screen, const std::string& name, const Event& event) {
    auto known = std::find_if(screen.listeners.begin(), screen.listeners.end(),
                              [&name](const auto& listener) { return listener.name == name; });
    if (known == screen.listeners.end())
        known = screen.listeners.insert(known, ShownListener{name, {}, {}});
    updateText(known->title, event, "title");
    updateText(known->description, event, "description");
}

/// What a home screen takes with it when it goes.
void clear(PhoneScreen& screen) {
    screen.isSafeMode = false;
    screen.toggles.clear();
    screen.listeners.clear();
    screen.alerts.clear();
    screen.hostApplicationURL.reset();
}

void start(PhoneScreen& screen, const Event& event) {
    clear(screen);
    screen.isSafeMode = flagMember(event, "safeMode").value_or(false);
    if (const auto version = textMember(event, "system"))
        screen.system = platform::SystemVersion::parse(*version).value_or(screen.system);
}

void applyAlert(PhoneScreen& screen, std::string_view name, const Event& event) {
    if (name == eventName::alertShown)
        show(screen, alertFrom(event));
    else if (name == eventName::alertChanged)
        change(screen, event);
    else if (name == eventName::alertDismissed)
        std::erase_if(screen.alerts,
                      [id = idMember(event)](const auto& alert) { return alert.id == id; });
    else if (name == eventName::screen)
        replaceAlerts(screen, event);
}

void applyTrigger(PhoneScreen& screen, std::string_view eventsName, const Event& event) {
    const auto identifier = textMember(event, "identifier");
    const auto name = textMember(event, "name");
    if (identifier &&
        (eventsName == eventName::switchRegistered || eventsName == eventName::switchListed))
        list(screen, *identifier, event);
    if (name &&
        (eventsName == eventName::listenerRegistered || eventsName == eventName::listenerListed))
        listListener(screen, *name, event);
}

} // namespace

bool ShownAlert::isSheet() const {
    if (preferredStyle)
        return *preferredStyle == platform::UIAlertControllerStyleActionSheet;
    return control == "UIActionSheet" || anchor.has_value();
}

void PhoneScreen::apply(const Event& event) {
    time = numberMember(event, "time").value_or(time);
    const std::string name = textMember(event, "event").value_or("");
    if (name == eventName::homeScreenStarted)
        start(*this, event);
    else if (name == eventName::homeScreenRestarted || name == eventName::homeScreenCrashed)
        clear(*this);
    else if (name == eventName::urlOpened)
        updateText(hostApplicationURL, event, "url");
    applyAlert(*this, name, event);
    applyTrigger(*this, name, event);
}

void PhoneScreen::setUnlocked(bool unlocked) {
    if (isUnlocked && !unlocked)
        hostApplicationURL.reset();
    isUnlocked = unlocked;
}

} // namespace simulator
