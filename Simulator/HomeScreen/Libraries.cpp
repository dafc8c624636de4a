#include "Simulator/HomeScreen/Libraries.h"

#include "Platform/PropertyLists.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace simulator {

namespace {

constexpr const char* librariesFolder = "/Library/MobileSubstrate/DynamicLibraries";

bool listsHomeScreen(const std::string& filterPath) {
    const auto file = platform::dictionaryWithContentsOfFile(filterPath);
    const auto filter = file ? file->value("Filter") : nullptr;
    const auto bundles =
        filter && filter->dictionary() ? filter->dictionary()->value("Bundles") : nullptr;
    if (!bundles || !bundles->array())
        return false;
    return std::any_of(bundles->array()->begin(), bundles->array()->end(), [](const auto& bundle) {
        return bundle->string() && *bundle->string() == homeScreenBundleIdentifier;
    });
}

} // namespace

std::vector<std::string> librariesOfHomeScreen(const std::string& deviceRoot) {
    namespace fs = std::filesystem;
    std::vector<std::string> libraries;
    std::error_code missing;
    const fs::directory_iterator folder(deviceRoot + librariesFolder, missing);
    for (const auto& file : folder) {
        if (file.path().extension() != ".dylib")
            continue;
        const auto filter = fs::path(file.path()).replace_extension(".plist");
        std::error_code ignored;
        const bool hasFilter =
            fs::symlink_status(filter, ignored).type() != fs::file_type::not_found;
        const fs::path onDevice = librariesFolder;
        if (!hasFilter || listsHomeScreen(onDevice / filter.filename()))
            libraries.push_back(onDevice / file.path().filename());
    }
    std::sort(libraries.begin(), libraries.end());
    return libraries;
}

} // namespace simulator
