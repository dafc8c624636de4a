#pragma once

#include "Platform/Triggers.h"
#include "Source/Model/PGLocalizationManager.h"
#include "Source/Model/PurgoInterface.h"

#include <memory>
#include <string>

namespace purgo {

/// The listener behind the events that a user assigns to a cleanup, under two names: one asks
/// before it cleans, one cleans at once. The activator that calls is not used.
///
/// Ownership:  shares the interface and the localization manager.
/// Threads:    main thread only.
class PGLAListener : public platform::LAListener {
public:
    /// Errors: a missing interface or manager is an assertion failure.
    PGLAListener(std::shared_ptr<PurgoInterface> purgo,
                 std::shared_ptr<PGLocalizationManager> localizationManager);

    const std::shared_ptr<PurgoInterface>& purgo() const { return purgo_; }
    const std::shared_ptr<PGLocalizationManager>& localizationManager() const {
        return localizationManager_;
    }

    /// Leaves the event unhandled while an alert of the library is up, and for an unknown name.
    void receiveEvent(platform::LAActivator& activator, platform::LAEvent& event,
                      const std::string& forListenerName) override;
    /// Dismisses the library's alert, if any.
    void abortEvent(platform::LAActivator& activator, platform::LAEvent& event) override;
    /// Dismisses the library's alert, if any.
    void otherListenerDidHandleEvent(platform::LAActivator& activator,
                                     platform::LAEvent& event) override;
    /// Absent for an unknown name.
    platform::LocalizedText
    requiresLocalizedTitleForListenerName(platform::LAActivator& activator,
                                          const std::string& listenerName) override;
    /// Absent for an unknown name.
    platform::LocalizedText
    requiresLocalizedDescriptionForListenerName(platform::LAActivator& activator,
                                                const std::string& listenerName) override;

private:
    platform::LocalizedText textForListenerName(const std::string& listenerName,
                                                const std::string& cleanKey,
                                                const std::string& cleanNoPopupKey);

    std::shared_ptr<PurgoInterface> purgo_;
    std::shared_ptr<PGLocalizationManager> localizationManager_;
};

} // namespace purgo
