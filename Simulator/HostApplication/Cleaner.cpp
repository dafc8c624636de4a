#include "Simulator/HostApplication/Cleaner.h"

#include "Simulator/Device/Folders.h"
#include "Simulator/HostApplication/Settings.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace simulator {

using platform::FileDescriptor;

namespace {

constexpr std::array<const char*, 4> protectedFolders = {
    "/Applications", "/Library/MobileSubstrate", "/Library/Switches", settingsFolder};

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

using FolderStream = std::unique_ptr<DIR, FolderCloser>;

FolderStream streamOf(int folder) {
    const int copy = fcntl(folder, F_DUPFD_CLOEXEC, 0);
    FolderStream stream(copy >= 0 ? fdopendir(copy) : nullptr);
    if (!stream && copy >= 0)
        close(copy);
    return stream;
}

std::optional<std::vector<std::string>> namesIn(int folder) {
    const FolderStream stream = streamOf(folder);
    if (!stream)
        return std::nullopt;
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = readdir(stream.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    return errno == 0 ? std::optional(std::move(names)) : std::nullopt;
}

// Sparse files free less than their length says, small ones no more than it says.
std::uint64_t spaceOf(const struct stat& status) {
    constexpr std::uint64_t blockSize = 512;
    if (status.st_nlink > 1)
        return 0;
    return std::min(static_cast<std::uint64_t>(status.st_size),
                    static_cast<std::uint64_t>(status.st_blocks) * blockSize);
}

// Walks down and up again with one descriptor, by the names of subfolders and by "..".
class TreeCleaner {
public:
    TreeCleaner(FileDescriptor folder, CleanupCounts& counts)
        : folder_(std::move(folder)), counts_(counts) {}

    void run();

private:
    struct Level {
        std::string name;
        dev_t device = 0;
        ino_t number = 0;
        std::vector<std::string> subfolders;
    };

    void beginLevel(std::string name);
    void deleteFile(const std::string& name, const struct stat& status);
    void enterSubfolder();
    void leaveSubfolder();

    FileDescriptor folder_;
    std::vector<Level> levels_;
    CleanupCounts& counts_;
};

void TreeCleaner::run() {
    beginLevel("");
    while (levels_.size() > 1 || !levels_.back().subfolders.empty()) {
        if (levels_.back().subfolders.empty())
            leaveSubfolder();
        else
            enterSubfolder();
        if (levels_.empty())
            return;
    }
}

void TreeCleaner::beginLevel(std::string name) {
    struct stat folderStatus {};
    fstat(folder_.get(), &folderStatus);
    Level level{std::move(name), folderStatus.st_dev, folderStatus.st_ino, {}};
    // All the names first: some file systems skip entries when others are deleted meanwhile.
    const auto names = namesIn(folder_.get());
    if (!names)
        ++counts_.failures;
    for (const std::string& entry : names.value_or(std::vector<std::string>())) {
        struct stat status {};
        if (fstatat(folder_.get(), entry.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            counts_.failures += errno != ENOENT;
        else if (S_ISDIR(status.st_mode))
            level.subfolders.push_back(entry);
        else if (S_ISREG(status.st_mode) || S_ISLNK(status.st_mode))
            deleteFile(entry, status);
    }
    levels_.push_back(std::move(level));
}

void TreeCleaner::deleteFile(const std::string& name, const struct stat& status) {
    if (unlinkat(folder_.get(), name.c_str(), 0) == 0) {
        ++counts_.deletedFiles;
        counts_.freedSpace += spaceOf(status);
    } else if (errno != ENOENT) {
        ++counts_.failures;
    }
}

void TreeCleaner::enterSubfolder() {
    std::string name = std::move(levels_.back().subfolders.back());
    levels_.back().subfolders.pop_back();
    FileDescriptor subfolder = openSubfolder(folder_.get(), name);
    if (!subfolder.isOpen()) {
        counts_.failures += errno != ENOENT && errno != ENOTDIR && errno != EXDEV;
        return;
    }
    folder_ = std::move(subfolder);
    beginLevel(std::move(name));
}

void TreeCleaner::leaveSubfolder() {
    const std::string name = std::move(levels_.back().name);
    levels_.pop_back();
    const Level& level = levels_.back();
    FileDescriptor parent(openat(folder_.get(), "..", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    // A folder that was moved meanwhile has another parent, perhaps one outside the device.
    if (!parent.isOpen() || fstat(parent.get(), &status) != 0 || status.st_dev != level.device ||
        status.st_ino != level.number) {
        ++counts_.failures;
        levels_.clear();
        return;
    }
    folder_ = std::move(parent);
    // Refused while something is left in it, which has been counted where it was met.
    unlinkat(folder_.get(), name.c_str(), AT_REMOVEDIR);
}

bool liesIn(const std::vector<std::string>& inner, const std::vector<std::string>& outer) {
    return inner.size() >= outer.size() && std::equal(outer.begin(), outer.end(), inner.begin());
}

} // namespace

bool mayBeCleaned(const std::string& devicePath) {
    const auto path = componentsOf(devicePath);
    if (!path)
        return false;
    return std::none_of(protectedFolders.begin(), protectedFolders.end(), [&](const char* folder) {
        const auto other = componentsOf(folder);
        return liesIn(*path, *other) || liesIn(*other, *path);
    });
}

void cleanFolder(FileDescriptor folder, CleanupCounts& counts) {
    TreeCleaner(std::move(folder), counts).run();
}

} // namespace simulator
