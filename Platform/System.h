#pragma once

#include <memory>
#include <optional>
#include <string>

namespace platform {

/// The version number of the Foundation framework, by which system versions are told apart.
double foundationVersionNumber();

/// Opens a dynamic library with lazy binding and runs its load-time constructors.
///
/// The library stays open for the life of the process. One that is missing or cannot be loaded is
/// not reported: what follows depends on the classes that are known afterwards.
///
/// Threads: any.
void openLibrary(const std::string& devicePath);

/// A class of the running process, known by its name. Opaque; serves to be asked for its objects.
class Class;

/// Looks a class up by name; null when no loaded image has it.
///
/// Ownership: a class lives as long as the process.
const Class* classNamed(const std::string& name);

/// A folder with resources.
struct Bundle {
    std::string path;
    bool operator==(const Bundle&) const = default;
};

/// The bundle at a path, or nothing when there is no folder.
std::optional<Bundle> bundleWithPath(const std::string& devicePath);

/// Whether a file exists at a path and the process may execute it. A folder is not one.
bool isExecutableFile(const std::string& devicePath);

/// Turns an absolute path of the device into the one to hand to the operating system.
///
/// Every path of the device that reaches the operating system goes through here: on the phone it
/// stays as it is.
std::string rootedPath(const std::string& devicePath);

} // namespace platform
