#include "Simulator/HostApplication/Settings.h"

#include "Platform/PropertyLists.h"
#include "Platform/Text.h"
#include "Simulator/Device/Folders.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include <fcntl.h>

namespace simulator {

using platform::PropertyListPointer;

namespace {

std::shared_ptr<const platform::PropertyListDictionary> settingsDictionary(int deviceRoot) {
    const auto folder = openFolder(deviceRoot, settingsFolder);
    if (!folder.isOpen())
        return nullptr;
    // Not blocking, should somebody have put a pipe in its place.
    constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const platform::FileDescriptor file(openat(folder.get(), settingsFileName, flags));
    if (!file.isOpen())
        return nullptr;
    // The reader takes paths only, and this one leads to the file that was opened without links.
    return platform::dictionaryWithContentsOfFile("/proc/self/fd/" + std::to_string(file.get()));
}

// Whether a text can be the value of a record, which is one line.
bool isOneLine(const std::string& text) {
    std::string_view rest = text;
    return !text.empty() && platform::takeLine(rest).size() == text.size() &&
           text.find('\0') == std::string::npos;
}

bool isListable(const std::string& text) {
    return isOneLine(text) && text.find(',') == std::string::npos;
}

std::optional<std::string> textIn(const PropertyListPointer& value) {
    const std::string* text = value ? value->string() : nullptr;
    return text && isOneLine(*text) ? std::optional(*text) : std::nullopt;
}

std::optional<bool> boolIn(const PropertyListPointer& value) {
    if (!value)
        return std::nullopt;
    if (const bool* boolean = value->boolean())
        return *boolean;
    if (const std::int64_t* integer = value->integer())
        return *integer != 0;
    // Old-style text has words only.
    std::string word = textIn(value).value_or("");
    std::transform(word.begin(), word.end(), word.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 'a' - 'A')
                                                    : character;
    });
    if (word == "true" || word == "yes" || word == "1")
        return true;
    if (word == "false" || word == "no" || word == "0")
        return false;
    return std::nullopt;
}

std::optional<std::vector<std::string>> listIn(const PropertyListPointer& value) {
    const platform::PropertyListArray* array = value ? value->array() : nullptr;
    if (!array)
        return std::nullopt;
    std::vector<std::string> list;
    for (const PropertyListPointer& element : *array) {
        const std::string* text = element->string();
        if (text && isListable(*text))
            list.push_back(*text);
    }
    return list;
}

} // namespace

std::optional<Settings> readSettings(int deviceRoot) {
    const auto dictionary = settingsDictionary(deviceRoot);
    if (!dictionary)
        return std::nullopt;
    Settings settings;
    settings.language = textIn(dictionary->value("language")).value_or(settings.language);
    settings.plugins = listIn(dictionary->value("plugins")).value_or(settings.plugins);
    settings.shouldRespring =
        boolIn(dictionary->value("shouldRespring")).value_or(settings.shouldRespring);
    settings.cacheFolders =
        listIn(dictionary->value("cacheFolders")).value_or(settings.cacheFolders);
    return settings;
}

} // namespace simulator
