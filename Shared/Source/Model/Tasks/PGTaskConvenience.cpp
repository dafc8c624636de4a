#include "Shared/Source/Model/Tasks/PGTaskConvenience.h"

#include "Platform/System.h"
#include "Shared/Source/Model/Tasks/PGTask.h"

namespace purgo {
namespace {

constexpr const char* searchFolders[] = {"/bin",      "/sbin",          "/usr/bin",
                                         "/usr/sbin", "/usr/local/bin", "/usr/local/sbin"};

/// A folder's path with a name joined to it by one separator, whatever separators the name has
/// around it.
std::string appendingPathComponent(const std::string& folder, const std::string& name) {
    const auto first = name.find_first_not_of('/');
    if (first == std::string::npos)
        return folder;
    const auto last = name.find_last_not_of('/');
    return folder + "/" + name.substr(first, last - first + 1);
}

} // namespace

std::optional<std::string> launchPathForExecutable(const std::string& name) {
    for (const auto* folder : searchFolders) {
        const auto candidate = appendingPathComponent(folder, name);
        if (platform::isExecutableFile(candidate))
            return candidate;
    }
    return std::nullopt;
}

bool launchSyncTaskWithLaunchPath(const std::string& launchPath,
                                  const std::vector<std::string>& arguments, bool quiet) {
    const auto task = PGTask::make(launchPath, arguments);
    if (quiet) {
        task->setStdErrAction(PGTaskStreamActionDiscard);
        task->setStdOutAction(PGTaskStreamActionDiscard);
    }
    return task->launchSynchronously();
}

} // namespace purgo
