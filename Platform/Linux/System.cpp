#include "Platform/System.h"

#include "Platform/Linux/Device.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

double foundationVersionNumber() {
    return Device::current().configuration().systemVersion.foundationVersionNumber();
}

void openLibrary(const std::string& devicePath) {
    // The handle is dropped on purpose: the library stays for the life of the process.
    dlopen(rootedPath(devicePath).c_str(), RTLD_LAZY);
}

const Class* classNamed(const std::string& name) {
    return Device::current().classes().find(name);
}

std::optional<Bundle> bundleWithPath(const std::string& devicePath) {
    struct stat status {};
    if (stat(rootedPath(devicePath).c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return std::nullopt;
    return Bundle{devicePath};
}

bool isExecutableFile(const std::string& devicePath) {
    const auto path = rootedPath(devicePath);
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           access(path.c_str(), X_OK) == 0;
}

std::string rootedPath(const std::string& devicePath) {
    const auto& root = Device::current().configuration().root;
    if (root.empty() || !devicePath.starts_with('/'))
        return devicePath;
    auto path = root + devicePath;
    struct stat status {};
    // A link counts as it is: one that leads nowhere must not be taken for the machine's own file.
    return lstat(path.c_str(), &status) == 0 ? path : devicePath;
}

} // namespace platform
