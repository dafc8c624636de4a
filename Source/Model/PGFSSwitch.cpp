#include "Source/Model/PGFSSwitch.h"

#include "Platform/Exceptions.h"
#include "Source/Model/PGIdentifiers.h"

namespace purgo {

PGFSSwitch::PGFSSwitch(std::shared_ptr<PurgoInterface> purgo,
                       std::shared_ptr<PGLocalizationManager> localizationManager)
    : purgo_(std::move(purgo)), localizationManager_(std::move(localizationManager)) {
    if (!purgo_ || !localizationManager_)
        platform::handleFailureInMethod(
            "-[PGFSSwitch initWithPurgoInterface:localizationManager:]", this,
            "Source/Model/PGFSSwitch", 40,
            "Invalid parameter not satisfying: purgo && localizationManager");
}

platform::FSSwitchState PGFSSwitch::stateForSwitchIdentifier(const std::string& /*identifier*/) {
    return platform::FSSwitchState::off;
}

bool PGFSSwitch::switchWithIdentifierIsSimpleAction(const std::string& /*identifier*/) {
    return true;
}

bool PGFSSwitch::switchWithIdentifierIsEnabled(const std::string& /*identifier*/) {
    return purgo_->isPluginWithIdentifierEnabled(kPGFSSwitchPluginIdentifier);
}

platform::LocalizedText PGFSSwitch::titleForSwitchIdentifier(const std::string& identifier) {
    return localizationManager_->localizedStringForKey(
        identifier == kPGFSSwitchClean ? "PLUGINTITLE1" : "PLUGINTITLE2");
}

std::optional<platform::Bundle>
PGFSSwitch::bundleForSwitchIdentifier(const std::string& identifier) {
    return platform::bundleWithPath(identifier == kPGFSSwitchClean
                                        ? "/Library/Switches/PGClean.bundle"
                                        : "/Library/Switches/PGCleanNP.bundle");
}

void PGFSSwitch::applyActionForSwitchIdentifier(const std::string& identifier) {
    if (!switchWithIdentifierIsEnabled(identifier) || purgo_->isShowingAlert())
        return;
    if (identifier == kPGFSSwitchClean)
        purgo_->showCleanupTimeoutAlertWithPluginIdentifier(kPGFSSwitchPluginIdentifier);
    else if (identifier == kPGFSSwitchCleanNoPopup)
        purgo_->runCleanupWithPluginIdentifier(kPGFSSwitchPluginIdentifier);
}

} // namespace purgo
