#include "Simulator/HomeScreen/RequestActions.h"

#include "Simulator/HomeScreen/CommandActions.h"
#include "Simulator/HomeScreen/HomeScreen.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>

namespace simulator {

namespace {

using platform::Device;
using std::chrono::nanoseconds;

void list(HomeScreen& homeScreen) {
    homeScreen.reporter().reportAs(Message::Kind::listed);
    listSwitches(homeScreen, {});
    listListeners(homeScreen, {});
    homeScreen.reporter().reportAs(Message::Kind::event);
}

void step(nanoseconds limit, nanoseconds margin) {
    auto& mainLoop = Device::current().mainLoop();
    const auto deadline = mainLoop.nextDeadline();
    auto target = limit;
    if (deadline && *deadline <= limit)
        target = *deadline > limit - margin ? *deadline - nanoseconds(1) : *deadline;
    mainLoop.letPass(std::max(target - mainLoop.now(), nanoseconds::zero()));
}

void settleWithChildren(HomeScreen& homeScreen) {
    auto& mainLoop = Device::current().mainLoop();
    mainLoop.keepBackOtherThreads(false);
    settle(homeScreen, {});
    mainLoop.keepBackOtherThreads(true);
}

} // namespace

void carryOutRequest(HomeScreen& homeScreen, const std::string& line) {
    const auto request = Event::parse(line, nullptr, false);
    const auto number = [&request](const char* member) {
        return request.value(member, std::int64_t{0});
    };
    const auto name = request.is_object() ? request.value("request", "") : "";
    if (name == "list")
        list(homeScreen);
    else if (name == "step")
        step(nanoseconds(number("limit")), nanoseconds(number("margin")));
    else if (name == "keepBack")
        Device::current().mainLoop().keepBackOtherThreads(true);
    else if (name == "settle")
        settleWithChildren(homeScreen);
    else if (name == "signal")
        raise(static_cast<int>(number("signal")));
    else
        throw CommandFailure("there is no request " + line);
}

} // namespace simulator
