#pragma once

#include "Platform/Triggers.h"
#include "Source/Model/PGLocalizationManager.h"
#include "Source/Model/PurgoInterface.h"

#include <memory>
#include <optional>
#include <string>

namespace purgo {

/// The provider of the library's two quick toggles, of which one asks before it cleans and one
/// cleans at once. Both are plain actions without an on or off of their own.
///
/// Ownership:  shares the interface and the localization manager.
/// Threads:    main thread only.
class PGFSSwitch : public platform::FSSwitchDataSource {
public:
    /// Errors: a missing interface or manager is an assertion failure.
    PGFSSwitch(std::shared_ptr<PurgoInterface> purgo,
               std::shared_ptr<PGLocalizationManager> localizationManager);

    const std::shared_ptr<PurgoInterface>& purgo() const { return purgo_; }
    const std::shared_ptr<PGLocalizationManager>& localizationManager() const {
        return localizationManager_;
    }

    platform::FSSwitchState stateForSwitchIdentifier(const std::string& identifier) override;
    bool switchWithIdentifierIsSimpleAction(const std::string& identifier) override;
    /// Whether the toggle plugin is enabled; the same for every identifier.
    bool switchWithIdentifierIsEnabled(const std::string& identifier) override;
    /// An unknown identifier gets the title of the switch that cleans at once.
    platform::LocalizedText titleForSwitchIdentifier(const std::string& identifier) override;
    /// An unknown identifier gets the bundle of the switch that cleans at once.
    std::optional<platform::Bundle>
    bundleForSwitchIdentifier(const std::string& identifier) override;
    /// Does nothing while an alert of the library is up, and nothing for an unknown identifier.
    void applyActionForSwitchIdentifier(const std::string& identifier) override;

private:
    std::shared_ptr<PurgoInterface> purgo_;
    std::shared_ptr<PGLocalizationManager> localizationManager_;
};

} // namespace purgo
