#pragma once

#include "Platform/Pipes.h"

#include <cstdint>
#include <string>

namespace simulator {

/// What a cleanup has done so far.
struct CleanupCounts {
    std::uint64_t deletedFiles = 0;
    /// Units: bytes. A file with another name elsewhere frees nothing.
    std::uint64_t freedSpace = 0;
    /// The files that could not be deleted and the folders that could not be looked into.
    std::uint64_t failures = 0;
};

/// Whether a path of the device may be cleaned at all: not the whole device, and nothing that is
/// in, or around, what the device needs in order to be cleaned again.
bool mayBeCleaned(const std::string& devicePath);

/// Deletes the files in a folder and in the folders below it, and then those folders, as far as
/// they are empty; the folder itself stays.
///
/// A link is deleted and never followed. What lies on another mounted file system stays, and so do
/// sockets, pipes and devices, behind which a running program may wait. What goes away meanwhile is
/// neither deleted nor a failure; what comes meanwhile may stay. The depth of the folders costs
/// memory, but neither stack nor descriptors.
void cleanFolder(platform::FileDescriptor folder, CleanupCounts& counts);

} // namespace simulator
