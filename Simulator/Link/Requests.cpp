#include "Simulator/Link/Requests.h"

#include "Simulator/Link/Event.h"

namespace simulator {

std::string listingRequest() {
    return jsonLine({{"request", "list"}});
}

std::string stepRequest(std::chrono::nanoseconds limit, std::chrono::nanoseconds margin) {
    return jsonLine({{"request", "step"}, {"limit", limit.count()}, {"margin", margin.count()}});
}

std::string keepingBackRequest() {
    return jsonLine({{"request", "keepBack"}});
}

std::string settlingRequest() {
    return jsonLine({{"request", "settle"}});
}

std::string signalRequest(int signal) {
    return jsonLine({{"request", "signal"}, {"signal", signal}});
}

bool isRequest(const std::string& line) {
    return line.starts_with('{');
}

} // namespace simulator
