#pragma once

#include <optional>
#include <string>
#include <vector>

namespace purgo {

/// Looks a program up by its name in the system's standard folders, one after the other. The search
/// path of the environment does not count.
///
/// Threads: any.
std::optional<std::string> launchPathForExecutable(const std::string& name);

/// Runs a program to its end on this thread, with its output thrown away when `quiet` and on this
/// process's own streams otherwise.
///
/// True means that the child ended by itself, with any exit code.
///
/// Threads:  any. The task's notification is posted on the main thread as for every task.
/// Errors:   a relative launch path throws, as with `PGTask::make`.
bool launchSyncTaskWithLaunchPath(const std::string& launchPath,
                                  const std::vector<std::string>& arguments, bool quiet);

} // namespace purgo
