#pragma once

#include <string>
#include <vector>

namespace simulator {

/// The bundle identifier of the home screen, which the filters of libraries name.
inline constexpr const char* homeScreenBundleIdentifier = "com.apple.springboard";

/// The device's paths of the libraries that belong into the home screen, in the order of their
/// names: those whose filter, the property list of their name beside them, lists its bundle
/// identifier, and those that have no filter. None when the device has no folder of libraries.
std::vector<std::string> librariesOfHomeScreen(const std::string& deviceRoot);

} // namespace simulator
