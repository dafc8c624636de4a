#include "Simulator/Supervisor/LineInput.h"

#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace simulator {

bool LineInput::isReadable() const {
    pollfd polled{descriptor_.get(), POLLIN, 0};
    return poll(&polled, 1, 0) > 0;
}

std::optional<std::string> LineInput::takeLine() {
    while (!isAtEnd_ && isReadable()) {
        char character = 0;
        const ssize_t count = read(descriptor_.get(), &character, 1);
        const bool isEarly = count < 0 && (errno == EINTR || errno == EAGAIN);
        isAtEnd_ = count <= 0 && !isEarly;
        if (count > 0 && character == '\n')
            return std::exchange(line_, {});
        if (count > 0)
            line_ += character;
    }
    if (isAtEnd_ && !line_.empty())
        return std::exchange(line_, {});
    return std::nullopt;
}

} // namespace simulator
