#pragma once

#include <string>

namespace purgo {

/// The host application: where it and its command-line program lie on the device.
class PGApplication {
public:
    PGApplication() = delete;

    static std::string bundlePath();

    /// The program in a bundle that fits the version of the running system. Another application
    /// than the host names its own bundle.
    static std::string executablePath(const std::string& bundle = bundlePath());
};

} // namespace purgo
