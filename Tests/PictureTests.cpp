#include "Simulator/Picture/PhoneScreen.h"

#include "Platform/Text.h"
#include "Simulator/Picture/PictureLayout.h"
#include "Simulator/Picture/SVGPicture.h"
#include "Simulator/Picture/Typesetting.h"
#include "Tests/Support/MarkupReader.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using simulator::AlertLayout;
using simulator::Box;
using simulator::Event;
using simulator::PhoneScreen;
using simulator::PictureLayout;
using simulator::ShownAlert;
using simulator::TextBlock;

using Lines = std::vector<std::string>;

constexpr auto phone = platform::UserInterfaceIdiom::phone;
constexpr auto pad = platform::UserInterfaceIdiom::pad;

PhoneScreen after(const std::vector<std::string>& events) {
    PhoneScreen screen;
    for (const auto& event : events)
        screen.apply(Event::parse(event));
    return screen;
}

std::string idsOf(const PhoneScreen& screen) {
    std::string ids;
    for (const auto& alert : screen.alerts)
        ids += std::to_string(alert.id) + " ";
    return ids;
}

TEST(PhoneScreen, AlertsCoverEachOtherByTheirLevels) {
    auto screen = after({R"({"event":"alert-shown","id":1,"control":"UIAlertView"})",
                         R"({"event":"alert-shown","id":2,"control":"UIActionSheet"})",
                         R"({"event":"alert-shown","id":3,"control":"UIAlertController"})",
                         R"({"event":"alert-shown","id":4,"control":"UIAlertView"})",
                         R"({"event":"alert-shown","id":5,"control":"UIAlertController",
                             "windowLevel":2001.0})"});
    EXPECT_EQ(idsOf(screen), "5 4 1 3 2 ");
    screen.apply(Event::parse(R"({"event":"alert-dismissed","id":4,"buttonIndex":-1})"));
    EXPECT_EQ(idsOf(screen), "5 1 3 2 ");
    screen.apply(Event::parse(R"({"event":"screen","alerts":[{"id":9},{"id":8}]})"));
    EXPECT_EQ(idsOf(screen), "9 8 ");
}

TEST(PhoneScreen, AChangeReachesItsAlertOnly) {
    const auto screen =
        after({R"({"event":"alert-shown","id":1,"title":"One","message":"first"})",
               R"({"event":"alert-shown","id":2,"title":"Two","message":"second"})",
               R"({"event":"alert-changed","id":1,"title":null,"message":"third"})",
               R"({"event":"alert-changed","id":7,"title":"Nobody","message":"never"})"});
    EXPECT_EQ(screen.alerts[0].message, "second");
    EXPECT_EQ(screen.alerts[1].message, "third");
    EXPECT_EQ(screen.alerts[1].title, std::nullopt);
}

TEST(PhoneScreen, ANewHomeScreenStartsEmpty) {
    const std::vector<std::string> before = {
        R"({"event":"home-screen-started","system":"8.4","safeMode":false})",
        R"({"event":"switch-registered","identifier":"a.b"})",
        R"({"event":"switch","identifier":"a.b","title":"AB","enabled":false,"bundle":"/X"})",
        R"({"event":"listener-registered","name":"l"})",
        R"({"event":"listener","name":"l","title":"L","description":"D"})",
        R"({"event":"url-opened","url":"purgo://clean/","through":"openURL"})",
        R"({"event":"alert-shown","id":1,"title":"One"})"};
    auto screen = after(before);
    ASSERT_EQ(screen.toggles.size(), 1U);
    EXPECT_EQ(screen.toggles[0].title, "AB");
    EXPECT_FALSE(screen.toggles[0].isEnabled);
    ASSERT_EQ(screen.listeners.size(), 1U);
    EXPECT_EQ(screen.listeners[0].description, "D");
    EXPECT_EQ(screen.hostApplicationURL, "purgo://clean/");

    screen.apply(Event::parse(R"({"time":70.5,"event":"home-screen-crashed","signal":6})"));
    screen.apply(Event::parse(R"({"event":"home-screen-started","system":"8.4","safeMode":true})"));
    EXPECT_TRUE(screen.toggles.empty() && screen.listeners.empty() && screen.alerts.empty());
    EXPECT_EQ(screen.hostApplicationURL, std::nullopt);
    EXPECT_TRUE(screen.isSafeMode);
    EXPECT_EQ(screen.time, 70.5);
    EXPECT_EQ(screen.system.text(), "8.4");
}

TEST(PhoneScreen, EventsOfAnyShapeAreTaken) {
    auto screen =
        after({"7", "null", "[]", "{}", R"({"event":5,"time":"now"})", R"({"event":"alert-shown"})",
               R"({"event":"alert-shown","id":"x","title":3,"buttons":{"a":1},"anchor":[],
                   "textField":"t","cancelButtonIndex":-1,"windowLevel":null})",
               R"({"event":"alert-shown","buttons":[null,1,"B"],"anchor":{"rect":{"x":1}}})",
               R"({"event":"screen","alerts":null})", R"({"event":"switch"})",
               R"({"event":"home-screen-started","system":"six"})", R"({"event":"url-opened"})"});
    EXPECT_EQ(screen.system.text(), "6.1");
    EXPECT_EQ(screen.hostApplicationURL, std::nullopt);
    screen.hostApplicationURL = "purgo://clean/";
    screen.setUnlocked(true);
    EXPECT_TRUE(screen.hostApplicationURL.has_value());
    screen.setUnlocked(false);
    EXPECT_FALSE(screen.hostApplicationURL.has_value());
}

Lines linesOf(std::string_view text, double width, double height = 1000) {
    Lines lines;
    for (const auto& line : simulator::wrappedText(text, {10}, {0, 0, width, height}).lines)
        lines.push_back(line.text);
    return lines;
}

TEST(Typesetting, LinesBreakWhereAReaderExpectsThem) {
    EXPECT_EQ(linesOf("Start it now?", 45), (Lines{"Start it", "now?"}));
    EXPECT_EQ(linesOf("one\r\ntwo\rthree\u2028four\n", 100),
              (Lines{"one", "two", "three", "four", ""}));
    EXPECT_EQ(linesOf("12\u00A0345 MB", 40), (Lines{"12\u00A0345", "MB"}));
    // No line begins with a full stop or ends with an opening bracket.
    EXPECT_EQ(linesOf("完了しました。「今すぐ」", 60), (Lines{"完了しまし", "た。「今す", "ぐ」"}));
    EXPECT_EQ(linesOf("purgo://clean/?plugin=com", 115), (Lines{"purgo://clean/?", "plugin=com"}));
}

TEST(Typesetting, OverlongWordsBreakBetweenWholeCharacters) {
    const std::string letter = "e\u0301";
    const std::string family = "👨\u200D👩\u200D👧";
    const std::string hindi = "क्ष";
    for (const std::string& character : {letter, family, hindi, std::string("🇮🇹")}) {
        std::string word;
        for (int count = 0; count < 40; ++count)
            word += character;
        const Lines lines = linesOf(word, 60);
        ASSERT_GT(lines.size(), 1U) << character;
        for (const auto& line : lines)
            EXPECT_EQ(line.size() % character.size(), 0U) << line;
    }
    // A pile of marks would grow into the neighbouring lines.
    std::string pile = "a";
    for (int count = 0; count < 500; ++count)
        pile += "\u0301";
    EXPECT_LT(linesOf(pile, 60).front().size(), 20U);
}

TEST(Typesetting, WhatDoesNotFitIsCutWithAnEllipsis) {
    const Lines cut = linesOf("one two three four five six", 60, 26);
    ASSERT_EQ(cut.size(), 2U);
    EXPECT_EQ(cut.back().substr(cut.back().size() - 3), "…");
    EXPECT_EQ(linesOf("one\ntwo", 60, 13), Lines{"one…"});
    EXPECT_EQ(linesOf("one two", 60, 13), Lines{"one two"});

    const Box box{0, 0, 80, 30};
    EXPECT_EQ(simulator::fittedText("Start\nit", {10}, box).lines.front().text, "Start it");
    const TextBlock smaller = simulator::fittedText("Start it now, if you please", {10}, box);
    EXPECT_LT(smaller.style.size, 10);
    EXPECT_GE(smaller.style.size, 7.5);
    EXPECT_NE(smaller.lines.front().text.find("…"), std::string::npos);
    EXPECT_TRUE(box.contains(smaller.lines.front().box));
}

TEST(Typesetting, EachParagraphHasItsOwnDirection) {
    const auto block = simulator::wrappedText("شروع\n10 Yes\n(נקה)", {10}, {0, 0, 200, 100},
                                              simulator::Alignment::leading);
    ASSERT_EQ(block.lines.size(), 3U);
    EXPECT_TRUE(block.lines[0].isRightToLeft);
    EXPECT_FALSE(block.lines[1].isRightToLeft);
    EXPECT_TRUE(block.lines[2].isRightToLeft);
    EXPECT_EQ(block.lines[0].box.right(), 200);
    EXPECT_EQ(block.lines[1].box.x, 0);
}

/// Whether a text block and all its lines lie in a box.
void expectInside(Box around, const TextBlock& block) {
    if (block.lines.empty())
        return;
    EXPECT_TRUE(around.contains(block.box)) << block.lines.front().text;
    for (const auto& line : block.lines) {
        EXPECT_TRUE(block.box.contains(line.box)) << line.text;
        EXPECT_LE(simulator::textWidth(line.text, block.style), block.box.width + 0.01)
            << line.text;
    }
}

void expectApart(const std::vector<Box>& boxes) {
    for (std::size_t one = 0; one < boxes.size(); ++one)
        for (std::size_t other = one + 1; other < boxes.size(); ++other)
            EXPECT_FALSE(boxes[one].overlaps(boxes[other])) << one << " and " << other;
}

void expectInOrder(const AlertLayout& alert) {
    EXPECT_TRUE(std::is_sorted(
        alert.buttons.begin(), alert.buttons.end(), [](const auto& one, const auto& other) {
            return std::pair(one.box.y, one.box.x) < std::pair(other.box.y, other.box.x);
        }));
}

void expectWellLaidOut(const AlertLayout& alert, Box screen) {
    EXPECT_TRUE(screen.contains(alert.box));
    expectApart(alert.panels);
    const auto holds = [&alert](const Box& box) {
        return std::any_of(alert.panels.begin(), alert.panels.end(),
                           [&box](const Box& panel) { return panel.contains(box); });
    };
    std::vector<Box> parts;
    for (const auto& text : alert.texts) {
        parts.push_back(text.box);
        expectInside(alert.panels.front(), text);
    }
    if (alert.textField) {
        parts.push_back(alert.textField->box);
        expectInside(alert.textField->box, alert.textField->text);
    }
    for (const auto& button : alert.buttons) {
        parts.push_back(button.box);
        EXPECT_GE(button.box.height, 20);
        expectInside(button.box, button.title);
    }
    for (const auto& part : parts)
        EXPECT_TRUE(holds(part));
    if (alert.arrow)
        parts.push_back(alert.arrow->box);
    expectApart(parts);
    expectInOrder(alert);
}

void expectWellLaidOut(const PictureLayout& layout) {
    std::vector<Box> parts{layout.statusBar.box, layout.dock};
    for (const auto& toggle : layout.toggles) {
        parts.push_back(toggle.box);
        EXPECT_TRUE(toggle.box.contains(toggle.icon));
        expectInside(toggle.box, toggle.title);
    }
    expectInside(layout.dock, layout.hostApplication.title);
    expectInside(layout.statusBar.box, layout.statusBar.clock);
    if (layout.note)
        parts.push_back(layout.note->box);
    if (layout.bar)
        parts.push_back(layout.bar->box);
    expectApart(parts);
    if (layout.hostPage) {
        EXPECT_TRUE(layout.hostPage->box.contains(layout.hostPage->panel));
        expectInside(layout.hostPage->panel, layout.hostPage->url);
    }
    for (const auto& alert : layout.alerts)
        expectWellLaidOut(alert, layout.screen);
}

std::string repeated(const std::string& text, int count) {
    std::string result;
    for (int done = 0; done < count; ++done)
        result += text;
    return result;
}

/// Texts of many scripts and lengths, and some that nobody would write.
std::vector<std::optional<std::string>> texts() {
    return {std::nullopt,
            "",
            "Purgo",
            "La schermata Home si riavvierà tra 10 secondi.\nVuoi riavviarla subito?",
            "10秒後にホーム画面を再起動します。今すぐ再起動しますか？",
            "Очистка начнётся через 10 секунд. हटाई गई फ़ाइलें: ४२ هل تريد البدء الآن؟",
            repeated("W", 400),
            repeated("👨\u200D👩\u200D👧", 90),
            repeated("\n", 200),
            repeated("Lorem ipsum dolor sit amet. ", 4000),
            "\0\x01\xFF<&\">]]>\uFFFE\t\xE2\x80\xAE.\xE2\x80\xAC\u0085"s};
}

std::vector<std::vector<std::optional<std::string>>> buttonLists() {
    std::vector<std::optional<std::string>> many(24, "Button");
    return {{},
            {"Ok"},
            {"No", "Sì"},
            {"はい、すべてのファイルを今すぐ削除します", repeated("x", 500)},
            {"Delete", std::nullopt, "Cancel"},
            {"A", "B", "C", "D", "Cancel"},
            many};
}

std::vector<ShownAlert> alerts() {
    std::vector<ShownAlert> all;
    const auto allTexts = texts();
    for (const char* control : {"UIAlertView", "UIActionSheet"})
        for (const auto& buttons : buttonLists())
            for (std::size_t index = 0; index < allTexts.size(); ++index) {
                ShownAlert alert;
                alert.control = control;
                alert.title = allTexts[index];
                alert.message = allTexts[(index * 3 + 1) % allTexts.size()];
                alert.buttons = buttons;
                if (!buttons.empty())
                    alert.cancelButtonIndex = buttons.size() == 2 ? 0 : buttons.size() - 1;
                if (index % 3 == 0)
                    alert.textField = {allTexts[index].value_or(""), "Name"};
                all.push_back(alert);
            }
    return all;
}

std::vector<PhoneScreen> devices() {
    std::vector<PhoneScreen> all;
    for (const auto idiom : {phone, pad})
        for (const platform::SystemVersion system : {platform::SystemVersion{5, 1}, {8, 4}}) {
            PhoneScreen screen;
            screen.idiom = idiom;
            screen.system = system;
            all.push_back(screen);
        }
    return all;
}

TEST(Picture, EverythingInAnAlertStaysInItsBoxAndApartFromTheRest) {
    const auto all = alerts();
    for (PhoneScreen screen : devices())
        for (const ShownAlert& alert : all) {
            SCOPED_TRACE(alert.control + " " + screen.system.text() + " " +
                         std::to_string(alert.buttons.size()) + " " +
                         alert.title.value_or("(none)").substr(0, 20));
            screen.alerts = {alert};
            const auto layout = simulator::pictureLayout(screen);
            expectWellLaidOut(layout);
            EXPECT_EQ(layout.alerts.front().buttons.size(), alert.buttons.size());
            ASSERT_FALSE(HasFailure());
        }
}

TEST(Picture, MissingTextsLeaveNoGap) {
    for (PhoneScreen screen : devices()) {
        ShownAlert alert;
        alert.buttons = {"Ok"};
        alert.title = "Purgo";
        screen.alerts = {alert, alert, alert};
        screen.alerts[1].message = "";
        screen.alerts[2].message = "A message";
        const auto layout = simulator::pictureLayout(screen);
        EXPECT_EQ(layout.alerts[2].box.height, layout.alerts[1].box.height);
        EXPECT_LT(layout.alerts[1].box.height, layout.alerts[0].box.height);
    }
}

TEST(Picture, ButtonsStandAsTheSystemPutsThem) {
    PhoneScreen screen;
    screen.system = {8, 4};
    ShownAlert alert;
    alert.buttons = {"No", "Yes"};
    alert.cancelButtonIndex = 0;
    screen.alerts = {alert};
    const auto two = simulator::pictureLayout(screen).alerts.front();
    EXPECT_EQ(two.buttons[0].box.y, two.buttons[1].box.y);
    EXPECT_LT(two.buttons[0].box.x, two.buttons[1].box.x);
    EXPECT_EQ(two.buttons[0].kind, simulator::AlertButton::Kind::cancel);
    EXPECT_TRUE(two.buttons[0].title.style.isBold);
    EXPECT_FALSE(two.buttons[1].title.style.isBold);

    alert.control = "UIActionSheet";
    alert.buttons = {"Delete", "Archive", "Cancel"};
    alert.cancelButtonIndex = 2;
    alert.destructiveButtonIndex = 0;
    screen.alerts = {alert};
    const auto sheet = simulator::pictureLayout(screen).alerts.front();
    ASSERT_EQ(sheet.panels.size(), 2U);
    EXPECT_TRUE(sheet.panels[1].contains(sheet.buttons[2].box));
    EXPECT_EQ(sheet.buttons[0].kind, simulator::AlertButton::Kind::destructive);
    EXPECT_GT(sheet.box.bottom(), 460);

    // More than can be shown: the last of those that are says so.
    screen.alerts[0].buttons.assign(500, "B");
    const auto many = simulator::pictureLayout(screen).alerts.front();
    EXPECT_LT(many.buttons.size(), 500U);
    EXPECT_EQ(many.buttons.back().title.lines.front().text, "…");
}

TEST(Picture, APopoverPointsAtItsAnchorAndLeavesItFree) {
    const auto infinity = std::numeric_limits<platform::CGFloat>::infinity();
    const auto far = std::numeric_limits<platform::CGFloat>::max();
    struct Anchor {
        platform::CGRect rect;
        bool leavesRoom;
    };
    const std::vector<Anchor> anchors = {
        {{384, 512, 1, 1}, true},           {{0, 0, 60, 40}, true},
        {{700, 980, 68, 44}, true},         {{300, 40, 100, 940}, true},
        {{40, 300, 40, 40}, true},          {{-500, 4000, 10, 10}, true},
        {{far, -far, far, infinity}, true}, {{0, 200, 768, 620}, false},
        {{0, 0, 768, 1024}, false}};
    for (const auto& [rect, leavesRoom] : anchors)
        for (const int major : {6, 8}) {
            SCOPED_TRACE(std::to_string(rect.x) + " " + std::to_string(rect.y));
            PhoneScreen screen;
            screen.idiom = pad;
            screen.system = {major, 1};
            ShownAlert alert;
            alert.control = "UIActionSheet";
            alert.title = "Delete everything?\n\nThis cannot be undone.";
            alert.buttons = {"Delete", "Archive", "Cancel"};
            alert.anchor = {"view", rect};
            screen.alerts = {alert};
            const auto layout = simulator::pictureLayout(screen);
            expectWellLaidOut(layout);
            const bool isPoint = rect.width <= 1 || rect.x > 768 || rect.y > 1024;
            EXPECT_EQ(layout.anchors.size(), leavesRoom && !isPoint ? 1U : 0U);
            const auto& popover = layout.alerts.front();
            ASSERT_TRUE(popover.arrow);
            EXPECT_TRUE(layout.screen.contains(popover.arrow->box));
            for (const auto& anchor : layout.anchors)
                EXPECT_FALSE(anchor.overlaps(popover.box) || anchor.overlaps(popover.arrow->box));
        }

    PhoneScreen screen;
    screen.idiom = pad;
    screen.apply(Event::parse(R"({"event":"alert-shown","id":1,"control":"UIActionSheet",
        "buttons":["A"],"anchor":{"kind":"barButtonItem","rect":null}})"));
    const auto layout = simulator::pictureLayout(screen);
    ASSERT_TRUE(layout.bar && layout.bar->button);
    EXPECT_GE(layout.alerts.front().arrow->box.y, layout.bar->button->bottom());
}

TEST(Picture, StackedAlertsLookOutFromBehindEachOther) {
    for (PhoneScreen screen : devices()) {
        for (const char* title : {"One", "Two", "Three", "Four", "Five"}) {
            ShownAlert alert;
            alert.title = title;
            alert.message = title == std::string("Three") ? repeated("word ", 60) : "";
            alert.buttons = {"Ok"};
            screen.alerts.push_back(alert);
        }
        const auto layout = simulator::pictureLayout(screen);
        expectWellLaidOut(layout);
        EXPECT_EQ(layout.alerts.back().texts.front().lines.front().text, "One");
        for (std::size_t index = 1; index < layout.alerts.size(); ++index)
            EXPECT_LT(layout.alerts[index - 1].box.y + 15, layout.alerts[index].box.y);
    }
}

TEST(Picture, TheHomeScreenHasRoomForEveryNumberOfToggles) {
    for (PhoneScreen screen : devices()) {
        for (const std::size_t count : {0U, 1U, 9U, 200U}) {
            screen.toggles.assign(count, {"com.example.a-very-long-identifier.of.a.toggle",
                                          "今すぐクリーンアップ", true, std::nullopt});
            const auto layout = simulator::pictureLayout(screen);
            expectWellLaidOut(layout);
            EXPECT_EQ(layout.note.has_value(), layout.toggles.size() < count);
        }
        screen.hostApplicationURL = "purgo://clean/?plugin=" + repeated("com.example.", 3000);
        expectWellLaidOut(simulator::pictureLayout(screen));
    }
}

TEST(Picture, TheClockGoesOnFromTenAndRoundMidnight) {
    const auto clock = [](double seconds) {
        PhoneScreen screen;
        screen.time = seconds;
        return simulator::pictureLayout(screen).statusBar.clock.lines.front().text;
    };
    EXPECT_EQ(clock(0), "10:00");
    EXPECT_EQ(clock(59.9), "10:00");
    EXPECT_EQ(clock(19 * 60), "10:19");
    EXPECT_EQ(clock(14 * 3600 + 60), "0:01");
    EXPECT_EQ(clock(-1e308), "10:00");
    EXPECT_NE(clock(1e300).find(':'), std::string::npos);
}

TEST(Picture, TheDocumentIsWellFormedWhateverItShows) {
    for (PhoneScreen screen : devices()) {
        screen.alerts = alerts();
        screen.alerts.resize(40);
        for (const auto& text : texts())
            screen.toggles.push_back({"<id>", text, false, text});
        const tests::MarkupReader reader(simulator::svgPicture(screen, "/nowhere"));
        EXPECT_EQ(reader.fault(), "");
        for (const auto& text : reader.texts())
            EXPECT_TRUE(platform::isValidUTF8(text));
        screen.hostApplicationURL = "purgo://?a=1&b=<2>\"\xFF";
        const tests::MarkupReader page(simulator::svgPicture(screen, "/nowhere"));
        EXPECT_EQ(page.fault(), "");
    }
}

TEST(Picture, TextsStandInTheDocumentAsTheyRead) {
    PhoneScreen screen;
    ShownAlert alert;
    alert.title = "Bread & \"butter\" <3";
    alert.message = "a\0b"s;
    alert.buttons = {"Ok"};
    screen.alerts = {alert};
    const std::string document = simulator::svgPicture(screen, "");
    const auto shown = tests::MarkupReader(document).texts();
    const auto has = [&shown](const std::string& text) {
        return std::count(shown.begin(), shown.end(), text) == 1;
    };
    EXPECT_TRUE(has("Bread & \"butter\" <3"));
    EXPECT_TRUE(has("a\uFFFDb"));
    EXPECT_TRUE(has("Ok"));
    EXPECT_EQ(document, simulator::svgPicture(screen, ""));
}

std::vector<std::string> iconsShown(const tests::TemporaryFolder& device,
                                    const std::string& bundle) {
    PhoneScreen screen;
    screen.toggles = {{"a.b", "AB", true, bundle}};
    const tests::MarkupReader reader(simulator::svgPicture(screen, device.path().string()));
    EXPECT_EQ(reader.fault(), "");
    return reader.values("href");
}

TEST(Picture, IconsComeOutOfTheirBundles) {
    const tests::TemporaryFolder device;
    device.write("/S/Plain.bundle/icon.svg", "<svg/>");
    device.write("/S/Image.bundle/icon.png", "\x89PNG\r\n\x1A\n");
    device.write("/S/Named.bundle/drawing.svg", "<svg><a/></svg>");
    device.write("/S/Named.bundle/Info.plist", "{ CFBundleIconFile = drawing; }");
    EXPECT_EQ(iconsShown(device, "/S/Plain.bundle"), Lines{"data:image/svg+xml;base64,PHN2Zy8+"});
    EXPECT_EQ(iconsShown(device, "/S/Image.bundle"), Lines{"data:image/png;base64,iVBORw0KGgo="});
    EXPECT_EQ(iconsShown(device, "/S/Named.bundle"),
              Lines{"data:image/svg+xml;base64,PHN2Zz48YS8+PC9zdmc+"});

    device.write("/S/Huge.bundle/icon.svg", "<svg>" + repeated("<a/>", 100000) + "</svg>");
    device.write("/S/Other.bundle/icon.png", "GIF89a");
    device.write("/S/Folder.bundle/icon.svg/file", "<svg/>");
    device.write("/S/Away.bundle/Info.plist", "{ CFBundleIconFile = \"../Plain.bundle/icon\"; }");
    device.write("/S/Broken.bundle/Info.plist", "{ CFBundleIconFile");
    for (const std::string name : {"Huge", "Other", "Folder", "Away", "Broken", "Missing"})
        EXPECT_EQ(iconsShown(device, "/S/" + name + ".bundle"), Lines{}) << name;
}

} // namespace
