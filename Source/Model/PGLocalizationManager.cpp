#include "Source/Model/PGLocalizationManager.h"

#include "Shared/Source/Model/Application/PGApplication.h"

namespace purgo {

namespace {

constexpr const char* english = "English";

constexpr const char* knownKeys[] = {
    "CLEANLBL",     "CLEANUPCOMPLETED", "CONTINUE",    "DELETEDFILES", "FREEDSPACE",
    "NO",           "PLUGINDESC1",      "PLUGINDESC2", "PLUGINTITLE1", "PLUGINTITLE2",
    "RESPRINGMSG1", "RUNCOUNTDOWNMSG",  "YES",
};

std::shared_ptr<const platform::PropertyListDictionary> stringsFile(const std::string& language) {
    return platform::dictionaryWithContentsOfFile(PGApplication::bundlePath() + "/" + language +
                                                  ".strings");
}

/// A value that is no text counts like the null marker: it is there, and there is nothing to read.
platform::LocalizedText textOf(const platform::PropertyListPointer& value) {
    const auto* const text = value ? value->string() : nullptr;
    return text ? platform::LocalizedText(*text) : platform::LocalizedText::nullMarker();
}

} // namespace

PGLocalizationManager::PGLocalizationManager(const std::optional<std::string>& language)
    : language_(language && !language->empty() ? *language : english) {}

PGLocalizationManager::Dictionary PGLocalizationManager::firstReadableFile() const {
    if (auto found = stringsFile(language_))
        return found;
    return stringsFile(english);
}

const PGLocalizationManager::LocalizedStrings* PGLocalizationManager::localizedStrings() {
    if (localizedStrings_)
        return &*localizedStrings_;
    const auto found = firstReadableFile();
    if (!found)
        return nullptr;
    // The files of a language are made to lie over the English one: without it nothing is shown,
    // rather than a mixture that nobody has translated.
    const auto beneath = language_ == english ? found : stringsFile(english);
    if (!beneath)
        return nullptr;

    LocalizedStrings strings;
    for (const char* key : knownKeys) {
        const auto value = found->value(key);
        strings.emplace(key, textOf(value ? value : beneath->value(key)));
    }
    localizedStrings_ = std::move(strings);
    return &*localizedStrings_;
}

platform::LocalizedText PGLocalizationManager::localizedStringForKey(const std::string& key) {
    const auto* const strings = localizedStrings();
    if (!strings)
        return {};
    const auto text = strings->find(key);
    return text == strings->end() ? platform::LocalizedText() : text->second;
}

} // namespace purgo
