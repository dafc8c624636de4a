#include "Tests/Support/AlertFixture.h"

#include "PGAlertController/Source/PGAlertActionConcrete.h"

namespace {

using purgo::PGAlertAction;
using purgo::PGAlertActionConcrete;

class AlertAction : public tests::AlertFixture {};

TEST_F(AlertAction, RunsItsHandlerWithItself) {
    const purgo::PGAlertActionProtocol* given = nullptr;
    std::string title = "Go";
    const auto go = PGAlertAction::actionWithTitle(title, 7, [&](auto& chosen) {
        given = &chosen;
        EXPECT_EQ(chosen.title(), "Go");
        EXPECT_EQ(chosen.style(), 7);
    });
    title = "Stop";
    go->performHandler();
    EXPECT_EQ(given, go.get());

    const auto silent = PGAlertAction::actionWithTitle(std::nullopt, 0, nullptr);
    silent->performHandler();
    EXPECT_EQ(silent->title(), std::nullopt);
    EXPECT_FALSE(silent->autoDismissFlag());
}

TEST_F(AlertAction, ItsHandlerMayReleaseIt) {
    std::shared_ptr<PGAlertAction> last;
    std::weak_ptr<PGAlertAction> trace;
    last = PGAlertAction::actionWithTitle("Last", 0, [&](auto& chosen) {
        last.reset();
        EXPECT_EQ(chosen.title(), "Last");
        EXPECT_FALSE(trace.expired());
    });
    trace = last;
    last->performHandler();
    EXPECT_TRUE(trace.expired());
}

TEST_F(AlertAction, WrapsASystemActionOnlyWhereThereIsOneAndNothingForbidsIt) {
    const bool is64Bit = sizeof(void*) == 8;
    const struct {
        platform::SystemVersion version;
        bool forced;
        bool isOwn;
    } cases[] = {
        {{7, 1}, false, true},
        {{8, 0}, true, true},
        {{8, 0}, false, !is64Bit},
    };
    for (const auto& each : cases) {
        startDevice(each.version);
        purgo::PGAlertController::setForceViewAPI(each.forced);
        const auto wrapping = action("Go", 2);
        purgo::PGAlertController::setForceViewAPI(!each.forced);
        const auto& wrapped = wrapping->concreteAction();
        EXPECT_EQ(std::dynamic_pointer_cast<PGAlertActionConcrete>(wrapped) != nullptr, each.isOwn);
        EXPECT_EQ(wrapped->title(), "Go");
        EXPECT_EQ(wrapped->style(), 2);
        wrapping->performHandler();
    }
    EXPECT_EQ(log, Log({"Go", "Go", "Go"}));
}

} // namespace
