#include "Platform/Linux/SystemVersion.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace platform {

namespace {

struct KnownVersion {
    SystemVersion system;
    double foundation;
};

// In ascending order.
constexpr KnownVersion knownVersions[] = {
    {{2, 0}, 678.24},  {{2, 1}, 678.26},  {{2, 2}, 678.29},  {{3, 0}, 678.47},  {{3, 1}, 678.51},
    {{3, 2}, 678.60},  {{4, 0}, 751.32},  {{4, 1}, 751.37},  {{4, 2}, 751.49},  {{4, 3}, 751.49},
    {{5, 0}, 881.00},  {{5, 1}, 890.10},  {{6, 0}, 992.00},  {{6, 1}, 993.00},  {{7, 0}, 1047.20},
    {{7, 1}, 1047.25}, {{8, 0}, 1140.11}, {{8, 1}, 1141.10}, {{8, 2}, 1142.14}, {{8, 3}, 1144.17},
    {{9, 0}, 1240.10}, {{9, 1}, 1241.14}, {{9, 2}, 1242.12}, {{9, 3}, 1280.25},
};

/// Takes a number and the full stop behind it off the text.
bool takeNumber(std::string_view& text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 0)
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.empty())
        return true;
    if (text.front() != '.' || text.size() == 1)
        return false;
    text.remove_prefix(1);
    return true;
}

} // namespace

std::optional<SystemVersion> SystemVersion::parse(std::string_view text) {
    SystemVersion version;
    if (!takeNumber(text, version.major))
        return std::nullopt;
    if (!text.empty() && !takeNumber(text, version.minor))
        return std::nullopt;
    if (!text.empty() && !takeNumber(text, version.patch))
        return std::nullopt;
    if (!text.empty())
        return std::nullopt;
    return version;
}

double SystemVersion::foundationVersionNumber() const {
    const auto newer =
        std::find_if(std::begin(knownVersions), std::end(knownVersions),
                     [this](const KnownVersion& known) { return known.system > *this; });
    return newer == std::begin(knownVersions) ? newer->foundation : std::prev(newer)->foundation;
}

std::string SystemVersion::text() const {
    auto text = std::to_string(major) + "." + std::to_string(minor);
    if (patch != 0)
        text.append(".").append(std::to_string(patch));
    return text;
}

} // namespace platform
