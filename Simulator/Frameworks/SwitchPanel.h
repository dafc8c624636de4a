#pragma once

#include "Platform/Triggers.h"

#include <memory>
#include <string>
#include <vector>

namespace simulator {

/// The toggle panel as the home screen uses it: what is registered, and who provides it.
///
/// The home screen never links the framework. It looks the class "FSSwitchPanel" up and finds
/// that its shared object is one of these.
///
/// Threads: main thread only.
class SwitchPanel : public platform::FSSwitchPanel {
public:
    /// The identifiers of the registered switches, in the order of their first registration.
    virtual std::vector<std::string> identifiers() const = 0;

    /// The provider of a switch, or null when none is registered under this identifier.
    virtual std::shared_ptr<platform::FSSwitchDataSource>
    dataSource(const std::string& identifier) const = 0;
};

} // namespace simulator
