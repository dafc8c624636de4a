#include "Tests/Support/AlertFixture.h"

#include <tuple>

namespace {

using platform::CGRect;
using platform::UserInterfaceIdiom;
using purgo::UIAlertControllerStyleActionSheet;
using purgo::UIAlertControllerStyleAlert;

class AlertViewBackend : public tests::AlertFixture {
protected:
    /// One action for each letter: D is destructive, C is Cancel, the others are ordinary.
    std::vector<Action> actionsFor(const std::string& letters) {
        std::vector<Action> result;
        for (const char letter : letters)
            result.push_back(action(std::string(1, letter), letter == 'C'   ? 1
                                                            : letter == 'D' ? 2
                                                                            : 0));
        return result;
    }

    static std::string lettersOf(const std::vector<std::optional<std::string>>& titles) {
        std::string result;
        for (const auto& title : titles)
            result += title.value_or("?");
        return result;
    }
};

TEST_F(AlertViewBackend, CancelStandsOnTheLeftOfTwoButtonsAndLastOfAllOthers) {
    constexpr int none = -1;
    const struct {
        std::intptr_t style;
        const char* added;
        const char* buttons;
        std::intptr_t cancel;
        std::intptr_t destructive;
    } cases[] = {
        {UIAlertControllerStyleAlert, "", "", none, none},
        {UIAlertControllerStyleAlert, "C", "C", 0, none},
        {UIAlertControllerStyleAlert, "AC", "CA", 0, none},
        {UIAlertControllerStyleAlert, "CA", "CA", 0, none},
        {UIAlertControllerStyleAlert, "AB", "AB", none, none},
        {UIAlertControllerStyleAlert, "DC", "CD", 0, none},
        {UIAlertControllerStyleAlert, "ABC", "ABC", 2, none},
        {UIAlertControllerStyleAlert, "CAB", "ABC", 2, none},
        {UIAlertControllerStyleAlert, "ACDB", "ADBC", 3, none},
        {UIAlertControllerStyleActionSheet, "DAC", "DAC", 2, 0},
        {UIAlertControllerStyleActionSheet, "CD", "DC", 1, 0},
        {UIAlertControllerStyleActionSheet, "ACDB", "ADBC", 3, 1},
        {UIAlertControllerStyleActionSheet, "AB", "AB", none, none},
    };
    const auto viewController = platform::UIViewController::make();
    for (const auto& each : cases) {
        const auto ordered = alert(each.style, "Message", actionsFor(each.added));
        ordered->showInViewController(viewController);
        EXPECT_EQ(lettersOf(shown().buttons), each.buttons) << each.added;
        EXPECT_EQ(shown().cancelButtonIndex.value_or(none), each.cancel) << each.added;
        EXPECT_EQ(shown().destructiveButtonIndex.value_or(none), each.destructive) << each.added;

        // Whatever was moved, a button runs the action whose title it has.
        const std::string buttons = each.buttons;
        const auto actions = ordered->actions();
        ASSERT_EQ(actions.size(), buttons.size()) << each.added;
        const auto last = static_cast<std::intptr_t>(buttons.size()) - 1;
        log.clear();
        phone->screen().front()->dismiss(last);
        nextTurn();
        if (last < 0)
            continue;
        EXPECT_EQ(actions.back()->title(), buttons.substr(buttons.size() - 1)) << each.added;
        EXPECT_EQ(log,
                  Log({"will dismiss", "left", buttons.substr(buttons.size() - 1), "did dismiss"}));
    }
}

TEST_F(AlertViewBackend, ASheetCarriesItsMessageInItsTitle) {
    const auto combined = sheet();
    combined->showInViewController(platform::UIViewController::make());
    EXPECT_EQ(shown().control, "UIActionSheet");
    EXPECT_EQ(shown().title, "Title\n\nMessage");
    EXPECT_EQ(shown().message, std::nullopt);
    combined->setTitle(std::nullopt);
    EXPECT_EQ(shown().title, "(null)\n\nMessage");
    combined->setMessage(std::nullopt);
    EXPECT_EQ(shown().title, std::nullopt);
}

TEST_F(AlertViewBackend, ASheetCountsDownInItsTitle) {
    const auto counting = alert(UIAlertControllerStyleActionSheet, "<PGAlertControllerCountdown>s",
                                {action("A", purgo::UIAlertActionStyleDefault, true)});
    counting->setAutoDismissTimeout(2);
    counting->showInViewController(platform::UIViewController::make());
    EXPECT_EQ(shown().title, "Title\n\n2s");
    phone->letPass(1);
    EXPECT_EQ(shown().title, "Title\n\n1s");
    phone->letPass(1);
    EXPECT_EQ(log.at(log.size() - 2), "A");
}

TEST_F(AlertViewBackend, ASheetPointsAtItsControl) {
    const CGRect frame{10, 20, 40, 60};
    const CGRect part{1, 2, 3, 4};
    const CGRect nowhere = purgo::kPGACInvalidRect;
    const auto view = std::make_shared<platform::UIView>(frame);
    const auto tabBar = std::make_shared<platform::UITabBar>(frame);
    const auto toolbar = std::make_shared<platform::UIToolbar>(frame);
    const auto item = std::make_shared<platform::UIBarButtonItem>();
    using Rect = std::optional<CGRect>;
    const std::tuple<UserInterfaceIdiom, std::shared_ptr<platform::Object>, CGRect, std::string,
                     Rect>
        cases[] = {
            {UserInterfaceIdiom::phone, nullptr, part, "view", std::nullopt},
            {UserInterfaceIdiom::phone, view, nowhere, "view", std::nullopt},
            {UserInterfaceIdiom::phone, tabBar, nowhere, "tabBar", std::nullopt},
            {UserInterfaceIdiom::phone, toolbar, nowhere, "toolbar", std::nullopt},
            {UserInterfaceIdiom::phone, item, nowhere, "barButtonItem", std::nullopt},
            {UserInterfaceIdiom::pad, nullptr, nowhere, "view", CGRect{384, 512, 1, 1}},
            {UserInterfaceIdiom::pad, view, nowhere, "view", CGRect{20, 30, 1, 1}},
            {UserInterfaceIdiom::pad, view, part, "view", part},
            {UserInterfaceIdiom::pad, view, CGRect{}, "view", CGRect{}},
            {UserInterfaceIdiom::pad, tabBar, part, "view", part},
            {UserInterfaceIdiom::pad, item, part, "barButtonItem", std::nullopt},
        };
    for (const auto& [idiom, control, rect, kind, pointedAt] : cases) {
        startDevice({6, 1}, idiom);
        const auto anchored = sheet();
        anchored->showInViewController(platform::UIViewController::make(), control, rect);
        ASSERT_TRUE(shown().anchor);
        EXPECT_EQ(shown().anchor->kind, kind);
        EXPECT_EQ(shown().anchor->rect, pointedAt) << kind;
        anchored->dismiss();
        nextTurn();
    }
}

TEST_F(AlertViewBackend, ItsTextFieldIsMadeOnceAndConfiguredAtEveryRequest) {
    for (const platform::SystemVersion version : {platform::SystemVersion{4, 3}, {5, 0}}) {
        startDevice(version);
        const auto asking = alert();
        asking->showTextFieldWithConfigurationHandler(
            [](auto& field) { field.setPlaceholder("Name"); });
        const auto field = asking->textField();
        asking->showTextFieldWithConfigurationHandler([](auto& again) { again.setText("Ann"); });
        EXPECT_EQ(asking->textField(), field);
        asking->show();
        EXPECT_EQ(shown().textField, field);
        EXPECT_EQ(field->placeholder() + field->text(), "NameAnn");
        asking->dismiss();
        nextTurn();
    }
}

TEST_F(AlertViewBackend, ShownAgainItAddsItsButtonsAgain) {
    const auto again = alert({action("A"), action("C", purgo::UIAlertActionStyleCancel)});
    for (const char* buttons : {"CA", "CACA"}) {
        again->show();
        EXPECT_EQ(lettersOf(shown().buttons), buttons);
        again->dismiss();
        nextTurn();
    }
    EXPECT_EQ(log.size(), 8u);
    again->show();
    log.clear();
    phone->screen().front()->dismiss(4);
    nextTurn();
    EXPECT_EQ(log, Log({"will dismiss", "left", "did dismiss"}));
}

} // namespace
