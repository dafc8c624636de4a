#include "Source/Model/PurgoInterface.h"

#include "Platform/Exceptions.h"
#include "Platform/System.h"
#include "Platform/UIKit/Application.h"
#include "Shared/Source/Model/Application/PGApplication.h"
#include "Shared/Source/Model/Tasks/PGTask.h"
#include "Shared/Source/Model/Tasks/PGTaskConvenience.h"
#include "Shared/Source/Model/Tasks/PGTaskDictionaryOutput.h"

#include <algorithm>

namespace purgo {

namespace {

constexpr const char* alertTitle = "Purgo";
constexpr const char* countdownPlaceholder = "<countdown>";
constexpr std::uintptr_t autoDismissSeconds = 10;

using Results = std::map<std::string, std::string>;

std::optional<std::string> resultForKey(const Results& results, const std::string& key) {
    const auto result = results.find(key);
    return result == results.end() ? std::nullopt : std::optional(result->second);
}

bool isTrue(const Results& results, const std::string& key) {
    return resultForKey(results, key) == "true";
}

std::shared_ptr<platform::UIApplication> sharedApplication() {
    const auto* applicationClass = platform::classNamed("SpringBoard");
    if (!applicationClass)
        applicationClass = platform::classNamed("UIApplication");
    return applicationClass ? platform::UIApplication::sharedApplication(*applicationClass)
                            : nullptr;
}

/// Whether the device is unlocked, as far as the system can tell at all.
bool isProtectedDataAvailable(const platform::UIApplication& application) {
    return application.respondsTo(platform::ApplicationOperation::isProtectedDataAvailable) &&
           application.isProtectedDataAvailable();
}

void open(const std::string& url, platform::UIApplication& application) {
    if (application.respondsTo(platform::ApplicationOperation::applicationOpenURL))
        application.applicationOpenURL(url);
    else
        application.openURL(url);
}

} // namespace

std::shared_ptr<PurgoInterface>
PurgoInterface::make(std::shared_ptr<PGLocalizationManager> localizationManager) {
    if (!localizationManager)
        platform::handleFailureInMethod("-[PurgoInterface initWithLocalizationManager:]", nullptr,
                                        "Source/Model/PurgoInterface", 45,
                                        "Invalid parameter not satisfying: localizationManager");
    return std::shared_ptr<PurgoInterface>(new PurgoInterface(std::move(localizationManager)));
}

PurgoInterface::PurgoInterface(std::shared_ptr<PGLocalizationManager> localizationManager)
    : localizationManager_(std::move(localizationManager)) {
    PGAlertController::setForceViewAPI(true);
    PGAlertController::setCountdownPlaceholder(countdownPlaceholder);
}

void PurgoInterface::dismissAlert() {
    // The dismissal takes the alert away from here while it is still under way.
    if (const auto alert = alert_)
        alert->dismiss();
}

bool PurgoInterface::isPluginWithIdentifierEnabled(const std::string& identifier) const {
    return enabledPlugins_ && enabledPlugins_->contains(identifier);
}

void PurgoInterface::show(const std::shared_ptr<PGAlertController>& alert) {
    setAlert(alert);
    alert->show();
}

std::optional<std::string> PurgoInterface::displayedText(const std::string& key) const {
    return localizationManager_->localizedStringForKey(key).displayed();
}

std::string PurgoInterface::formattedText(const std::string& key) const {
    return localizationManager_->localizedStringForKey(key).formatted();
}

void PurgoInterface::showCleanupTimeoutAlertWithPluginIdentifier(const std::string& identifier) {
    show(alertForCleanupWithPluginIdentifier(identifier));
}

void PurgoInterface::runCleanupWithPluginIdentifier(const std::string& identifier) {
    if (!isPluginWithIdentifierEnabled(identifier))
        return;
    const auto application = sharedApplication();
    if (application && isProtectedDataAvailable(*application)) {
        open("purgo://clean/?plugin=" + identifier, *application);
        return;
    }

    const auto progressAlert = defaultAlertWithActions({});
    progressAlert->setMessage(displayedText("CLEANLBL"));
    show(progressAlert);

    const auto task = PGTask::make(PGApplication::executablePath(), {"-clean", "-printresults"});
    task->setStdErrAction(PGTaskStreamActionDiscard);
    task->setStdOutAction(PGTaskStreamActionCapture);
    platform::NotificationCenter::defaultCenter().addObserver(
        this,
        [interface = weak_from_this()](const platform::Notification& notification) {
            if (const auto self = interface.lock())
                self->cleanupCompletedWithNotification(notification);
        },
        PGTaskDidTerminateNotification, task.get());
    // A task that could not be started notifies its end as well.
    task->launchAsynchronously();
}

void PurgoInterface::cleanupCompletedWithNotification(const platform::Notification& notification) {
    // Only tasks post under this name, and only this interface's own was observed.
    const auto task = std::static_pointer_cast<PGTask>(notification.object);
    platform::NotificationCenter::defaultCenter().removeObserver(
        this, PGTaskDidTerminateNotification, task.get());
    const auto results = dictionaryFromOutput(*task);

    // Comes before the next alert is stored: on its way out this one clears what is stored.
    dismissAlert();

    std::shared_ptr<PGAlertController> outcome;
    if (isTrue(results, "success")) {
        const auto deleted = resultForKey(results, "deleted");
        outcome = alertWithFreedSpace(resultForKey(results, "freed"),
                                      deleted ? platform::integerValue(*deleted) : 0,
                                      isTrue(results, "shouldrespring"));
    } else {
        const auto message = resultForKey(results, "message");
        outcome = okAlertWithHandler(nullptr, false);
        outcome->setMessage(message && !message->empty() ? *message : "Unknown error");
    }
    show(outcome);
}

void PurgoInterface::respring() {
    launchSyncTaskWithLaunchPath(PGApplication::executablePath(), {"-respring"}, true);
}

std::shared_ptr<PGAlertController> PurgoInterface::defaultAlertWithActions(
    const std::vector<std::shared_ptr<PGAlertAction>>& actions) {
    auto alert = PGAlertController::alertControllerWithTitle(alertTitle, std::nullopt,
                                                             UIAlertControllerStyleAlert);
    bool hasAutoDismissAction = false;
    for (const auto& action : actions) {
        hasAutoDismissAction |= action->autoDismissFlag();
        alert->addAction(action);
    }
    if (hasAutoDismissAction)
        alert->setAutoDismissTimeout(autoDismissSeconds);
    alert->setWillDismissBlock([interface = weak_from_this()] {
        if (const auto self = interface.lock())
            self->setAlert(nullptr);
    });
    return alert;
}

std::shared_ptr<PGAlertController>
PurgoInterface::okAlertWithHandler(PGAlertAction::Handler handler, bool autoDismiss) {
    const auto okAction =
        PGAlertAction::actionWithTitle("Ok", UIAlertActionStyleDefault, std::move(handler));
    okAction->setAutoDismissFlag(autoDismiss);
    return defaultAlertWithActions({okAction});
}

std::shared_ptr<PGAlertController>
PurgoInterface::yesNoAlertWithYesHandler(PGAlertAction::Handler yesHandler,
                                         PGAlertAction::Handler noHandler, bool autoDismiss) {
    const auto yesAction = PGAlertAction::actionWithTitle(
        displayedText("YES"), UIAlertActionStyleDefault, std::move(yesHandler));
    const auto noAction = PGAlertAction::actionWithTitle(
        displayedText("NO"), UIAlertActionStyleCancel, std::move(noHandler));
    yesAction->setAutoDismissFlag(autoDismiss);
    return defaultAlertWithActions({yesAction, noAction});
}

std::shared_ptr<PGAlertController>
PurgoInterface::alertForCleanupWithPluginIdentifier(const std::string& identifier) {
    auto alert = yesNoAlertWithYesHandler(
        [interface = weak_from_this(), identifier](PGAlertActionProtocol&) {
            if (const auto self = interface.lock())
                self->runCleanupWithPluginIdentifier(identifier);
        },
        nullptr, true);
    alert->setMessage(formattedText("RUNCOUNTDOWNMSG") + " " + formattedText("CONTINUE"));
    return alert;
}

std::shared_ptr<PGAlertController>
PurgoInterface::alertWithFreedSpace(const std::optional<std::string>& freedSpace,
                                    std::intptr_t deletedFiles, bool respringCountdown) {
    auto message = formattedText("CLEANUPCOMPLETED");
    if (freedSpace)
        message += "\n" + formattedText("FREEDSPACE") + ": " + *freedSpace;
    message += "\n" + formattedText("DELETEDFILES") + ": " +
               std::to_string(std::max<std::intptr_t>(deletedFiles, 0));

    std::shared_ptr<PGAlertController> alert;
    if (respringCountdown) {
        alert = yesNoAlertWithYesHandler(
            [interface = weak_from_this()](PGAlertActionProtocol&) {
                if (const auto self = interface.lock())
                    self->respring();
            },
            nullptr, true);
        message += "\n" + formattedText("RESPRINGMSG1");
    } else {
        alert = okAlertWithHandler(nullptr, true);
    }
    alert->setMessage(message);
    return alert;
}

} // namespace purgo
