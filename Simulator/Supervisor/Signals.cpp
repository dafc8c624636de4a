#include "Simulator/Supervisor/Signals.h"

#include <cerrno>
#include <csignal>
#include <system_error>

#include <sys/signalfd.h>
#include <unistd.h>

namespace simulator {

Signals::Signals(const std::vector<int>& signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals)
        sigaddset(&set, signal);
    sigprocmask(SIG_BLOCK, &set, nullptr);
    descriptor_ = platform::FileDescriptor(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!descriptor_.isOpen())
        throw std::system_error(errno, std::generic_category(), "signals");
}

std::optional<int> Signals::take() const {
    signalfd_siginfo info{};
    if (read(descriptor_.get(), &info, sizeof info) != sizeof info)
        return std::nullopt;
    return static_cast<int>(info.ssi_signo);
}

} // namespace simulator
