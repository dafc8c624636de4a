#include "Tests/Support/AlertFixture.h"

#include <algorithm>
#include <tuple>

namespace {

using platform::CGRect;
using platform::UserInterfaceIdiom;
using purgo::PGAlertController;
using purgo::UIAlertActionStyleCancel;
using purgo::UIAlertActionStyleDefault;
using purgo::UIAlertActionStyleDestructive;

/// A device whose system has the alert controller.
class AlertControllerBackend : public tests::AlertFixture {
protected:
    AlertControllerBackend() { startDevice({8, 0}); }

    void SetUp() override {
        if (sizeof(void*) != 8)
            GTEST_SKIP() << "the backend is part of 64-bit builds only";
    }
};

TEST_F(AlertControllerBackend, IsTakenWhereTheSystemHasItAndNothingForbidsIt) {
    const std::tuple<platform::SystemVersion, bool, std::string> cases[] = {
        {{7, 1}, false, "UIAlertView"},
        {{8, 0}, true, "UIAlertView"},
        {{8, 0}, false, "UIAlertController"},
    };
    for (const auto& [version, forced, control] : cases) {
        startDevice(version);
        PGAlertController::setForceViewAPI(forced);
        const auto chosen = alert({action("A")});
        PGAlertController::setForceViewAPI(!forced);
        chosen->show();
        EXPECT_EQ(shown().control, control);
        phone->screen().front()->dismiss(0);
        nextTurn();
        EXPECT_EQ(std::count(log.begin(), log.end(), "A"), 1);
        log.clear();
    }
}

TEST_F(AlertControllerBackend, TheSystemRunsTheChosenActionOnceAllElseIsDone) {
    alert({action("A"), action("C", UIAlertActionStyleCancel)})->show();
    EXPECT_EQ(shown().buttons.front(), "C");
    EXPECT_EQ(shown().cancelButtonIndex, 0);
    phone->screen().front()->dismiss(1);
    EXPECT_EQ(log, Log({"shown Message", "will dismiss"}));
    EXPECT_TRUE(phone->screen().alerts().empty());
    nextTurn();
    EXPECT_EQ(log, Log({"shown Message", "will dismiss", "left", "did dismiss", "A"}));
}

TEST_F(AlertControllerBackend, TheCountdownFindsTheFlaggedAction) {
    {
        const auto counting =
            alert(purgo::UIAlertControllerStyleAlert, "In <PGAlertControllerCountdown>",
                  {action("A", UIAlertActionStyleCancel),
                   action("B", UIAlertActionStyleDefault, true), action("C")});
        counting->setAutoDismissTimeout(2);
        counting->show();
        EXPECT_EQ(shown().cancelButtonIndex, 2);
    }
    phone->letPass(10);
    EXPECT_EQ(log, Log({"shown In 2", "changed In 1", "changed In 0", "will dismiss", "left", "B",
                        "did dismiss"}));
}

TEST_F(AlertControllerBackend, ADismissalFromCodeRunsNoAction) {
    const auto closed = alert({action("A")});
    closed->dismiss();
    closed->show();
    closed->dismiss();
    closed->dismiss();
    nextTurn();
    closed->dismiss();
    EXPECT_EQ(log, Log({"shown Message", "will dismiss", "left", "did dismiss"}));
}

TEST_F(AlertControllerBackend, AnActionMadeForTheOlderControlsStillRuns) {
    PGAlertController::setForceViewAPI(true);
    const auto older = action("Older", UIAlertActionStyleDestructive);
    PGAlertController::setForceViewAPI(false);
    alert({older})->show();
    EXPECT_EQ(shown().destructiveButtonIndex, 0);
    phone->screen().front()->dismiss(0);
    nextTurn();
    EXPECT_EQ(log.back(), "Older");
}

TEST_F(AlertControllerBackend, WithoutAViewControllerItHasAWindowAboveAllForAsLongAsItIsUp) {
    const auto countWindows = [this] {
        log.push_back(std::to_string(platform::applicationWindows().size()) + " windows");
    };
    // Each round finds more windows: none, one that is not key, and a key one.
    auto& screen = phone->screen();
    const auto visible = platform::UIWindow::make({0, 0, 5, 6});
    const auto key = platform::UIWindow::make({1, 2, 3, 4});
    const std::tuple<std::function<void()>, CGRect> rounds[] = {
        {[] {}, platform::mainScreenBounds()},
        {[&] { screen.makeVisible(visible); }, visible->frame()},
        {[&] { key->makeKeyAndVisible(); }, key->frame()},
    };
    for (const auto& [prepare, frame] : rounds) {
        prepare();
        const auto windowsBefore = platform::applicationWindows().size();
        const auto keyBefore = platform::keyWindow();
        const auto above = alert();
        above->setDidDismissBlock(countWindows);
        above->show();
        EXPECT_EQ(shown().windowLevel, 2001);
        ASSERT_TRUE(platform::keyWindow());
        EXPECT_NE(platform::keyWindow(), keyBefore);
        EXPECT_EQ(platform::keyWindow()->frame(), frame);
        above->dismiss();
        EXPECT_NE(platform::keyWindow(), keyBefore);
        nextTurn();
        EXPECT_EQ(log.back(), std::to_string(windowsBefore) + " windows");
        EXPECT_EQ(platform::keyWindow(), keyBefore);
    }
}

TEST_F(AlertControllerBackend, LiesAboveTheSystemsAlertsOnlyInAWindowOfItsOwn) {
    const auto viewController = platform::UIViewController::make();
    const auto inViewController = alert(purgo::UIAlertControllerStyleAlert, "plain");
    const auto inWindow = alert(purgo::UIAlertControllerStyleAlert, "window");
    inWindow->show();
    PGAlertController::setForceViewAPI(true);
    alert(purgo::UIAlertControllerStyleAlert, "view")->show();
    inViewController->showInViewController(viewController);
    EXPECT_EQ(platform::applicationWindows().size(), 1u);
    Log messages;
    for (const auto& each : phone->screen().alerts())
        messages.push_back(each->contents().message.value_or("none"));
    EXPECT_EQ(messages, Log({"window", "view", "plain"}));
}

TEST_F(AlertControllerBackend, ShownTwiceItIsUpOnceAndGoesWhole) {
    const auto twice = alert({action("A")});
    twice->show();
    twice->show();
    EXPECT_EQ(phone->screen().alerts().size(), 1u);
    twice->dismiss();
    nextTurn();
    EXPECT_TRUE(phone->screen().alerts().empty());
    EXPECT_TRUE(platform::applicationWindows().empty());
    twice->show();
    phone->screen().front()->dismiss(0);
    nextTurn();
    EXPECT_EQ(log, Log({"shown Message", "will dismiss", "left", "did dismiss", "shown Message",
                        "will dismiss", "left", "did dismiss", "A"}));
}

TEST_F(AlertControllerBackend, AViewControllerPresentsOneAlertAfterTheOther) {
    const auto viewController = platform::UIViewController::make();
    const auto first = alert(purgo::UIAlertControllerStyleAlert, "first");
    const auto second = alert(purgo::UIAlertControllerStyleAlert, "second");
    for (const auto& each : {first, second, first}) {
        each->showInViewController(viewController);
        EXPECT_EQ(shown().message, each->message());
        EXPECT_EQ(shown().windowLevel, std::nullopt);
        each->dismiss();
        nextTurn();
    }
}

TEST_F(AlertControllerBackend, ASecondTextFieldRequestChangesNothing) {
    const auto asking = alert();
    asking->showTextFieldWithConfigurationHandler([](auto& field) { field.setText("first"); });
    const auto field = asking->textField();
    asking->showTextFieldWithConfigurationHandler([](auto& again) { again.setText("second"); });
    ASSERT_TRUE(field);
    EXPECT_EQ(asking->textField(), field);
    EXPECT_EQ(field->text(), "first");
}

TEST_F(AlertControllerBackend, ASheetPointsAtItsControlOnAPad) {
    const CGRect part{1, 2, 3, 4};
    const CGRect nowhere = purgo::kPGACInvalidRect;
    const auto view = std::make_shared<platform::UIView>(CGRect{10, 20, 40, 60});
    const auto item = std::make_shared<platform::UIBarButtonItem>();
    using Rect = std::optional<CGRect>;
    const std::tuple<UserInterfaceIdiom, std::shared_ptr<platform::Object>, CGRect, std::string,
                     Rect>
        cases[] = {
            {UserInterfaceIdiom::phone, view, part, "none", std::nullopt},
            {UserInterfaceIdiom::pad, nullptr, nowhere, "view", CGRect{384, 512, 1, 1}},
            {UserInterfaceIdiom::pad, nullptr, part, "view", part},
            {UserInterfaceIdiom::pad, view, nowhere, "view", CGRect{20, 30, 1, 1}},
            {UserInterfaceIdiom::pad, view, CGRect{}, "view", CGRect{}},
            {UserInterfaceIdiom::pad, item, part, "barButtonItem", std::nullopt},
        };
    for (const auto& [idiom, control, rect, kind, pointedAt] : cases) {
        startDevice({8, 0}, idiom);
        const auto anchored = sheet(
            {action("C", UIAlertActionStyleCancel), action("D", UIAlertActionStyleDestructive)});
        anchored->showInViewController(platform::UIViewController::make(), control, rect);
        const auto anchor = shown().anchor.value_or(platform::AlertAnchor{"none", std::nullopt});
        EXPECT_EQ(anchor.kind, kind);
        EXPECT_EQ(anchor.rect, pointedAt) << kind;
        EXPECT_EQ(shown().cancelButtonIndex, 1);
        EXPECT_EQ(shown().destructiveButtonIndex, 0);
        anchored->dismiss();
        nextTurn();
    }
}

} // namespace
