#include "Source/Model/PurgoLoader.h"

#include "Platform/System.h"
#include "Platform/Triggers.h"
#include "Shared/Source/Model/Application/PGApplication.h"
#include "Shared/Source/Model/Tasks/PGTask.h"
#include "Shared/Source/Model/Tasks/PGTaskDictionaryOutput.h"
#include "Source/Model/PGIdentifiers.h"

#include <optional>
#include <set>

namespace purgo {

namespace {

using Settings = std::map<std::string, std::string>;

/// A setting; an empty one counts as missing.
std::optional<std::string> settingForKey(const Settings& settings, const std::string& key) {
    const auto setting = settings.find(key);
    if (setting == settings.end() || setting->second.empty())
        return std::nullopt;
    return setting->second;
}

/// Nothing is trimmed and nothing left out: an empty piece is an empty identifier.
std::set<std::string> piecesBetweenCommas(const std::string& text) {
    std::set<std::string> pieces;
    std::string::size_type begin = 0;
    for (auto comma = text.find(','); comma != std::string::npos; comma = text.find(',', begin)) {
        pieces.insert(text.substr(begin, comma - begin));
        begin = comma + 1;
    }
    pieces.insert(text.substr(begin));
    return pieces;
}

} // namespace

PurgoLoader& PurgoLoader::loader() {
    static PurgoLoader& loader = *new PurgoLoader;
    return loader;
}

std::map<std::string, std::string> PurgoLoader::settingsDictionary() const {
    const auto task = PGTask::make(PGApplication::executablePath(), {"-printsettings"});
    task->setStdErrAction(PGTaskStreamActionDiscard);
    task->setStdOutAction(PGTaskStreamActionCapture);
    task->launchSynchronously();
    return dictionaryFromOutput(*task);
}

void PurgoLoader::loadPlugins() {
    const auto settings = settingsDictionary();
    const auto localizationManager =
        std::make_shared<PGLocalizationManager>(settingForKey(settings, "language"));
    const auto purgo = PurgoInterface::make(localizationManager);
    if (const auto plugins = settingForKey(settings, "plugins"))
        purgo->setEnabledPlugins(piecesBetweenCommas(*plugins));

    // Whether a framework is there shows in its class, never in how the opening went: another
    // library may have opened it before.
    platform::openLibrary(kPGFlipswitchDylibPath);
    registerSwitches(purgo);
    platform::openLibrary(kActivatorDylibPath);
    registerListeners(purgo);
}

void PurgoLoader::registerSwitches(const std::shared_ptr<PurgoInterface>& purgo) {
    const auto* const panelClass = platform::classNamed("FSSwitchPanel");
    if (!panelClass || !purgo->isPluginWithIdentifierEnabled(kPGFSSwitchPluginIdentifier))
        return;
    const auto dataSource = std::make_shared<PGFSSwitch>(purgo, purgo->localizationManager());
    if (const auto panel = platform::FSSwitchPanel::sharedPanel(*panelClass)) {
        panel->registerDataSource(dataSource, kPGFSSwitchClean);
        panel->registerDataSource(dataSource, kPGFSSwitchCleanNoPopup);
    }
    setFsDataSource(dataSource);
}

void PurgoLoader::registerListeners(const std::shared_ptr<PurgoInterface>& purgo) {
    const auto* const activatorClass = platform::classNamed("LAActivator");
    if (!activatorClass || !purgo->isPluginWithIdentifierEnabled(kPGLAListenerPluginIdentifier))
        return;
    const auto listener = std::make_shared<PGLAListener>(purgo, purgo->localizationManager());
    if (const auto activator = platform::LAActivator::sharedInstance(*activatorClass)) {
        activator->registerListener(listener, kPGLAListenerClean);
        activator->registerListener(listener, kPGLAListenerCleanNoPopup);
    }
    setLaListener(listener);
}

} // namespace purgo
