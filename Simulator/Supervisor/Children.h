#pragma once

#include <set>

#include <sys/types.h>

namespace simulator {

/// The child processes of this one. It is the parent also of those that its descendants leave
/// behind, so that none of them outlives it.
class Children {
public:
    /// Adopts from now on. Children that are there already were somebody else's, and are spared.
    Children();

    /// Ends all children and their descendants, and waits until they are gone.
    void end() const;

private:
    std::set<pid_t> present() const;

    std::set<pid_t> others_;
};

} // namespace simulator
