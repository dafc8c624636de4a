#include "Tests/Support/AlertFixture.h"

namespace {

using purgo::PGAlertController;
using purgo::UIAlertActionStyleCancel;
using purgo::UIAlertActionStyleDefault;
using purgo::UIAlertActionStyleDestructive;
using purgo::UIAlertControllerStyleActionSheet;
using purgo::UIAlertControllerStyleAlert;

constexpr const char* secondCancel = "PGAlertController can only have one action with a style of "
                                     "UIAlertActionStyleCancel.";
constexpr const char* secondDestructive =
    "PGAlertController can only have one action with a style of UIAlertActionStyleDestructive.";
constexpr const char* secondFlag =
    "PGAlertController can only have one action with the autoDismissFlag property set to YES.";
constexpr const char* tooManyForTextField =
    "PGAlertController can have a maximum of two actions when it has a text field.";
constexpr const char* textFieldOnSheet =
    "Text field is only supported on an alert with style UIAlertControllerStyleAlert.";

class Alert : public tests::AlertFixture {};

TEST_F(Alert, CountsDownInItsMessageAndRunsTheFlaggedActionAtZero) {
    PGAlertController::setCountdownPlaceholder("<n>");
    {
        const auto shownAndForgotten =
            alert(UIAlertControllerStyleAlert, "È <n> <n>",
                  {action("A"), action("B", UIAlertActionStyleDefault, true), action("C")});
        shownAndForgotten->setAutoDismissTimeout(10);
        shownAndForgotten->show();
    }
    EXPECT_EQ(log, Log({"shown È 10 <n>"}));
    phone->letPass(8);
    log.clear();
    phone->letPass(60);
    EXPECT_EQ(log, Log({"changed È 1 <n>", "changed È 0 <n>", "will dismiss", "left", "B",
                        "did dismiss"}));
}

TEST_F(Alert, OnlyATimeoutClosesItWhateverItsMessageSays) {
    const struct {
        std::optional<std::string> message;
        unsigned timeout;
        Log expected;
    } cases[] = {
        {"Stay", 1, {"shown Stay", "will dismiss", "left", "did dismiss"}},
        {std::nullopt, 2, {"shown (null)", "will dismiss", "left", "did dismiss"}},
        {"In <PGAlertControllerCountdown>", 0, {"shown In <PGAlertControllerCountdown>"}},
        {"In <pgalertcontrollercountdown>",
         1,
         {"shown In <pgalertcontrollercountdown>", "will dismiss", "left", "did dismiss"}},
    };
    for (const auto& each : cases) {
        log.clear();
        const auto shownAlert = alert(UIAlertControllerStyleAlert, each.message, {action("A")});
        shownAlert->setAutoDismissTimeout(each.timeout);
        shownAlert->show();
        phone->letPass(10);
        EXPECT_EQ(log, each.expected);
    }
}

TEST_F(Alert, TheNextTickUndoesAChangedMessageButNoChangedTitle) {
    const auto counting = alert(UIAlertControllerStyleAlert, "<PGAlertControllerCountdown>");
    counting->setAutoDismissTimeout(9);
    counting->show();
    counting->setMessage("Other");
    counting->setTitle("New");
    EXPECT_EQ(shown().message, "Other");
    phone->letPass(1);
    EXPECT_EQ(shown().message, "8");
    EXPECT_EQ(shown().title, "New");
}

TEST_F(Alert, AChosenActionRunsAfterTheAlertHasLeftAndStopsTheCountdown) {
    const auto choice = alert({action("Yes", UIAlertActionStyleDefault, true), action("No")});
    choice->setAutoDismissTimeout(3);
    choice->show();
    const auto onScreen = phone->screen().front();
    onScreen->dismiss(1);
    EXPECT_TRUE(phone->screen().alerts().empty());
    onScreen->dismiss(0);
    choice->dismiss();
    EXPECT_EQ(log, Log({"shown Message", "will dismiss"}));
    phone->letPass(60);
    EXPECT_EQ(log, Log({"shown Message", "will dismiss", "left", "No", "did dismiss"}));
}

TEST_F(Alert, ADismissalFromCodeRunsNoAction) {
    const auto closed = alert({action("A", UIAlertActionStyleDefault, true)});
    closed->dismiss();
    closed->show();
    closed->dismiss();
    nextTurn();
    EXPECT_EQ(log, Log({"shown Message", "will dismiss", "left", "did dismiss"}));
}

TEST_F(Alert, IsKeptFromItsFirstShowUntilItHasGone) {
    const auto twice = alert({action("A")});
    EXPECT_TRUE(PGAlertController::alertControllers().empty());
    twice->show();
    twice->show();
    EXPECT_EQ(PGAlertController::alertControllers().size(), 1u);
    EXPECT_EQ(phone->screen().alerts().size(), 1u);
    twice->setDidDismissBlock([this, &twice] {
        log.push_back(PGAlertController::alertControllers().contains(twice) ? "kept" : "gone");
    });
    phone->screen().front()->dismiss(0);
    nextTurn();
    EXPECT_EQ(log.back(), "kept");
    EXPECT_TRUE(PGAlertController::alertControllers().empty());
}

TEST_F(Alert, ItsCallbacksMayReplaceThemselvesAndLetGoOfIt) {
    auto last = alert();
    last->setWillDismissBlock([this, &last] {
        last->setWillDismissBlock({});
        log.push_back("replaced");
    });
    last->setDidDismissBlock([this, &last] {
        last->setDidDismissBlock({});
        last.reset();
        log.push_back("let go");
    });
    last->show();
    last->dismiss();
    nextTurn();
    EXPECT_EQ(log, Log({"shown Message", "replaced", "left", "let go"}));
}

TEST_F(Alert, HasOneActionOfEachSpecialKindAndARefusedOneKeepsItsPlace) {
    const struct {
        std::intptr_t style;
        bool flag;
        const char* outcome;
    } steps[] = {
        {UIAlertActionStyleDefault, true, "accepted"},
        {UIAlertActionStyleCancel, true, secondFlag},
        {UIAlertActionStyleCancel, false, secondCancel},
        {UIAlertActionStyleDestructive, false, "accepted"},
        {UIAlertActionStyleDestructive, true, secondDestructive},
        {7, false, "accepted"},
        {7, false, "accepted"},
    };
    for (const auto style : {UIAlertControllerStyleAlert, UIAlertControllerStyleActionSheet}) {
        const auto strict = alert(style, std::nullopt);
        for (const auto& step : steps) {
            const auto added = action("A", step.style, step.flag);
            EXPECT_EQ(reasonOf([&] { strict->addAction(added); }), step.outcome);
        }
        EXPECT_EQ(strict->actions().size(), 4u);
    }
}

TEST_F(Alert, ATextFieldLimitsTheActionsThatComeAfterIt) {
    const auto three = alert({action("A"), action("B"), action("C")});
    EXPECT_FALSE(three->textField());
    const auto addTextField = [&three] {
        three->showTextFieldWithConfigurationHandler({});
    };
    EXPECT_EQ(reasonOf(addTextField), "accepted");
    EXPECT_EQ(reasonOf(addTextField), tooManyForTextField);
    EXPECT_EQ(reasonOf([&] { three->addAction(action("D")); }), tooManyForTextField);
    EXPECT_TRUE(three->textField());

    const auto none = alert();
    none->showTextFieldWithConfigurationHandler({});
    for (const char* outcome : {"accepted", "accepted", tooManyForTextField})
        EXPECT_EQ(reasonOf([&] { none->addAction(action("A")); }), outcome);

    const auto noAlert = sheet();
    EXPECT_EQ(reasonOf([&] { noAlert->showTextFieldWithConfigurationHandler({}); }),
              textFieldOnSheet);
    EXPECT_EQ(reasonOf([&] { noAlert->textField(); }), textFieldOnSheet);
}

TEST_F(Alert, ARefusedPresentationShowsAndKeepsNothing) {
    const auto sheetOfNobody = sheet();
    EXPECT_EQ(reasonOf([&] { sheetOfNobody->show(); }),
              "The 'show' method is only supported on an alert with style "
              "UIAlertControllerStyleAlert.");
    EXPECT_EQ(reasonOf([&] { sheetOfNobody->showInViewController(nullptr); }),
              "A valid view controller is required to display an alert with style "
              "UIAlertControllerStyleActionSheet.");
    EXPECT_EQ(reasonOf([&] {
                  alert()->showInViewController(nullptr, std::make_shared<platform::UITextField>());
              }),
              "The control argument must be an UIView or UIBarButtonItem instance.");
    EXPECT_TRUE(PGAlertController::alertControllers().empty());
    EXPECT_TRUE(log.empty());
}

TEST_F(Alert, AnEmptyPlaceholderIsRefusedAndTheOldOneStays) {
    PGAlertController::setCountdownPlaceholder("%d");
    for (const auto& nothing : {std::optional<std::string>(""), std::optional<std::string>()})
        EXPECT_EQ(reasonOf([&] { PGAlertController::setCountdownPlaceholder(nothing); }),
                  "Default countdown placeholder cannot be empty or nil.");
    EXPECT_EQ(PGAlertController::countdownPlaceholder(), "%d");
}

TEST_F(Alert, TheLatestAlertIsInFrontButNoSheetIsInFrontOfAnAlert) {
    const auto first = alert(UIAlertControllerStyleAlert, "first");
    const auto second = alert(UIAlertControllerStyleAlert, "second");
    first->show();
    second->show();
    sheet()->showInViewController(platform::UIViewController::make());
    std::vector<std::string> messages;
    for (const auto& each : phone->screen().alerts())
        messages.push_back(each->contents().message.value_or("sheet"));
    EXPECT_EQ(messages, Log({"second", "first", "sheet"}));
}

} // namespace
