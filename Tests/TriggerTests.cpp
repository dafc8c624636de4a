#include "Source/Model/PGFSSwitch.h"
#include "Source/Model/PGIdentifiers.h"
#include "Source/Model/PGLAListener.h"
#include "Source/Model/PurgoLoader.h"

#include "Platform/Exceptions.h"
#include "Tests/Support/TestDevice.h"

#include <gtest/gtest.h>

namespace {

using platform::LocalizedText;
using purgo::PGFSSwitch;
using purgo::PGLAListener;
using purgo::PGLocalizationManager;
using purgo::PurgoInterface;
using purgo::PurgoLoader;

/// A toggle framework that remembers who registered.
class Panel : public platform::FSSwitchPanel {
public:
    void registerDataSource(std::shared_ptr<platform::FSSwitchDataSource> dataSource,
                            const std::string& identifier) override {
        registered.emplace_back(identifier, dataSource);
    }
    std::vector<std::pair<std::string, std::shared_ptr<platform::FSSwitchDataSource>>> registered;
};

/// An event framework that remembers who registered.
class Activator : public platform::LAActivator {
public:
    void registerListener(std::shared_ptr<platform::LAListener> listener,
                          const std::string& name) override {
        registered.emplace_back(name, listener);
    }
    std::vector<std::pair<std::string, std::shared_ptr<platform::LAListener>>> registered;
};

class Triggers : public testing::Test {
protected:
    Triggers() {
        phone.files().write("/Applications/Purgo.app/English.strings",
                            "PLUGINTITLE1 = Ask; PLUGINTITLE2 = Clean; PLUGINDESC1 = Asks;"
                            "PLUGINDESC2 = Cleans; RUNCOUNTDOWNMSG = Soon; CONTINUE = Now;"
                            "CLEANLBL = Cleaning;");
        phone.files().writeScript(tests::hostExecutable, "true");
        std::filesystem::create_directories(phone.files().at("/Library/Switches/PGClean.bundle"));
        purgo->setEnabledPlugins(
            std::set<std::string>{kPGFSSwitchPluginIdentifier, kPGLAListenerPluginIdentifier});
    }

    tests::TestDevice phone;
    std::shared_ptr<PGLocalizationManager> texts =
        std::make_shared<PGLocalizationManager>(std::nullopt);
    std::shared_ptr<PurgoInterface> purgo = PurgoInterface::make(texts);
    Activator activator;
};

TEST_F(Triggers, ASwitchActsByItsIdentifierAndShowsAnUnknownOneAsTheSecond) {
    struct Case {
        std::string identifier, title, bundle, message;
    };
    const Case cases[] = {
        {kPGFSSwitchClean, "Ask", "/Library/Switches/PGClean.bundle", "Soon Now"},
        {kPGFSSwitchCleanNoPopup, "Clean", "", "Cleaning"},
        {"com.norvane.purgo.flipswitch.Clean", "Clean", "", "no alert"},
    };
    for (const auto& [identifier, title, bundle, message] : cases) {
        PGFSSwitch provider(purgo, texts);
        EXPECT_EQ(provider.titleForSwitchIdentifier(identifier), LocalizedText(title));
        EXPECT_EQ(provider.bundleForSwitchIdentifier(identifier).value_or(platform::Bundle{}).path,
                  bundle);
        provider.applyActionForSwitchIdentifier(identifier);
        EXPECT_EQ(phone.message(), message) << identifier;
        provider.applyActionForSwitchIdentifier(kPGFSSwitchClean);
        // Whatever is up stays the only one.
        EXPECT_EQ(phone.screen().alerts().size(), 1u);
        ASSERT_TRUE(phone.settle());
        purgo->dismissAlert();
        phone.device().mainLoop().drain();
    }
}

TEST_F(Triggers, ADisabledSwitchDoesNothing) {
    purgo->setEnabledPlugins(std::set<std::string>{kPGLAListenerPluginIdentifier});
    PGFSSwitch provider(purgo, texts);
    EXPECT_FALSE(provider.switchWithIdentifierIsEnabled(kPGFSSwitchClean));
    provider.applyActionForSwitchIdentifier(kPGFSSwitchClean);
    EXPECT_EQ(phone.message(), "no alert");
}

TEST_F(Triggers, AnEventIsHandledOnceAndAbortTakesTheAlertAway) {
    PGLAListener listener(purgo, texts);
    const auto fire = [&](const std::string& name) {
        platform::LAEvent event;
        listener.receiveEvent(activator, event, name);
        return event.isHandled();
    };
    EXPECT_FALSE(fire("com.norvane.purgo.activator"));
    EXPECT_TRUE(fire(kPGLAListenerClean));
    EXPECT_FALSE(fire(kPGLAListenerClean));
    EXPECT_FALSE(fire(kPGLAListenerCleanNoPopup));

    platform::LAEvent event;
    listener.abortEvent(activator, event);
    phone.device().mainLoop().drain();
    EXPECT_EQ(phone.message(), "no alert");
    EXPECT_TRUE(fire(kPGLAListenerCleanNoPopup));
    listener.otherListenerDidHandleEvent(activator, event);
    EXPECT_FALSE(purgo->isShowingAlert());
    listener.abortEvent(activator, event);

    EXPECT_EQ(listener.requiresLocalizedTitleForListenerName(activator, kPGLAListenerClean),
              LocalizedText("Ask"));
    EXPECT_EQ(
        listener.requiresLocalizedDescriptionForListenerName(activator, kPGLAListenerCleanNoPopup),
        LocalizedText("Cleans"));
    EXPECT_TRUE(listener.requiresLocalizedTitleForListenerName(activator, "other").isAbsent());
}

TEST_F(Triggers, NeedAnInterfaceAndAManager) {
    for (const auto& make : std::vector<std::function<void()>>{
             [&] { PGFSSwitch(nullptr, texts); }, [&] { PGFSSwitch(purgo, nullptr); },
             [&] { PGLAListener(nullptr, texts); },
             [&] {
                 PGLAListener(purgo, nullptr);
             }}) {
        try {
            make();
            FAIL();
        } catch (const platform::Exception& exception) {
            EXPECT_EQ(exception.reason(),
                      "Invalid parameter not satisfying: purgo && localizationManager");
        }
    }
}

class StartUp : public testing::Test {
protected:
    ~StartUp() override {
        PurgoLoader::loader().setFsDataSource(nullptr);
        PurgoLoader::loader().setLaListener(nullptr);
    }

    /// Starts the library up on a device whose host executable prints this.
    void start(const std::string& settings) {
        panel->registered.clear();
        activator->registered.clear();
        PurgoLoader::loader().setFsDataSource(nullptr);
        PurgoLoader::loader().setLaListener(nullptr);
        phone.files().writeScript(tests::hostExecutable,
                                  "[ \"$*\" = -printsettings ] && printf '" + settings + "'");
        PurgoLoader::loader().loadPlugins();
    }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& [identifier, dataSource] : panel->registered)
            names.push_back(identifier);
        for (const auto& [name, listener] : activator->registered)
            names.push_back(name);
        return names;
    }

    tests::TestDevice phone;
    std::shared_ptr<Panel> panel = std::make_shared<Panel>();
    std::shared_ptr<Activator> activator = std::make_shared<Activator>();
};

TEST_F(StartUp, RegistersWhatIsEnabledAndThere) {
    const std::string both = "plugins=com.norvane.purgo.flipswitch,com.norvane.purgo.activator\\n";
    start(both);
    EXPECT_TRUE(names().empty()) << "no framework is there";

    phone.device().classes().add("FSSwitchPanel", panel);
    phone.device().classes().add("LAActivator", activator);
    using Names = std::vector<std::string>;
    const std::pair<std::string, Names> cases[] = {
        {both,
         {kPGFSSwitchClean, kPGFSSwitchCleanNoPopup, kPGLAListenerClean,
          kPGLAListenerCleanNoPopup}},
        {"plugins=com.norvane.purgo.flipswitch, com.norvane.purgo.activator\\n",
         {kPGFSSwitchClean, kPGFSSwitchCleanNoPopup}},
        {"plugins=,com.norvane.purgo.activator,\\n",
         {kPGLAListenerClean, kPGLAListenerCleanNoPopup}},
        {"plugins=\\n", {}},
        {"language=English", {}},
        {"", {}},
    };
    for (const auto& [settings, expected] : cases) {
        start(settings);
        EXPECT_EQ(names(), expected) << settings;
        EXPECT_EQ(PurgoLoader::loader().fsDataSource() != nullptr, !panel->registered.empty());
        EXPECT_EQ(PurgoLoader::loader().laListener() != nullptr, !activator->registered.empty());
    }
}

TEST_F(StartUp, SharesOneInterfaceInTheUsersLanguage) {
    phone.device().classes().add("FSSwitchPanel", panel);
    phone.device().classes().add("LAActivator", activator);
    start("language= Klingon \\nplugins=com.norvane.purgo.flipswitch,com.norvane.purgo.activator");
    const auto& loader = PurgoLoader::loader();
    EXPECT_EQ(loader.fsDataSource()->purgo(), loader.laListener()->purgo());
    EXPECT_EQ(loader.fsDataSource()->localizationManager()->language(), " Klingon ");
    EXPECT_EQ(panel->registered[0].second, panel->registered[1].second);
}

TEST_F(StartUp, AnInterfaceThatNobodyUsesIsFreed) {
    phone.device().classes().add("FSSwitchPanel", panel);
    start("plugins=com.norvane.purgo.flipswitch");
    const std::weak_ptr<PurgoInterface> purgo = PurgoLoader::loader().fsDataSource()->purgo();
    start("");
    EXPECT_TRUE(purgo.expired());
}

} // namespace
