#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// A version of the phone's system.
struct SystemVersion {
    int major = 0;
    int minor = 0;
    int patch = 0;

    /// Reads "6", "6.1" or "6.1.3"; nothing for any other text.
    static std::optional<SystemVersion> parse(std::string_view text);

    /// The version number of the Foundation framework that comes with this version: that of the
    /// newest known version that is not newer.
    double foundationVersionNumber() const;

    /// "6.1", or "6.1.3" where the patch is not 0.
    std::string text() const;

    auto operator<=>(const SystemVersion&) const = default;
};

} // namespace platform
