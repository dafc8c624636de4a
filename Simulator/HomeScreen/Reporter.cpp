#include "Simulator/HomeScreen/Reporter.h"

#include <utility>

#include <unistd.h>

namespace simulator {

namespace {

/// Adds what only some alerts have.
void addTextField(Event& event, const platform::AlertContents& contents) {
    if (const auto& field = contents.textField)
        event["textField"] = {{"text", field->text()}, {"placeholder", field->placeholder()}};
}

void addRect(Event& to, const char* member, const std::optional<platform::CGRect>& rect) {
    if (rect)
        to[member] = {
            {"x", rect->x}, {"y", rect->y}, {"width", rect->width}, {"height", rect->height}};
}

void addPlace(Event& event, const platform::AlertContents& contents) {
    if (contents.preferredStyle)
        event["preferredStyle"] = *contents.preferredStyle;
    if (const auto& anchor = contents.anchor) {
        event["anchor"]["kind"] = anchor->kind;
        addRect(event["anchor"], "rect", anchor->rect);
        addRect(event["anchor"], "view", anchor->view);
    }
    if (contents.windowLevel)
        event["windowLevel"] = *contents.windowLevel;
}

} // namespace

void Reporter::report(const char* eventName, const Event& members) {
    auto event = makeEvent(platform::Device::current().mainLoop().now(), eventName);
    event.update(members);
    send(kind_, std::move(event));
}

void Reporter::send(Message::Kind kind, nlohmann::ordered_json content) {
    const auto now = platform::Device::current().mainLoop().now();
    if (!channel_.send(Message{kind, now, std::move(content)}.encoded()))
        _exit(0);
}

void Reporter::alertShown(const platform::ScreenAlert& alert) {
    report(eventName::alertShown, describe(alert));
}

void Reporter::alertChanged(const platform::ScreenAlert& alert) {
    const auto& contents = alert.contents();
    Event members = {{"id", alert.id()},
                     {"title", orNull(contents.title)},
                     {"message", orNull(contents.message)}};
    addTextField(members, contents);
    report(eventName::alertChanged, members);
}

void Reporter::alertDismissed(const platform::ScreenAlert& alert, std::intptr_t buttonIndex) {
    report(eventName::alertDismissed, {{"id", alert.id()}, {"buttonIndex", buttonIndex}});
}

void Reporter::urlOpened(const std::string& url, const std::string& through) {
    report(eventName::urlOpened, {{"url", url}, {"through", through}});
}

void Reporter::switchRegistered(const std::string& identifier) {
    report(eventName::switchRegistered, {{"identifier", identifier}});
}

void Reporter::listenerRegistered(const std::string& name) {
    report(eventName::listenerRegistered, {{"name", name}});
}

Event describe(const platform::ScreenAlert& alert) {
    const auto& contents = alert.contents();
    Event buttons = Event::array();
    for (const auto& button : contents.buttons)
        buttons.push_back(orNull(button));
    Event event = {{"id", alert.id()},
                   {"control", contents.control},
                   {"title", orNull(contents.title)},
                   {"message", orNull(contents.message)},
                   {"buttons", std::move(buttons)},
                   {"cancelButtonIndex", orNull(contents.cancelButtonIndex)},
                   {"destructiveButtonIndex", orNull(contents.destructiveButtonIndex)}};
    addTextField(event, contents);
    addPlace(event, contents);
    return event;
}

} // namespace simulator
