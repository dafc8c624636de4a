#include "Simulator/Link/Messages.h"

#include <cstdint>
#include <string_view>

namespace simulator {

namespace {

using Json = nlohmann::ordered_json;
using platform::SystemVersion;

constexpr const char* homeScreenOption = "--home-screen";

std::chrono::nanoseconds nanoseconds(const Json& object, const char* member) {
    return std::chrono::nanoseconds(object.at(member).get<std::int64_t>());
}

} // namespace

std::vector<std::string> HomeScreenSettings::arguments() const {
    // The root stands alone, since a file name need not be UTF-8 as JSON is.
    return {homeScreenOption, device.root,
            jsonLine({{"system", device.systemVersion.text()},
                      {"idiom", static_cast<int>(device.idiom)},
                      {"clock", static_cast<int>(device.clock)},
                      {"startTime", device.startTime.count()},
                      {"unlocked", device.isUnlocked},
                      {"clockOrigin", clockOrigin.count()},
                      {"safeMode", isInSafeMode},
                      {"supervisor", supervisor}})};
}

std::optional<HomeScreenSettings>
HomeScreenSettings::fromArguments(std::span<char* const> arguments) {
    if (arguments.size() != 3 || std::string_view(arguments[0]) != homeScreenOption)
        return std::nullopt;
    const auto object = Json::parse(arguments[2]);
    HomeScreenSettings settings;
    auto& device = settings.device;
    device.root = arguments[1];
    device.systemVersion =
        SystemVersion::parse(object.at("system").get<std::string>()).value_or(device.systemVersion);
    device.idiom = static_cast<platform::UserInterfaceIdiom>(object.at("idiom").get<int>());
    device.clock = static_cast<platform::ClockKind>(object.at("clock").get<int>());
    device.startTime = nanoseconds(object, "startTime");
    device.isUnlocked = object.at("unlocked");
    settings.clockOrigin = nanoseconds(object, "clockOrigin");
    settings.isInSafeMode = object.at("safeMode");
    settings.supervisor = object.at("supervisor");
    return settings;
}

std::string Message::encoded() const {
    return jsonLine({{"kind", static_cast<int>(kind)}, {"now", now.count()}, {"content", content}});
}

std::optional<Message> Message::decode(const std::string& line) {
    auto object = Json::parse(line, nullptr, false);
    if (!object.is_object())
        return std::nullopt;
    return Message{static_cast<Kind>(object.at("kind").get<int>()), nanoseconds(object, "now"),
                   std::move(object.at("content"))};
}

} // namespace simulator
