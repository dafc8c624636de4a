#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace simulator {

/// What `makeLitter` has made.
struct Litter {
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    /// Why no more was made; empty when all was.
    std::string error;
};

/// Fills the cache folders of a device with that many new files of many sizes, some in folders of
/// their own, as programs leave them behind.
///
/// Sizes and contents are the same in every run. Files that are there stay as they are.
///
/// Errors:  what was made before stays and is counted. Nothing is made in the machine's own "/",
///          or behind a link or a mount point.
Litter makeLitter(const std::string& deviceRoot, std::size_t count);

} // namespace simulator
