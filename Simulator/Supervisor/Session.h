#pragma once

#include "Simulator/Supervisor/Options.h"
#include "Simulator/Supervisor/Signals.h"

namespace simulator {

/// Runs a device until whoever uses it, or one of the signals, ends it.
///
/// Returns the exit status. The terminal is as it was before, however the session ends.
///
/// Errors: throws `UsageError` for files that cannot be used, and what `Supervisor::run` throws.
int runSession(Options options, const Signals& endingSignals);

} // namespace simulator
