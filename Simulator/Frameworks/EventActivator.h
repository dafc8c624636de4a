#pragma once

#include "Platform/Triggers.h"

#include <memory>
#include <string>
#include <vector>

namespace simulator {

/// The event framework as the home screen uses it: what is registered, and who listens.
///
/// The home screen never links the framework. It looks the class "LAActivator" up and finds that
/// its shared object is one of these.
///
/// Threads: main thread only.
class EventActivator : public platform::LAActivator {
public:
    /// The names of the registered listeners, in the order of their first registration.
    virtual std::vector<std::string> names() const = 0;

    /// The listener of a name, or null when none is registered under it.
    virtual std::shared_ptr<platform::LAListener> listener(const std::string& name) const = 0;
};

} // namespace simulator
