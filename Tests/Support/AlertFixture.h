#pragma once

#include "PGAlertController/Source/PGAlertController.h"
#include "Platform/Exceptions.h"
#include "Platform/Text.h"
#include "Platform/UIKit/Windows.h"
#include "Tests/Support/TestDevice.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

namespace tests {

/// Alerts on a simulated device, with a record of what they report. Whatever a test made must be
/// gone when the test is over and the screen has been cleared.
class AlertFixture : public testing::Test, public platform::DeviceObserver {
protected:
    using Alert = std::shared_ptr<purgo::PGAlertController>;
    using Action = std::shared_ptr<purgo::PGAlertAction>;
    using Log = std::vector<std::string>;

    AlertFixture() { startDevice({6, 1}); }
    ~AlertFixture() override {
        purgo::PGAlertController::setForceViewAPI(false);
        purgo::PGAlertController::setCountdownPlaceholder("<PGAlertControllerCountdown>");
    }

    void TearDown() override {
        for (const auto& alert : phone->screen().alerts())
            alert->dismiss(-1);
        nextTurn();
        EXPECT_TRUE(purgo::PGAlertController::alertControllers().empty());
        EXPECT_TRUE(platform::applicationWindows().empty());
        for (const auto& [name, object] : made)
            EXPECT_TRUE(object.expired()) << name << " is left over";
    }

    void startDevice(platform::SystemVersion version,
                     platform::UserInterfaceIdiom idiom = platform::UserInterfaceIdiom::phone) {
        platform::DeviceConfiguration configuration;
        configuration.systemVersion = version;
        configuration.idiom = idiom;
        phone.reset();
        phone.emplace(configuration);
        phone->device().setObserver(this);
    }

    void alertShown(const platform::ScreenAlert& alert) override {
        log.push_back("shown " + platform::formatted(alert.contents().message));
    }
    void alertChanged(const platform::ScreenAlert& alert) override {
        log.push_back("changed " + platform::formatted(alert.contents().message));
    }
    void alertDismissed(const platform::ScreenAlert&, std::intptr_t) override {
        log.push_back("left");
    }

    /// An action that records its title when it runs.
    Action action(const std::string& title, std::intptr_t style = purgo::UIAlertActionStyleDefault,
                  bool autoDismissFlag = false) {
        auto result = purgo::PGAlertAction::actionWithTitle(
            title, style, [this](purgo::PGAlertActionProtocol& chosen) {
                log.push_back(platform::formatted(chosen.title()));
            });
        result->setAutoDismissFlag(autoDismissFlag);
        made.emplace_back("action " + title, result);
        return result;
    }

    /// An alert or sheet that records its dismissal.
    Alert alert(std::intptr_t style, std::optional<std::string> message,
                const std::vector<Action>& actions = {}) {
        auto result =
            purgo::PGAlertController::alertControllerWithTitle("Title", std::move(message), style);
        for (const auto& each : actions)
            result->addAction(each);
        result->setWillDismissBlock([this] { log.push_back("will dismiss"); });
        result->setDidDismissBlock([this] { log.push_back("did dismiss"); });
        made.emplace_back("alert", result);
        return result;
    }

    Alert alert(const std::vector<Action>& actions = {}) {
        return alert(purgo::UIAlertControllerStyleAlert, "Message", actions);
    }
    Alert sheet(const std::vector<Action>& actions = {}) {
        return alert(purgo::UIAlertControllerStyleActionSheet, "Message", actions);
    }

    /// What the front alert shows.
    const platform::AlertContents& shown() const { return phone->screen().front()->contents(); }

    void nextTurn() const { phone->device().mainLoop().drain(); }

    /// The reason why an operation is refused, or "accepted".
    template <class Operation>
    static std::string reasonOf(const Operation& operation) {
        try {
            operation();
        } catch (const platform::Exception& exception) {
            EXPECT_EQ(exception.name(), platform::NSInternalInconsistencyException);
            return exception.reason();
        }
        return "accepted";
    }

    std::optional<TestDevice> phone;
    Log log;
    std::vector<std::pair<std::string, std::weak_ptr<void>>> made;
};

} // namespace tests
