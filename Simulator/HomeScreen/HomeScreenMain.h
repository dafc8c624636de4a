#pragma once

#include "Simulator/Link/Messages.h"

namespace simulator {

/// What the process does that the supervisor has started to be the home screen.
int homeScreenMain(const HomeScreenSettings& settings);

} // namespace simulator
