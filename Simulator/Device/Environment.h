#pragma once

namespace simulator {

/// The environment variable in which the home screen leaves its process number to its children, so
/// that one that is to end it can tell it from any other parent.
inline constexpr const char* homeScreenVariable = "PURGO_HOME_SCREEN_PID";

} // namespace simulator
