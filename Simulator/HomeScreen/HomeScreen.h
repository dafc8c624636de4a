#pragma once

#include "Simulator/HomeScreen/Reporter.h"
#include "Simulator/Link/LineChannel.h"
#include "Simulator/Link/Messages.h"

#include <chrono>
#include <string>

namespace simulator {

/// The home-screen process: it starts the device, opens the libraries that belong into it, and
/// carries out the supervisor's commands on the main loop, one at a time.
///
/// An exception of a library ends it, as it ends the phone's home screen.
///
/// Threads: main thread only.
class HomeScreen {
public:
    HomeScreen(HomeScreenSettings settings, platform::FileDescriptor link);

    /// Runs until the supervisor has no more commands.
    void run();

    Reporter& reporter() { return reporter_; }

    /// Tells the supervisor that the present command takes its time.
    void takeLonger(std::chrono::duration<double> time);

private:
    void startDevice();
    void openLibraries();
    void takeCommands();
    void carryOut(const std::string& line);

    HomeScreenSettings settings_;
    LineChannel channel_;
    Reporter reporter_;
    bool isCarryingOut_ = false;
    bool isEnding_ = false;
};

} // namespace simulator
