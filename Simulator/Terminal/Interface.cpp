#include "Simulator/Terminal/Interface.h"

#include "Simulator/Picture/Characters.h"

#include <algorithm>
#include <set>
#include <utility>

namespace simulator {

namespace {

using Kind = TargetId::Kind;
using Overlay = InterfaceState::Overlay;

constexpr std::size_t longestLog = 2000;
constexpr int wheelLines = 3;

/// Where the focus goes when an alert comes: to where typing or nothing does no harm.
std::optional<TargetId> firstFocusOf(const ShownAlert& alert) {
    if (alert.textField)
        return TargetId{Kind::textField, "", alert.id};
    if (alert.buttons.empty())
        return std::nullopt;
    const auto index = alert.cancelButtonIndex.value_or(0);
    return TargetId{Kind::button, "", alert.id, std::min(index, alert.buttons.size() - 1)};
}

std::string textMember(const Event& event, const char* member) {
    const auto found = event.find(member);
    return found != event.end() && found->is_string() ? found->get<std::string>() : "";
}

std::string trimmed(const std::string& text) {
    const auto begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? ""
                                      : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

/// Says whether the key was one for editing.
bool edit(TextDraft& draft, const Key& key) {
    switch (key.kind) {
    case Key::Kind::character:
        if (key.character < 0x20 || key.character == 0x7F)
            return false;
        draft.text.insert(draft.cursor++, 1, key.character);
        return true;
    case Key::Kind::backspace:
        if (draft.cursor > 0)
            draft.text.erase(--draft.cursor, 1);
        return true;
    case Key::Kind::remove:
        if (draft.cursor < draft.text.size())
            draft.text.erase(draft.cursor, 1);
        return true;
    case Key::Kind::left:
        draft.cursor -= draft.cursor > 0 ? 1 : 0;
        return true;
    case Key::Kind::right:
        draft.cursor = std::min(draft.cursor + 1, draft.text.size());
        return true;
    case Key::Kind::home:
        draft.cursor = 0;
        return true;
    case Key::Kind::end:
        draft.cursor = draft.text.size();
        return true;
    default:
        return false;
    }
}

} // namespace

const ShownAlert* Interface::frontAlert() const {
    return screen_.alerts.empty() ? nullptr : &screen_.alerts.front();
}

Frame Interface::draw(Size size) {
    keepFocusValid();
    assignMissingGestures();
    auto frame = drawFrame(screen_, state_, size);
    state_.logScroll = frame.logScroll;
    state_.textScroll = frame.textScroll;
    return frame;
}

void Interface::keepFocusValid() {
    const auto* alert = frontAlert();
    const auto id = alert ? alert->id : 0;
    if (seenAlert_ != id) {
        if (seenAlert_ == 0)
            focusBehind_ = state_.focus;
        setFocus(alert ? firstFocusOf(*alert) : focusBehind_);
        state_.textScroll = 0;
        seenAlert_ = id;
    }
    const bool isHostOpen = screen_.hostApplicationURL || state_.isHostApplicationOpen;
    const bool isFocusGone = state_.focus && !state_.focus->isOfAlert() &&
                             isHostOpen != (state_.focus->kind == Kind::home);
    const bool isDisabled = state_.focus && state_.focus->isOfAlert() && state_.focus->alert != id;
    if (isFocusGone || isDisabled || !state_.focus)
        if (!alert || isDisabled)
            setFocus(isHostOpen ? std::optional(TargetId{Kind::home}) : std::nullopt);
}

void Interface::assignMissingGestures() {
    std::set<std::size_t> used;
    for (const auto& listener : screen_.listeners)
        if (const auto found = state_.gestures.find(listener.name); found != state_.gestures.end())
            used.insert(found->second);
    for (const auto& listener : screen_.listeners)
        for (std::size_t gesture = 0; gesture < gestureNames.size(); ++gesture)
            if (!state_.gestures.contains(listener.name) && used.insert(gesture).second)
                state_.gestures[listener.name] = gesture;
}

void Interface::handle(const Key& key, Size size) {
    const auto frame = draw(size);
    if (key.kind == Key::Kind::click)
        click(key, frame);
    else if (key.kind == Key::Kind::wheelUp || key.kind == Key::Kind::wheelDown)
        scroll(key, frame);
    else if (state_.commandLine)
        handleCommandLine(key);
    else if (state_.overlay == Overlay::help)
        state_.overlay = Overlay::none;
    else if (state_.overlay == Overlay::gallery)
        handleGallery(key);
    else if (!handleField(key)) {
        if (key.kind == Key::Kind::character)
            handleLetter(key.character);
        else
            handleMovement(key, frame);
    }
}

void Interface::handleCommandLine(const Key& key) {
    const bool isLeft = key.kind == Key::Kind::backspace && state_.commandLine->text.empty();
    if (key.kind == Key::Kind::escape || isLeft)
        state_.commandLine.reset();
    else if (key.kind != Key::Kind::enter)
        edit(*state_.commandLine, key);
    else {
        const auto line = trimmed(encoded(std::exchange(state_.commandLine, {})->text));
        if (line == "quit")
            wantsToQuit_ = true;
        else if (line == "gallery")
            openGallery();
        else if (line == "help")
            state_.overlay = Overlay::help;
        else if (!line.empty())
            command(line);
    }
}

void Interface::openGallery() {
    state_.exhibits.clear();
    state_.exhibit = 0;
    state_.overlay = Overlay::gallery;
    command("gallery");
}

void Interface::showExhibit(const std::string& backend) {
    if (state_.exhibit >= state_.exhibits.size())
        return;
    state_.overlay = Overlay::none;
    command("gallery " + state_.exhibits[state_.exhibit].name + " " + backend);
}

void Interface::handleGallery(const Key& key) {
    const auto count = state_.exhibits.size();
    const bool isBack = key.kind == Key::Kind::up || key.kind == Key::Kind::backTab;
    const bool isOn = key.kind == Key::Kind::down || key.kind == Key::Kind::tab;
    if (count > 0 && (isBack || isOn))
        state_.exhibit = (state_.exhibit + (isOn ? 1 : count - 1)) % count;
    else if (key.kind == Key::Kind::enter)
        showExhibit("view");
    else if (key.character == U'c')
        showExhibit("controller");
    else if (key.kind == Key::Kind::escape || key.character == U'g' || key.character == U'q')
        state_.overlay = Overlay::none;
}

/// Says whether the key was for the text field that has the focus.
bool Interface::handleField(const Key& key) {
    if (!state_.fieldText)
        return false;
    if (key.kind == Key::Kind::enter) {
        const auto* alert = frontAlert();
        commitField();
        if (alert && !alert->buttons.empty())
            setFocus(TargetId{Kind::button, "", alert->id, 0});
        return true;
    }
    if (key.kind == Key::Kind::escape) {
        const auto* alert = frontAlert();
        setFocus(alert && !alert->buttons.empty()
                     ? std::optional(TargetId{Kind::button, "", alert->id, 0})
                     : std::nullopt);
        return true;
    }
    if (edit(*state_.fieldText, key))
        return true;
    commitField();
    return false;
}

/// Hands over what was typed, unless the field holds it already.
void Interface::commitField() {
    const auto* alert = frontAlert();
    if (!state_.fieldText || !alert || !alert->textField)
        return;
    const auto text = encoded(state_.fieldText->text);
    if (text != alert->textField->text)
        command(text.empty() ? "type" : "type " + text, alert->id);
}

void Interface::handleLetter(char32_t letter) {
    if (letter >= U'1' && letter <= U'9')
        return pressButton(static_cast<std::size_t>(letter - U'1'));
    switch (letter) {
    case U'q':
        wantsToQuit_ = true;
        break;
    case U'l':
        command(screen_.isUnlocked ? "lock" : "unlock");
        break;
    case U'r':
        command("restart");
        break;
    case U'p':
        command("snapshot " + pictureName_());
        break;
    case U'c':
        command("litter");
        break;
    case U'g':
        openGallery();
        break;
    case U'?':
        state_.overlay = Overlay::help;
        break;
    case U':':
        state_.commandLine.emplace();
        break;
    case U'a':
    case U'A':
        assignGesture(letter == U'a');
        break;
    case U'b':
        tellListener("abort");
        break;
    case U'o':
        tellListener("other");
        break;
    default:
        break;
    }
}

void Interface::handleMovement(const Key& key, const Frame& frame) {
    switch (key.kind) {
    case Key::Kind::enter:
        if (state_.focus)
            activate(*state_.focus);
        break;
    case Key::Kind::escape:
        escape();
        break;
    case Key::Kind::tab:
    case Key::Kind::backTab:
        moveFocus(frame, key.kind == Key::Kind::tab, false);
        break;
    case Key::Kind::down:
    case Key::Kind::right:
        moveFocus(frame, true, frontAlert() != nullptr);
        break;
    case Key::Kind::up:
    case Key::Kind::left:
        moveFocus(frame, false, frontAlert() != nullptr);
        break;
    default:
        scroll(key, frame);
        break;
    }
}

void Interface::scroll(const Key& key, const Frame& frame) {
    const bool isWheel = key.kind == Key::Kind::wheelUp || key.kind == Key::Kind::wheelDown;
    const bool isOnLog = frame.log.contains(key.column, key.row);
    const int lines = isWheel ? wheelLines : std::max(1, frame.log.height - 4);
    const bool isBack = key.kind == Key::Kind::wheelUp || key.kind == Key::Kind::pageUp;
    const bool isOn = key.kind == Key::Kind::wheelDown || key.kind == Key::Kind::pageDown;
    // Frames say how far there is something to scroll to.
    if (frame.isTextCut && (isBack || isOn) && !(isWheel && isOnLog))
        state_.textScroll = std::max(0, state_.textScroll + (isBack ? -wheelLines : wheelLines));
    else if (isBack || isOn)
        state_.logScroll = std::max(0, state_.logScroll + (isBack ? lines : -lines));
    else if (key.kind == Key::Kind::home)
        state_.logScroll = 1 << 20;
    else if (key.kind == Key::Kind::end)
        state_.logScroll = 0;
}

void Interface::click(const Key& key, const Frame& frame) {
    const auto target =
        std::find_if(frame.targets.begin(), frame.targets.end(), [&key](const Target& each) {
            return each.area.contains(key.column, key.row);
        });
    if (state_.overlay == Overlay::help || target == frame.targets.end()) {
        state_.overlay = Overlay::none;
        return;
    }
    if (target->id.kind == Kind::exhibit) {
        state_.exhibit = target->id.index;
        return showExhibit("view");
    }
    const auto id = target->id;
    commitField();
    setFocus(id);
    activate(id);
}

void Interface::setFocus(const std::optional<TargetId>& focus) {
    if (state_.focus == focus)
        return;
    state_.focus = focus;
    state_.fieldText.reset();
    const auto* alert = frontAlert();
    if (!focus || focus->kind != Kind::textField || !alert || !alert->textField)
        return;
    const auto text = decoded(alert->textField->text);
    state_.fieldText = TextDraft{text, text.size()};
}

void Interface::moveFocus(const Frame& frame, bool isForward, bool staysInAlert) {
    std::vector<TargetId> all;
    for (const auto& target : frame.targets)
        if (!staysInAlert || target.id.isOfAlert())
            all.push_back(target.id);
    if (all.empty())
        return;
    const auto present =
        state_.focus ? std::find(all.begin(), all.end(), *state_.focus) : all.end();
    const auto count = all.size();
    auto index = static_cast<std::size_t>(present - all.begin());
    if (present == all.end())
        index = isForward ? 0 : count - 1;
    else
        index = (index + (isForward ? 1 : count - 1)) % count;
    setFocus(all[index]);
}

void Interface::activate(const TargetId& target) {
    switch (target.kind) {
    case Kind::toggle:
        command("toggle " + target.name);
        break;
    case Kind::listener:
        tellListener("event");
        break;
    case Kind::hostApplication:
        state_.isHostApplicationOpen = true;
        break;
    case Kind::home:
        escape();
        break;
    case Kind::button:
        pressButton(target.index);
        break;
    case Kind::textField:
    case Kind::exhibit:
        break;
    }
}

void Interface::escape() {
    const auto* alert = frontAlert();
    if (alert && alert->cancelButtonIndex && (!state_.focus || state_.focus->isOfAlert()))
        return pressButton(*alert->cancelButtonIndex);
    screen_.hostApplicationURL.reset();
    state_.isHostApplicationOpen = false;
}

void Interface::pressButton(std::size_t index) {
    const auto* alert = frontAlert();
    if (alert && index < alert->buttons.size())
        command("press #" + std::to_string(index), alert->id);
}

void Interface::assignGesture(bool isForward) {
    if (!state_.focus || state_.focus->kind != Kind::listener)
        return note("choose a listener first: a assigns another gesture to it");
    // "None" has a place among the gestures too.
    const auto count = gestureNames.size() + 1;
    const auto found = state_.gestures.find(state_.focus->name);
    auto gesture = found == state_.gestures.end() ? gestureNames.size() : found->second;
    gesture = (gesture + (isForward ? 1 : count - 1)) % count;
    state_.gestures[state_.focus->name] = gesture;
}

void Interface::tellListener(const std::string& word) {
    if (!state_.focus || state_.focus->kind != Kind::listener)
        return note("choose a listener first");
    const auto& name = state_.focus->name;
    const auto gesture = state_.gestures.find(name);
    if (gesture == state_.gestures.end() || gesture->second >= gestureNames.size())
        return note("no gesture is assigned to this listener: a assigns one");
    note(std::string(gestureNames[gesture->second]) + (word == "abort" ? ", given up half-way"
                                                       : word == "other"
                                                           ? ", handled by another listener"
                                                           : ""));
    command(word + " " + name);
}

void Interface::command(std::string line, std::optional<std::uint64_t> alert) {
    pending_.push_back({std::move(line), alert});
}

std::optional<std::string> Interface::takeCommand() {
    while (!pending_.empty()) {
        auto next = std::move(pending_.front());
        pending_.pop_front();
        const auto* alert = frontAlert();
        if (next.alert && (!alert || alert->id != *next.alert))
            continue;
        log({LogEntry::Kind::command, state_.now, "> " + next.line});
        return std::move(next.line);
    }
    return std::nullopt;
}

void Interface::log(LogEntry entry) {
    state_.log.push_back(std::move(entry));
    if (state_.log.size() > longestLog)
        state_.log.pop_front();
}

void Interface::note(std::string text) {
    log({LogEntry::Kind::note, state_.now, std::move(text)});
}

void Interface::eventHappened(const Event& event) {
    const auto name = textMember(event, "event");
    if (name == eventName::exhibitListed)
        state_.exhibits.push_back({textMember(event, "name"), textMember(event, "description")});
    else if (name == eventName::homeScreenStarted)
        state_.isHostApplicationOpen = false;
}

} // namespace simulator
