#pragma once

#include <array>

namespace simulator {

/// The device's paths of the folders that hold nothing but what programs can make again.
inline constexpr std::array<const char*, 4> defaultCacheFolders = {
    "/var/mobile/Library/Caches",
    "/var/mobile/Library/Logs/CrashReporter",
    "/var/root/Library/Caches",
    "/var/tmp",
};

} // namespace simulator
