#include "Simulator/HostApplication/Report.h"

#include "Platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>
#include <string_view>

namespace simulator {

namespace {

std::string oneLine(const std::string& text) {
    std::string joined;
    for (std::string_view rest = text; !rest.empty();)
        joined.append(joined.empty() ? "" : " ").append(platform::takeLine(rest));
    return joined;
}

} // namespace

void printProgress(const std::string& text) {
    std::string line = oneLine(text);
    std::replace(line.begin(), line.end(), '=', '-');
    std::cout << line << std::endl;
}

void printRecord(const std::string& key, const std::string& value) {
    const std::string line = oneLine(value);
    if (!line.empty())
        std::cout << key << '=' << line << '\n';
}

std::string sizeText(std::uint64_t bytes) {
    constexpr std::array<const char*, 5> units = {"KB", "MB", "GB", "TB", "PB"};
    if (bytes < 1024)
        return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
    double size = static_cast<double>(bytes) / 1024;
    std::size_t unit = 0;
    // From here on the unit's size would be printed as 1024.0.
    for (; size >= 1023.95 && unit + 1 < units.size(); ++unit)
        size /= 1024;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f %s", size, units[unit]);
    return text.data();
}

} // namespace simulator
