#include "Simulator/Supervisor/Output.h"

#include <algorithm>
#include <cerrno>
#include <climits>

#include <poll.h>
#include <unistd.h>

namespace simulator {

bool Output::canWrite() const {
    pollfd polled[] = {{STDOUT_FILENO, POLLOUT, 0}, {interruption_, POLLIN, 0}};
    while (poll(polled, 2, -1) < 0)
        if (errno != EINTR)
            return false;
    return polled[1].revents == 0;
}

void Output::write(std::string_view text) {
    while (isIntact_ && !text.empty()) {
        // A pipe that can be written to takes this much without making the writer wait.
        const auto length = std::min<std::size_t>(text.size(), PIPE_BUF);
        const ssize_t written =
            canWrite() ? ::write(STDOUT_FILENO, text.data(), length) : ssize_t{-1};
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else
            isIntact_ = false;
    }
}

} // namespace simulator
