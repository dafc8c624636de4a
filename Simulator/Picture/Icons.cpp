#include "Simulator/Picture/Icons.h"

#include "Platform/Portable/PropertyListReader.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <vector>

namespace simulator {
namespace {

/// What a picture can well carry of one icon.
constexpr std::uintmax_t largestFile = 256 * 1024;

/// The key of an Info.plist that names the icon's file.
constexpr const char* iconFileKey = "CFBundleIconFile";

std::string contents(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    if (const auto size = std::filesystem::file_size(path, error); error || size > largestFile)
        return {};
    std::ifstream file(path, std::ios::binary);
    std::string bytes(largestFile + 1, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes.size() > largestFile ? std::string() : bytes;
}

/// The file's name as the bundle tells it; one that leads out of the bundle is none.
std::optional<std::string> namedIcon(const std::filesystem::path& bundle) {
    const auto information = platform::readPropertyList(contents(bundle / "Info.plist"));
    if (!information || !information->dictionary())
        return std::nullopt;
    const auto value = information->dictionary()->value(iconFileKey);
    const std::string* name = value ? value->string() : nullptr;
    if (!name || name->empty() || name->find('/') != std::string::npos ||
        name->find('\0') != std::string::npos)
        return std::nullopt;
    return *name;
}

std::vector<std::string> candidates(const std::filesystem::path& bundle) {
    std::vector<std::string> names;
    for (const std::string& stem : {namedIcon(bundle).value_or("icon"), std::string("icon")})
        for (const char* ending : {"", ".svg", ".png"})
            names.push_back(stem + ending);
    return names;
}

/// The kind of picture by what the file holds; empty for no picture.
std::string_view mediaType(std::string_view bytes) {
    if (bytes.substr(0, 8) == "\x89PNG\r\n\x1A\n")
        return "image/png";
    const bool isMarkup = bytes.substr(0, 3) == "\xEF\xBB\xBF" || bytes.substr(0, 1) == "<";
    return isMarkup && bytes.find("<svg") != std::string_view::npos ? "image/svg+xml" : "";
}

std::string base64(std::string_view bytes) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t index = 0; index < bytes.size(); index += 3) {
        const std::string_view group = bytes.substr(index, 3);
        std::uint32_t bits = 0;
        for (std::size_t place = 0; place < 3; ++place)
            bits =
                bits << 8 | (place < group.size() ? static_cast<unsigned char>(group[place]) : 0U);
        for (std::size_t place = 0; place < 4; ++place)
            text += place <= group.size() ? digits[bits >> (18 - 6 * place) & 0x3F] : '=';
    }
    return text;
}

} // namespace

std::string iconURI(const std::string& deviceRoot, const std::string& bundle) {
    if (deviceRoot.empty() || bundle.find('\0') != std::string::npos)
        return {};
    const std::filesystem::path folder =
        std::filesystem::path(deviceRoot) / std::filesystem::path(bundle).relative_path();
    for (const std::string& name : candidates(folder)) {
        const std::string bytes = contents(folder / name);
        if (const auto type = mediaType(bytes); !type.empty())
            return "data:" + std::string(type) + ";base64," + base64(bytes);
    }
    return {};
}

} // namespace simulator
