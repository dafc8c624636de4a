#pragma once

#include "Platform/Pipes.h"

#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// The names on the way to a path of the device, from its root on.
///
/// Errors: nothing for a path that is not absolute, or that has a "." or ".." or a NUL in it.
std::optional<std::vector<std::string>> componentsOf(const std::string& devicePath);

/// Opens the folder that stands for the device's "/".
///
/// Errors:  not open, and `errno` says why: EINVAL for a path that is not absolute, EPERM for the
///          machine's own "/" under whatever name.
platform::FileDescriptor openDeviceRoot(const std::string& path);

/// Opens a folder that lies in another one and in the same mounted file system.
///
/// Errors:  not open, and `errno` says why: ENOTDIR for anything else, a link to a folder included;
///          EXDEV for a mount point.
platform::FileDescriptor openSubfolder(int folder, const std::string& name);

enum class IfMissing { fail, make };

/// Opens a folder of the device, without leaving the device by a link or a mount point on the way.
///
/// Errors:  not open, and `errno` says why, as for `openSubfolder`; EINVAL for a path without
///          `componentsOf`.
platform::FileDescriptor openFolder(int deviceRoot, const std::string& devicePath,
                                    IfMissing ifMissing = IfMissing::fail);

} // namespace simulator
