#include "Source/Model/PGLocalizationManager.h"

#include "Tests/Support/TestDevice.h"

#include <gtest/gtest.h>

namespace {

using platform::LocalizedText;
using purgo::PGLocalizationManager;
using tests::TestDevice;

constexpr const char* englishFile = "/Applications/Purgo.app/English.strings";
constexpr const char* italianFile = "/Applications/Purgo.app/Italian.strings";

TEST(LocalizationManager, LaysTheLanguageOverEnglishKeyByKey) {
    const TestDevice device;
    device.files().write(englishFile, "YES = Yes; NO = No; CONTINUE = English; Unused = x;");
    device.files().write(italianFile, "YES = \"S\\U00ec\"; CONTINUE = \"\";");
    PGLocalizationManager manager("Italian");
    EXPECT_EQ(manager.localizedStringForKey("YES"), LocalizedText("Sì"));
    EXPECT_EQ(manager.localizedStringForKey("NO"), LocalizedText("No"));
    EXPECT_EQ(manager.localizedStringForKey("CONTINUE"), LocalizedText(""));
    EXPECT_TRUE(manager.localizedStringForKey("CLEANLBL").isNullMarker());
    EXPECT_TRUE(manager.localizedStringForKey("Unused").isAbsent());
    EXPECT_EQ(manager.localizedStrings()->size(), 13u);
}

TEST(LocalizationManager, ALanguageWithoutFileIsEnglish) {
    const TestDevice device;
    device.files().write(englishFile, "YES = Yes;");
    for (const auto* language : {"Italian", "english", "English", ""})
        EXPECT_EQ(PGLocalizationManager(language).localizedStringForKey("YES"),
                  LocalizedText("Yes"))
            << language;
    EXPECT_EQ(PGLocalizationManager(std::nullopt).language(), "English");
}

TEST(LocalizationManager, ALanguageNeedsTheEnglishFileToo) {
    const TestDevice device;
    device.files().write(italianFile, "YES = x;");
    device.files().write(englishFile, "no property list");
    PGLocalizationManager manager("Italian");
    EXPECT_TRUE(manager.localizedStringForKey("YES").isAbsent());
    EXPECT_EQ(manager.localizedStrings(), nullptr);
}

TEST(LocalizationManager, SearchesUntilItFindsAndThenNeverAgain) {
    const TestDevice device;
    PGLocalizationManager manager("English");
    EXPECT_TRUE(manager.localizedStringForKey("YES").isAbsent());
    device.files().write(englishFile, "YES = first;");
    EXPECT_EQ(manager.localizedStringForKey("YES"), LocalizedText("first"));
    device.files().write(englishFile, "YES = second;");
    EXPECT_EQ(manager.localizedStringForKey("YES"), LocalizedText("first"));
}

TEST(LocalizationManager, AValueThatIsNoTextReplacesTheEnglishOneAllTheSame) {
    const TestDevice device;
    device.files().write(englishFile, "YES = Yes;");
    device.files().write(italianFile, "YES = (a, list);");
    EXPECT_TRUE(PGLocalizationManager("Italian").localizedStringForKey("YES").isNullMarker());
}

} // namespace
