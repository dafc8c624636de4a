#include "Simulator/HomeScreen/HomeScreenMain.h"
#include "Simulator/Link/Messages.h"
#include "Simulator/Supervisor/Options.h"
#include "Simulator/Supervisor/Session.h"

#include <csignal>
#include <iostream>
#include <span>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace simulator {
namespace {

enum ExitStatus { failure = 1, unusableOptions = 2 };

/// Makes sure that no descriptor that is opened later becomes one of the standard ones.
void openStandardDescriptors() {
    int descriptor = 0;
    do
        descriptor = open("/dev/null", O_RDWR);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    close(descriptor);
}

/// The signals that end the simulator, without those that it was started to ignore.
Signals endingSignals() {
    std::vector<int> signals;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN)
            signals.push_back(signal);
    }
    return Signals(signals);
}

/// Dies of the signal that ended the simulator, so that whoever started it knows.
void endAsToldBy(int signal) {
    ::signal(signal, SIG_DFL);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signal);
    raise(signal);
    sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

int supervisorMain(std::span<char* const> arguments) {
    openStandardDescriptors();
    // A reader that goes away is noticed when writing fails; children are to leave their status.
    signal(SIGPIPE, SIG_IGN);
    signal(SIGCHLD, SIG_DFL);
    try {
        const auto options = Options::parse(arguments);
        if (options.help) {
            std::cout << usage << std::flush;
            return 0;
        }
        const auto ending = endingSignals();
        const int status = runSession(options, ending);
        if (const auto signal = ending.take())
            endAsToldBy(*signal);
        return status;
    } catch (const UsageError& error) {
        std::cerr << "purgo-simulator: " << error.what() << "\n(--help lists the options)\n";
        return unusableOptions;
    } catch (const std::exception& error) {
        std::cerr << "purgo-simulator: " << error.what() << '\n';
        return failure;
    }
}

} // namespace
} // namespace simulator

int main(int count, char** values) {
    const std::span<char* const> arguments(values + (count > 0), values + count);
    // Outside of every handler: an exception of a library is to end the home screen.
    if (const auto settings = simulator::HomeScreenSettings::fromArguments(arguments))
        return simulator::homeScreenMain(*settings);
    return simulator::supervisorMain(arguments);
}
