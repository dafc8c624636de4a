#include "Simulator/Device/Folders.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace simulator {

using platform::FileDescriptor;

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

FileDescriptor failWith(int error) {
    errno = error;
    return {};
}

bool isSameFolder(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// A folder mounted from elsewhere in the same file system has the device number of its
// surroundings, so the number alone does not tell.
bool isMountPoint(int folder, int parent) {
    struct statx status {};
    struct statx parentStatus {};
    if (statx(folder, "", AT_EMPTY_PATH, STATX_TYPE, &status) != 0 ||
        statx(parent, "", AT_EMPTY_PATH, STATX_TYPE, &parentStatus) != 0)
        return true;
    return (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0 ||
           status.stx_dev_major != parentStatus.stx_dev_major ||
           status.stx_dev_minor != parentStatus.stx_dev_minor;
}

} // namespace

std::optional<std::vector<std::string>> componentsOf(const std::string& devicePath) {
    if (devicePath.empty() || devicePath.front() != '/' ||
        devicePath.find('\0') != std::string::npos)
        return std::nullopt;
    std::vector<std::string> components;
    for (std::size_t start = 1; start < devicePath.size();) {
        const std::size_t end = std::min(devicePath.find('/', start), devicePath.size());
        std::string component = devicePath.substr(start, end - start);
        start = end + 1;
        if (component == "." || component == "..")
            return std::nullopt;
        if (!component.empty())
            components.push_back(std::move(component));
    }
    return components;
}

FileDescriptor openDeviceRoot(const std::string& path) {
    if (path.empty() || path.front() != '/')
        return failWith(EINVAL);
    FileDescriptor root(open(path.c_str(), folderFlags));
    if (!root.isOpen())
        return root;
    // Compared by identity: "//", "/.", links and mounts all lead to the same folder.
    struct stat status {};
    struct stat machineStatus {};
    if (fstat(root.get(), &status) != 0 || stat("/", &machineStatus) != 0)
        return failWith(errno);
    return isSameFolder(status, machineStatus) ? failWith(EPERM) : std::move(root);
}

FileDescriptor openSubfolder(int folder, const std::string& name) {
    FileDescriptor subfolder(openat(folder, name.c_str(), folderFlags | O_NOFOLLOW));
    if (subfolder.isOpen() && isMountPoint(subfolder.get(), folder))
        return failWith(EXDEV);
    return subfolder;
}

FileDescriptor openFolder(int deviceRoot, const std::string& devicePath, IfMissing ifMissing) {
    const auto components = componentsOf(devicePath);
    if (!components)
        return failWith(EINVAL);
    FileDescriptor folder(fcntl(deviceRoot, F_DUPFD_CLOEXEC, 0));
    for (const std::string& component : *components) {
        if (!folder.isOpen())
            return folder;
        if (ifMissing == IfMissing::make && mkdirat(folder.get(), component.c_str(), 0755) != 0 &&
            errno != EEXIST)
            return failWith(errno);
        folder = openSubfolder(folder.get(), component);
    }
    return folder;
}

} // namespace simulator
