#include "Simulator/Link/Event.h"

namespace simulator {

Event makeEvent(std::chrono::nanoseconds time, const char* name) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(time);
    return {{"time", static_cast<double>(milliseconds.count()) / 1000}, {"event", name}};
}

std::string jsonLine(const nlohmann::ordered_json& value) {
    return value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace simulator
