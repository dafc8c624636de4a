#pragma once

#include <cstdint>
#include <string>

/// The bytes that are written over and over: long enough, and of an odd enough length, that nothing
/// can be lost or swapped unnoticed. The same on processors of every width.
inline std::string patternPeriod() {
    std::string period;
    for (std::uint64_t index = 0; index < 1000003; ++index)
        period += static_cast<char>('!' + (index * index + index / 90) % 90);
    return period;
}
