#pragma once

#include <cstdint>

namespace platform {

// The system's numbers for the styles of alerts and of their actions.

inline constexpr std::intptr_t UIAlertControllerStyleActionSheet = 0;
inline constexpr std::intptr_t UIAlertControllerStyleAlert = 1;

inline constexpr std::intptr_t UIAlertActionStyleDefault = 0;
inline constexpr std::intptr_t UIAlertActionStyleCancel = 1;
inline constexpr std::intptr_t UIAlertActionStyleDestructive = 2;

} // namespace platform
