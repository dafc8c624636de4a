#pragma once

#include "PGAlertController/Source/PGAlertAction.h"
#include "PGAlertController/Source/PGAlertController.h"
#include "Platform/Notifications.h"
#include "Source/Model/PGLocalizationManager.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace purgo {

/// The one object through which the library runs a cleanup, shows the dialogs around it and
/// restarts the home screen.
///
/// States:     idle -> confirming -> idle; idle -> running -> reporting -> idle. The current alert
///             tells which: none, the confirmation, the progress alert, the summary or failure
///             alert. Runs are not kept apart: who starts one asks `isShowingAlert` first.
/// Ownership:  owns the current alert and the localization manager. Its alerts' callbacks and its
///             observation of a running child refer to it weakly.
/// Threads:    main thread only.
/// Errors:     a run that fails in whatever way ends in the failure alert.
class PurgoInterface : public std::enable_shared_from_this<PurgoInterface> {
public:
    /// Makes an interface without enabled plugins. From then on all alerts of the process use the
    /// view-based backend and the countdown placeholder "<countdown>".
    ///
    /// Errors: a missing manager is an assertion failure.
    static std::shared_ptr<PurgoInterface>
    make(std::shared_ptr<PGLocalizationManager> localizationManager);

    /// The current alert, or null. An alert is current from the moment it is stored until it is
    /// about to be dismissed.
    const std::shared_ptr<PGAlertController>& alert() const { return alert_; }
    /// Makes an alert the current one. The one before it is not dismissed.
    void setAlert(std::shared_ptr<PGAlertController> alert) { alert_ = std::move(alert); }
    bool isShowingAlert() const { return alert_ != nullptr; }
    /// Dismisses the current alert, if any.
    void dismissAlert();

    /// The identifiers of the enabled plugins. A missing set enables none.
    const std::optional<std::set<std::string>>& enabledPlugins() const { return enabledPlugins_; }
    void setEnabledPlugins(std::optional<std::set<std::string>> enabledPlugins) {
        enabledPlugins_ = std::move(enabledPlugins);
    }
    bool isPluginWithIdentifierEnabled(const std::string& identifier) const;

    const std::shared_ptr<PGLocalizationManager>& localizationManager() const {
        return localizationManager_;
    }

    /// Shows the confirmation, which starts the cleanup when it is answered with yes or left alone
    /// for ten seconds. Whether the plugin is enabled is not asked before that.
    void showCleanupTimeoutAlertWithPluginIdentifier(const std::string& identifier);

    /// Starts a cleanup at once, for a plugin that is enabled. On an unlocked device the host
    /// application takes it over; otherwise the progress alert goes up and a child process runs.
    /// Nothing limits the child's time.
    void runCleanupWithPluginIdentifier(const std::string& identifier);

    /// Shows the outcome of the child whose end was notified.
    void cleanupCompletedWithNotification(const platform::Notification& notification);

    /// Restarts the home screen through the host executable. Blocks until that has ended, and
    /// ignores what came of it.
    void respring();

    /// Builds an alert of the library's title and style. Ten seconds of countdown when one of the
    /// actions has the auto-dismiss flag; when it is about to be dismissed, whatever alert is the
    /// current one then no longer is. Like all builders it neither shows nor stores the alert.
    std::shared_ptr<PGAlertController>
    defaultAlertWithActions(const std::vector<std::shared_ptr<PGAlertAction>>& actions);

    /// Builds an alert with one button.
    std::shared_ptr<PGAlertController> okAlertWithHandler(PGAlertAction::Handler handler,
                                                          bool autoDismiss);

    /// Builds an alert with a yes and a no button. A countdown ends in yes.
    std::shared_ptr<PGAlertController> yesNoAlertWithYesHandler(PGAlertAction::Handler yesHandler,
                                                                PGAlertAction::Handler noHandler,
                                                                bool autoDismiss);

    /// Builds the confirmation.
    std::shared_ptr<PGAlertController>
    alertForCleanupWithPluginIdentifier(const std::string& identifier);

    /// Builds the summary of a cleanup. A missing freed space leaves its line out, a negative count
    /// shows as 0.
    std::shared_ptr<PGAlertController>
    alertWithFreedSpace(const std::optional<std::string>& freedSpace, std::intptr_t deletedFiles,
                        bool respringCountdown);

private:
    explicit PurgoInterface(std::shared_ptr<PGLocalizationManager> localizationManager);

    void show(const std::shared_ptr<PGAlertController>& alert);
    std::optional<std::string> displayedText(const std::string& key) const;
    std::string formattedText(const std::string& key) const;

    std::shared_ptr<PGAlertController> alert_;
    std::optional<std::set<std::string>> enabledPlugins_;
    std::shared_ptr<PGLocalizationManager> localizationManager_;
};

} // namespace purgo
