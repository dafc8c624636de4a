#include "Simulator/Supervisor/EventPrinter.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace simulator {

namespace {

// As wide as "[  10.000] ", the time before a sentence.
constexpr std::string_view indentation = "           ";

std::string text(const Event& event, const char* member) {
    const auto& value = event.at(member);
    return value.is_string() ? value.get<std::string>() : "(none)";
}

std::string quoted(const Event& value) {
    return value.is_string() ? "“" + value.get<std::string>() + "”" : "(no text)";
}

bool holdsIndex(const Event& event, const char* member, std::size_t index) {
    return event.at(member).is_number() && event.at(member) == index;
}

std::string buttons(const Event& alert) {
    const auto& titles = alert.at("buttons");
    std::string line;
    for (std::size_t index = 0; index < titles.size(); ++index) {
        line += (index == 0 ? "" : "  ") + ("[" + std::to_string(index)) + "] ";
        line += titles[index].is_string() ? titles[index].get<std::string>() : "(no title)";
        if (holdsIndex(alert, "cancelButtonIndex", index))
            line += " (cancel)";
        if (holdsIndex(alert, "destructiveButtonIndex", index))
            line += " (destructive)";
    }
    return line.empty() ? "(no buttons)" : line;
}

std::string textField(const Event& field) {
    const auto placeholder = text(field, "placeholder");
    return "text field: " + quoted(field.at("text")) +
           (placeholder.empty() ? "" : ", placeholder “" + placeholder + "”");
}

std::string number(const Event& value) {
    std::ostringstream digits;
    digits << value.get<double>();
    return digits.str();
}

std::string anchor(const Event& anchor) {
    static constexpr std::pair<const char*, const char*> kinds[] = {
        {"view", "a view"},
        {"barButtonItem", "a bar button item"},
        {"toolbar", "a tool bar"},
        {"tabBar", "a tab bar"},
    };
    std::string line = "points at ";
    for (const auto& [kind, words] : kinds)
        if (anchor.at("kind") == kind)
            line += words;
    if (!anchor.contains("rect"))
        return line;
    const auto& rect = anchor.at("rect");
    return line + ", at " + number(rect.at("x")) + ", " + number(rect.at("y")) + ", size " +
           number(rect.at("width")) + " × " + number(rect.at("height"));
}

std::string alert(const Event& event) {
    auto lines = "alert " + event.at("id").dump() + ", " + text(event, "control") + ": " +
                 quoted(event.at("title"));
    if (event.at("message").is_string())
        lines += "\n" + text(event, "message");
    if (event.contains("textField"))
        lines += "\n" + textField(event.at("textField"));
    lines += "\n" + buttons(event);
    if (event.contains("anchor"))
        lines += "\n" + anchor(event.at("anchor"));
    if (event.contains("windowLevel"))
        lines += "\nwindow level " + number(event.at("windowLevel"));
    return lines;
}

std::string alertsOnScreen(const Event& event) {
    std::string lines;
    for (const auto& each : event.at("alerts"))
        lines += (lines.empty() ? "on the screen: " : "\nbehind it: ") + alert(each);
    return lines.empty() ? "no alert is on the screen" : lines;
}

std::string listedSwitch(const Event& event) {
    return "switch " + text(event, "identifier") + " " + quoted(event.at("title")) +
           (event.at("enabled").get<bool>() ? "" : ", not enabled") +
           (event.at("simpleAction").get<bool>() ? "" : ", state " + event.at("state").dump()) +
           ", icons: " + text(event, "bundle");
}

std::string start(const Event& event) {
    return "the home screen has started" +
           std::string(event.at("safeMode").get<bool>() ? " in safe mode, without libraries" : "") +
           ": system " + text(event, "system") + ", Foundation " +
           event.at("foundationVersion").dump();
}

std::string listedListener(const Event& event) {
    return "listener " + text(event, "name") + " " + quoted(event.at("title")) + ": " +
           text(event, "description");
}

std::string loadedLibrary(const Event& event) {
    return "loaded " + text(event, "path");
}

std::string registeredSwitch(const Event& event) {
    return "switch registered: " + text(event, "identifier");
}

std::string registeredListener(const Event& event) {
    return "listener registered: " + text(event, "name");
}

std::string activatedSwitch(const Event& event) {
    return "switch activated: " + text(event, "identifier");
}

std::string firedEvent(const Event& event) {
    return "event fired: " + text(event, "name") +
           (event.at("handled").get<bool>() ? "" : ", not handled");
}

std::string restart(const Event&) {
    return "the home screen went down and starts again";
}

std::string openedURL(const Event& event) {
    const auto url = text(event, "url");
    const auto opened = "opened " + url + " through " + text(event, "through");
    return url.starts_with("purgo:") ? "the host application Purgo took the cleanup over\n" + opened
                                     : opened;
}

std::string crash(const Event& event) {
    const int signal = event.at("signal").get<int>();
    const char* name = sigabbrev_np(signal);
    return "the home screen crashed: " +
           (name ? "SIG" + std::string(name) : std::to_string(signal));
}

std::vector<std::string> lines(const Event& alert) {
    std::istringstream message(text(alert, "message"));
    std::vector<std::string> result;
    for (std::string line; std::getline(message, line);)
        result.push_back(line);
    return result;
}

bool holdsOtherText(const Event& event, const Event& before) {
    return event.contains("textField") &&
           (!before.contains("textField") || event.at("textField") != before.at("textField"));
}

/// The lines that are new, since of a message that counts down most stay as they are.
std::string change(const Event& event, const Event& before) {
    const auto old = lines(before);
    std::string words;
    for (const auto& line : lines(event))
        if (std::find(old.begin(), old.end(), line) == old.end())
            words += (words.empty() ? "" : "\n") + line;
    if (holdsOtherText(event, before))
        words += (words.empty() ? "" : "\n") + textField(event.at("textField"));
    return "alert " + event.at("id").dump() + ": " +
           (words.empty() ? text(event, "message") : words);
}

std::string dismissal(const Event& event, const Event& alert) {
    const auto words = "alert " + event.at("id").dump() + " dismissed";
    const auto index = event.at("buttonIndex").get<std::int64_t>();
    if (index < 0)
        return words + " without a button";
    const auto& buttons = alert.at("buttons");
    const auto position = static_cast<std::size_t>(index);
    return words + " with " +
           (position < buttons.size() ? quoted(buttons[position])
                                      : "button " + std::to_string(index));
}

std::string listedExhibit(const Event& event) {
    const auto words = "exhibit " + text(event, "name") + " " + quoted(event.at("description"));
    return event.at("alive") == 0 ? words
                                  : words + ", " + event.at("alive").dump() + " objects alive";
}

std::string exhibitAction(const Event& event) {
    return "the action of " + quoted(event.at("action")) + " ran: exhibit " + text(event, "name");
}

struct Wording {
    const char* event;
    std::string (*words)(const Event&);
};

constexpr Wording wordings[] = {
    {eventName::homeScreenStarted, start},
    {eventName::homeScreenRestarted, restart},
    {eventName::homeScreenCrashed, crash},
    {eventName::libraryLoaded, loadedLibrary},
    {eventName::switchRegistered, registeredSwitch},
    {eventName::listenerRegistered, registeredListener},
    {eventName::switchListed, listedSwitch},
    {eventName::listenerListed, listedListener},
    {eventName::switchActivated, activatedSwitch},
    {eventName::eventFired, firedEvent},
    {eventName::alertShown, alert},
    {eventName::screen, alertsOnScreen},
    {eventName::urlOpened, openedURL},
    {eventName::exhibitListed, listedExhibit},
    {eventName::exhibitAction, exhibitAction},
};

std::string sentenceFor(const std::string& name, const Event& event) {
    for (const auto& wording : wordings)
        if (name == wording.event)
            return wording.words(event);
    return jsonLine(event);
}

std::string timeOf(const Event& event) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "[%8.3f] ", event.at("time").get<double>());
    return buffer;
}

/// A control character's picture, such as "␛" for an escape; nothing for any other character.
std::string pictureOf(std::string_view character) {
    const auto byte = static_cast<unsigned char>(character[0]);
    if (byte < 0x20)
        return {'\xE2', '\x90', static_cast<char>(0x80 + byte)};
    if (byte == 0x7F)
        return "␡";
    // The controls from U+0080 on have no pictures of their own.
    const bool isHighControl =
        byte == 0xC2 && character.size() > 1 && static_cast<unsigned char>(character[1]) < 0xA0;
    return isHighControl ? "\uFFFD" : "";
}

/// Sets further lines in, and makes control characters visible.
std::string laidOut(std::string_view words) {
    std::string result;
    for (std::size_t index = 0; index < words.size(); ++index) {
        const auto picture = pictureOf(words.substr(index, 2));
        if (words[index] == '\n')
            result.append("\n").append(indentation);
        else if (picture.empty())
            result += words[index];
        else
            result += picture;
        if (picture == "\uFFFD")
            ++index;
    }
    return result;
}

} // namespace

std::string EventWords::words(const Event& event) {
    return timeOf(event) + laidOut(sentence(event)) + "\n";
}

std::string EventWords::sentence(const Event& event) {
    const auto name = text(event, "event");
    if (name == eventName::homeScreenStarted)
        alerts_.clear();
    if (name == eventName::alertShown)
        alerts_[event.at("id")] = event;
    const bool isChange = name == eventName::alertChanged;
    if (!isChange && name != eventName::alertDismissed)
        return sentenceFor(name, event);

    const auto alert = alerts_.find(event.at("id"));
    if (alert == alerts_.end())
        return jsonLine(event);
    auto words = isChange ? change(event, alert->second) : dismissal(event, alert->second);
    alert->second.update(event);
    return words;
}

void EventPrinter::print(const Event& event) {
    output_.write(format_ == EventFormat::json ? jsonLine(event) + "\n" : words_.words(event));
}

} // namespace simulator
