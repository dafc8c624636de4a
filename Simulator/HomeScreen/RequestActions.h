#pragma once

#include <string>

namespace simulator {

class HomeScreen;

/// Carries out one of the supervisor's requests in the home screen.
///
/// Errors: throws `CommandFailure` when it cannot be carried out.
void carryOutRequest(HomeScreen& homeScreen, const std::string& line);

} // namespace simulator
