#pragma once

#include "Platform/Pipes.h"

#include <optional>
#include <vector>

namespace simulator {

/// Turns signals into something that can be read: they no longer interrupt anything, but make a
/// descriptor readable.
///
/// States: the signals stay blocked after its end; children are to be started with none blocked.
/// Errors: throws `std::system_error` when there is no descriptor left.
class Signals {
public:
    explicit Signals(const std::vector<int>& signals);

    int descriptor() const { return descriptor_.get(); }

    /// The next signal that has come, if any.
    std::optional<int> take() const;

private:
    platform::FileDescriptor descriptor_;
};

} // namespace simulator
