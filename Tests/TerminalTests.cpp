#include "Simulator/Terminal/Interface.h"

#include "Platform/UIKit/AlertStyles.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using simulator::Area;
using simulator::Frame;
using simulator::Key;
using simulator::ShownAlert;
using simulator::Size;

constexpr Size small{80, 24};
constexpr auto phone = platform::UserInterfaceIdiom::phone;
constexpr auto pad = platform::UserInterfaceIdiom::pad;

ShownAlert alert(std::uint64_t id, std::vector<std::optional<std::string>> buttons) {
    ShownAlert alert;
    alert.id = id;
    alert.control = "UIAlertView";
    alert.title = "Purgo";
    alert.message = "Start it now?";
    alert.buttons = std::move(buttons);
    return alert;
}

/// Somebody in front of the interface.
class Person {
public:
    Person() {
        screen.toggles = {{"clean", "Clean", true, "/Switches/PGClean.bundle"},
                          {"now", "Clean now", false, std::nullopt}};
        screen.listeners = {{"asks", "Ask", "Asks before it cleans"}, {"cleans", "Clean", {}}};
    }

    void press(Key::Kind kind, int times = 1) {
        while (times-- > 0)
            interface.handle({kind, 0, 0, 0}, size);
    }
    void type(std::u32string_view text) {
        for (const char32_t character : text)
            interface.handle({Key::Kind::character, character, 0, 0}, size);
    }
    void click(const std::string& text) {
        const auto row = rowOf(text);
        const auto line = look().at(row);
        const int column = simulator::columnsOf(std::string_view(line).substr(0, line.find(text)));
        interface.handle({Key::Kind::click, 0, column, static_cast<int>(row)}, size);
    }

    Frame shown() { return interface.draw(size); }
    std::vector<std::string> look() { return shown().canvas.lines(); }
    std::string all() {
        std::string text;
        for (const auto& line : look())
            text += line + "\n";
        return text;
    }
    bool sees(const std::string& text) { return all().find(text) != std::string::npos; }
    /// The number of the first row with a text, or of the one behind the last.
    std::size_t rowOf(const std::string& text) {
        const auto lines = look();
        return static_cast<std::size_t>(
            std::find_if(lines.begin(), lines.end(),
                         [&text](const auto& line) { return line.find(text) != line.npos; }) -
            lines.begin());
    }

    /// The commands that were given since the last time, separated by commas.
    std::string commands() {
        std::string all;
        while (const auto command = interface.takeCommand())
            all += (all.empty() ? "" : ", ") + *command;
        return all;
    }

    Size size = small;
    simulator::PhoneScreen screen;
    simulator::Interface interface {
        screen, [] {
            return "picture.svg";
        }
    };
};

/// Fills the device and the log with a text, wherever one can stand.
void fill(Person& person, const std::string& text) {
    for (int count = 0; count < 9; ++count)
        person.screen.toggles.push_back({text + std::to_string(count), text, false, {}});
    person.screen.listeners.push_back({"long", text, text});
    person.interface.log({simulator::LogEntry::Kind::event, 1e7, text});
}

ShownAlert alertFullOf(const std::string& text, std::uint64_t id) {
    auto shown = alert(id, {text, std::nullopt, text, "Ok", text});
    shown.title = shown.message = text;
    shown.cancelButtonIndex = 1;
    if (id == 2)
        shown.textField = simulator::ShownTextField{text, text};
    if (id > 2)
        shown.anchor = simulator::ShownAnchor{id == 3 ? "view" : "toolbar",
                                              platform::CGRect{700, 1000, 900, 1e30F}};
    return shown;
}

/// Alerts leave the device's edges and the log as they were without them.
void expectInside(Person& person, const Frame& without) {
    const auto with = person.shown();
    const int right = without.log.x - 1;
    int changed = 0;
    for (int row = 0; row < person.size.rows - 1; ++row)
        for (int column = 0; column < person.size.columns; ++column)
            if (column == 0 || column >= right)
                changed += with.canvas.cell(column, row).characters !=
                           without.canvas.cell(column, row).characters;
    EXPECT_EQ(changed, 0) << person.all();
    const Area inside{1, 1, right - 1, person.size.rows - 3};
    for (const auto& target : with.targets)
        EXPECT_EQ(target.area.within(inside).width, target.area.width) << person.all();
}

void expectWholeLines(Person& person) {
    for (const auto& line : person.look())
        EXPECT_EQ(simulator::columnsOf(line), person.size.columns) << line;
    const auto frame = person.shown();
    for (int row = 1; row < person.size.rows - 2; ++row)
        EXPECT_EQ(frame.canvas.cell(person.size.columns - 1, row).characters, U"│");
}

TEST(Terminal, NothingLeavesItsBox) {
    const std::vector<std::string> texts = {
        "La pulizia inizierà tra 10 secondi. Vuoi avviarla subito?\nSpazio liberato: 6,1 MB",
        "クリーンアップが完了しました。10秒後にホーム画面を再起動します。今すぐ再起動しますか？",
        "Averyveryverylongwordwithoutanyspaceinitthatnobodycouldeverreadtotheend",
        "e\u0301e\u0301\u0301\u0301\u0301 👩\u200D👩\u200D👧 🇩🇪🇯🇵 👍🏽",
        "\u05E9\u05DC \xE2\x80\xAE right to left\xE2\x80\xAC",
        "\x1b[2J\x1b]0;title\x07 \xff\xfe \x9b \x7f\r\n\tend",
        std::string(900, 'x'),
        ""};
    const std::pair<Size, platform::UserInterfaceIdiom> devices[] = {
        {small, phone}, {small, pad}, {{200, 60}, phone}};
    for (const auto& text : texts)
        for (const auto& [size, idiom] : devices) {
            Person person;
            person.size = size;
            person.screen.idiom = idiom;
            fill(person, text);
            const auto without = person.shown();
            for (std::uint64_t id = 1; id < 5; ++id) {
                person.screen.alerts.insert(person.screen.alerts.begin(), alertFullOf(text, id));
                expectInside(person, without);
            }
            expectWholeLines(person);
        }
}

TEST(Terminal, TextsCannotCommandTheTerminal) {
    Person person;
    auto shown = alert(1, {"\x1b[31m"});
    shown.message = "a\x1b]0;b\x07\xC2\x9B"
                    "c";
    person.screen.alerts = {shown};
    EXPECT_TRUE(person.sees("a␛]0;b␇\uFFFDc")) << person.all();
    EXPECT_TRUE(person.sees("1 ␛[31m")) << person.all();
    EXPECT_EQ(person.all().find('\x1b'), std::string::npos);
    EXPECT_EQ(simulator::columnsOf("🇩🇪 👩\u200D👧"), 7);
}

TEST(Terminal, ButtonsStandInTheOrderOfTheControl) {
    Person person;
    auto shown = alert(1, {"No", "Yes"});
    shown.cancelButtonIndex = 0;
    person.screen.alerts = {shown};
    EXPECT_TRUE(person.sees("▸1 No (cancel) │ 2 Yes")) << person.all();

    shown.buttons = {"Erase", "Keep", "Cancel"};
    shown.destructiveButtonIndex = 0;
    shown.cancelButtonIndex = 2;
    shown.preferredStyle = platform::UIAlertControllerStyleActionSheet;
    for (const auto idiom : {phone, pad}) {
        person.screen.idiom = idiom;
        person.screen.alerts = {shown};
        const auto rows = person.look();
        const auto erase = person.rowOf("1 Erase");
        EXPECT_NE(rows[erase].find("destructive"), std::string::npos);
        EXPECT_LT(erase, person.rowOf("2 Keep"));
        EXPECT_LT(person.rowOf("2 Keep"), person.rowOf("3 Cancel"));
        EXPECT_NE(rows[person.rowOf("3 Cancel")].find("cancel"), std::string::npos);
    }
    // More buttons than there is room for: the one that has the focus is to be seen.
    shown.buttons.assign(40, "Same");
    shown.buttons[30] = "Wanted";
    person.screen.alerts = {shown};
    person.press(Key::Kind::down, 30);
    EXPECT_TRUE(person.sees("▸  Wanted")) << person.all();
}

TEST(Terminal, KeysReachWhatHasTheFocus) {
    Person person;
    person.press(Key::Kind::enter);
    EXPECT_EQ(person.commands(), "");
    person.press(Key::Kind::tab);
    person.press(Key::Kind::enter);
    EXPECT_EQ(person.commands(), "toggle clean");
    person.press(Key::Kind::tab, 2);
    EXPECT_TRUE(person.sees("▸ Ask"));
    person.press(Key::Kind::enter);
    person.type(U"bo");
    EXPECT_EQ(person.commands(), "event asks, abort asks, other asks");
    EXPECT_TRUE(person.sees("↳ double tap on the status bar"));
    person.type(U"A");
    EXPECT_TRUE(person.sees("no gesture"));
    person.press(Key::Kind::enter);
    EXPECT_EQ(person.commands(), "");
    person.press(Key::Kind::backTab, 2);
    person.press(Key::Kind::backTab);
    EXPECT_TRUE(person.sees("▸(P) Purgo")) << person.all();
    person.type(U"lrpc5");
    EXPECT_EQ(person.commands(), "unlock, restart, snapshot picture.svg, litter");
    person.screen.isUnlocked = true;
    person.type(U"l:wait 2.5");
    person.press(Key::Kind::enter);
    EXPECT_EQ(person.commands(), "lock, wait 2.5");
    person.type(U"?q");
    EXPECT_FALSE(person.interface.wantsToQuit());
    person.type(U"q");
    EXPECT_TRUE(person.interface.wantsToQuit());
}

TEST(Terminal, APressIsForTheAlertThatWasSeen) {
    Person person;
    auto first = alert(1, {"No", "Yes"});
    first.cancelButtonIndex = 0;
    person.screen.alerts = {first};
    // Nothing happens by a key that was meant for something else.
    person.press(Key::Kind::enter);
    EXPECT_EQ(person.commands(), "press #0");
    person.type(U"22");
    person.press(Key::Kind::right);
    person.press(Key::Kind::enter);
    EXPECT_EQ(person.interface.takeCommand(), "press #1");
    person.screen.alerts = {alert(2, {"Erase all"})};
    EXPECT_EQ(person.commands(), "");
    person.click("Erase all");
    EXPECT_EQ(person.commands(), "press #0");
    // The home screen behind it can be reached, as gestures can on the phone.
    person.press(Key::Kind::tab);
    person.press(Key::Kind::enter);
    EXPECT_EQ(person.commands(), "toggle clean");
    person.screen.alerts.clear();
    person.click("Ask");
    EXPECT_EQ(person.commands(), "event asks");
}

TEST(Terminal, LettersInATextFieldAreText) {
    Person person;
    auto asking = alert(3, {"Cancel", "Save"});
    asking.textField = simulator::ShownTextField{"old", "Name"};
    person.screen.alerts = {asking};
    person.type(U" q名1");
    person.press(Key::Kind::home);
    person.press(Key::Kind::remove);
    EXPECT_TRUE(person.sees("[ld q名1"));
    EXPECT_FALSE(person.interface.wantsToQuit());
    person.press(Key::Kind::enter);
    EXPECT_EQ(person.commands(), "type ld q名1");
    person.type(U"2");
    EXPECT_EQ(person.commands(), "press #1");
    // What was typed counts also when a button is pressed at once.
    person.press(Key::Kind::up);
    person.type(U"X");
    person.click("Save");
    EXPECT_EQ(person.commands(), "type oldX, press #1");
}

TEST(Terminal, ShowsTheHostApplicationAfterAHandOver) {
    Person person;
    person.screen.hostApplicationURL = "purgo://clean/?plugin=x";
    EXPECT_TRUE(person.sees("purgo://clean/?plugin=x"));
    EXPECT_FALSE(person.sees("Gestures"));
    person.press(Key::Kind::escape);
    EXPECT_TRUE(person.sees("Gestures"));
    person.click("(P) Purgo");
    EXPECT_TRUE(person.sees("its icon"));
    person.click("Home");
    EXPECT_TRUE(person.sees("Gestures"));
    person.screen.isSafeMode = true;
    EXPECT_TRUE(person.sees("safe mode"));
    EXPECT_TRUE(person.sees("disabled") && person.sees("│PGC│") && person.sees("┆ ? ┆"));
}

TEST(Terminal, TheLogAndLongAlertsScroll) {
    Person person;
    for (int number = 0; number < 100; ++number)
        person.interface.log(
            {simulator::LogEntry::Kind::event, 0, "entry " + std::to_string(number)});
    EXPECT_TRUE(person.sees("entry 99") && !person.sees("entry 50"));
    person.press(Key::Kind::pageUp, 3);
    EXPECT_FALSE(person.sees("entry 99"));
    person.press(Key::Kind::home);
    EXPECT_TRUE(person.sees("entry 0 ")) << person.all();
    person.press(Key::Kind::end);
    EXPECT_TRUE(person.sees("entry 99"));

    auto shown = alert(1, {"Ok"});
    shown.message = "";
    for (int number = 0; number < 60; ++number)
        *shown.message += "line " + std::to_string(number) + "\n";
    person.screen.alerts = {shown};
    EXPECT_TRUE(person.sees("line 3") && person.sees("1 Ok") && !person.sees("line 59"));
    person.press(Key::Kind::pageDown, 40);
    EXPECT_TRUE(person.sees("line 59") && person.sees("1 Ok"));
}

TEST(Terminal, TheGalleryListsItsExhibits) {
    Person person;
    person.type(U"g");
    EXPECT_EQ(person.commands(), "gallery");
    for (const char* name : {"one", "two", "three"})
        person.interface.eventHappened(
            {{"event", "exhibit"}, {"name", name}, {"description", "D"}});
    person.press(Key::Kind::down);
    EXPECT_TRUE(person.sees("▸two"));
    person.press(Key::Kind::enter);
    EXPECT_EQ(person.commands(), "gallery two view");
    person.type(U"g");
    person.press(Key::Kind::escape);
    EXPECT_TRUE(person.sees("Gestures"));
}

TEST(Terminal, ATooSmallWindowSaysSo) {
    Person person;
    for (const Size size : {Size{79, 24}, Size{80, 23}, Size{10, 4}, Size{1, 1}, Size{0, 0}}) {
        person.size = size;
        EXPECT_FALSE(person.sees("Gestures"));
        person.press(Key::Kind::enter);
    }
    person.size = {50, 10};
    EXPECT_TRUE(person.sees("50×10"));
}

} // namespace
