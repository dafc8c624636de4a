#include "Source/Model/PGLAListener.h"

#include "Platform/Exceptions.h"
#include "Source/Model/PGIdentifiers.h"

namespace purgo {

PGLAListener::PGLAListener(std::shared_ptr<PurgoInterface> purgo,
                           std::shared_ptr<PGLocalizationManager> localizationManager)
    : purgo_(std::move(purgo)), localizationManager_(std::move(localizationManager)) {
    if (!purgo_ || !localizationManager_)
        platform::handleFailureInMethod(
            "-[PGLAListener initWithPurgoInterface:localizationManager:]", this,
            "Source/Model/PGLAListener", 46,
            "Invalid parameter not satisfying: purgo && localizationManager");
}

void PGLAListener::receiveEvent(platform::LAActivator& /*activator*/, platform::LAEvent& event,
                                const std::string& forListenerName) {
    if (purgo_->isShowingAlert())
        return;
    if (forListenerName == kPGLAListenerClean)
        purgo_->showCleanupTimeoutAlertWithPluginIdentifier(kPGLAListenerPluginIdentifier);
    else if (forListenerName == kPGLAListenerCleanNoPopup)
        purgo_->runCleanupWithPluginIdentifier(kPGLAListenerPluginIdentifier);
    else
        return;
    event.setHandled(true);
}

void PGLAListener::abortEvent(platform::LAActivator& /*activator*/, platform::LAEvent& /*event*/) {
    purgo_->dismissAlert();
}

void PGLAListener::otherListenerDidHandleEvent(platform::LAActivator& /*activator*/,
                                               platform::LAEvent& /*event*/) {
    purgo_->dismissAlert();
}

platform::LocalizedText
PGLAListener::requiresLocalizedTitleForListenerName(platform::LAActivator& /*activator*/,
                                                    const std::string& listenerName) {
    return textForListenerName(listenerName, "PLUGINTITLE1", "PLUGINTITLE2");
}

platform::LocalizedText
PGLAListener::requiresLocalizedDescriptionForListenerName(platform::LAActivator& /*activator*/,
                                                          const std::string& listenerName) {
    return textForListenerName(listenerName, "PLUGINDESC1", "PLUGINDESC2");
}

platform::LocalizedText PGLAListener::textForListenerName(const std::string& listenerName,
                                                          const std::string& cleanKey,
                                                          const std::string& cleanNoPopupKey) {
    if (listenerName == kPGLAListenerClean)
        return localizationManager_->localizedStringForKey(cleanKey);
    if (listenerName == kPGLAListenerCleanNoPopup)
        return localizationManager_->localizedStringForKey(cleanNoPopupKey);
    return {};
}

} // namespace purgo
