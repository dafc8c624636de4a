#include "Simulator/HomeScreen/HomeScreen.h"

#include "Platform/Linux/Application.h"
#include "Simulator/HomeScreen/Commands.h"
#include "Simulator/HomeScreen/Libraries.h"
#include "Simulator/HomeScreen/RequestActions.h"
#include "Simulator/Link/Requests.h"

#include <iostream>
#include <memory>
#include <set>
#include <utility>

#include <dlfcn.h>
#include <unistd.h>

namespace simulator {

namespace {

using platform::ApplicationOperation;
using platform::Device;

std::set<ApplicationOperation> operationsOfHomeScreen(const platform::SystemVersion& version) {
    std::set operations{ApplicationOperation::applicationOpenURL};
    if (version >= platform::SystemVersion{4, 0})
        operations.insert(ApplicationOperation::isProtectedDataAvailable);
    return operations;
}

} // namespace

HomeScreen::HomeScreen(HomeScreenSettings settings, platform::FileDescriptor link)
    : settings_(std::move(settings)), channel_(std::move(link)), reporter_(channel_) {}

void HomeScreen::run() {
    startDevice();
    if (!settings_.isInSafeMode)
        openLibraries();
    auto& mainLoop = Device::current().mainLoop();
    mainLoop.drain();
    reporter_.send(Message::Kind::ready);
    mainLoop.watch(channel_.descriptor(), [this] { takeCommands(); });
    mainLoop.runUntil([this] { return isEnding_; });
    Device::current().setObserver(nullptr);
}

void HomeScreen::startDevice() {
    auto configuration = settings_.device;
    if (configuration.clock == platform::ClockKind::real)
        configuration.startTime =
            std::chrono::steady_clock::now().time_since_epoch() - settings_.clockOrigin;
    auto& device = Device::start(configuration);
    device.setObserver(&reporter_);
    const auto& version = configuration.systemVersion;
    device.classes().add("SpringBoard", std::make_shared<platform::SimulatedApplication>(
                                            operationsOfHomeScreen(version)));
    reporter_.report(eventName::homeScreenStarted,
                     {{"system", version.text()},
                      {"foundationVersion", version.foundationVersionNumber()},
                      {"safeMode", settings_.isInSafeMode}});
}

void HomeScreen::openLibraries() {
    for (const auto& path : librariesOfHomeScreen(settings_.device.root)) {
        // The handle is dropped on purpose: a library stays for the life of the process.
        if (dlopen(platform::rootedPath(path).c_str(), RTLD_LAZY))
            reporter_.report(eventName::libraryLoaded, {{"path", path}});
        else
            std::cerr << "purgo-simulator: " << dlerror() << std::endl;
    }
}

void HomeScreen::takeCommands() {
    if (channel_.receive() == LineChannel::Received::end) {
        // With something still running there is no orderly end.
        if (isCarryingOut_ || Device::current().workers().pendingCount() > 0)
            _exit(0);
        isEnding_ = true;
    }
    while (const auto line = channel_.takeLine())
        carryOut(*line);
}

void HomeScreen::carryOut(const std::string& line) {
    auto& device = Device::current();
    reporter_.send(Message::Kind::begun);
    isCarryingOut_ = true;
    try {
        if (isRequest(line)) {
            carryOutRequest(*this, line);
        } else {
            const auto call = parseCommand(line);
            if (!call.command->run)
                throw CommandFailure(line + " is nothing that a home screen can do");
            call.command->run(*this, call.arguments);
        }
        device.mainLoop().drain();
        reporter_.send(Message::Kind::done, device.isUnlocked());
    } catch (const CommandFailure& failure) {
        device.mainLoop().drain();
        reporter_.send(Message::Kind::failed, failure.what());
    }
    isCarryingOut_ = false;
}

void HomeScreen::takeLonger(std::chrono::duration<double> time) {
    reporter_.send(Message::Kind::busy, time.count());
}

} // namespace simulator
