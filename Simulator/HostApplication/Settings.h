#pragma once

#include "Simulator/Device/CacheFolders.h"

#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// What the user has chosen, in a property list that a person can edit.
///
/// A setting that is missing or of the wrong kind has the value that it has here; what is wrong
/// inside a list is left out.
struct Settings {
    /// Key "language": the name of a strings file without its extension.
    std::string language = "English";

    /// Key "plugins": the identifiers of the triggers that may start a cleanup.
    std::vector<std::string> plugins = {"com.norvane.purgo.flipswitch",
                                        "com.norvane.purgo.activator"};

    /// Key "shouldRespring": whether a cleanup ends with the offer to restart the home screen. A
    /// boolean, a number, or one of the words true, yes, false and no.
    bool shouldRespring = false;

    /// Key "cacheFolders": the device's paths of the folders that a cleanup empties.
    std::vector<std::string> cacheFolders{defaultCacheFolders.begin(), defaultCacheFolders.end()};
};

/// The device's path of the folder with the settings, and the name of the file in it.
inline constexpr const char* settingsFolder = "/var/mobile/Library/Preferences";
inline constexpr const char* settingsFileName = "com.norvane.purgo.plist";

/// Reads the settings of a device.
///
/// Errors: nothing when there is no file of that name, when it is a link, or when its content is no
///         property list.
std::optional<Settings> readSettings(int deviceRoot);

} // namespace simulator
