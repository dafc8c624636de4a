#include "Simulator/Terminal/CapturedErrors.h"

#include <array>
#include <iostream>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace simulator {

CapturedErrors::CapturedErrors() {
    auto pipe = isatty(STDERR_FILENO) ? platform::makePipe() : std::nullopt;
    if (!pipe)
        return;
    before_ = platform::FileDescriptor(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0));
    fcntl(pipe->readEnd.get(), F_SETFL, O_NONBLOCK);
    dup2(pipe->writeEnd.get(), STDERR_FILENO);
    output_ = std::move(pipe->readEnd);
}

CapturedErrors::~CapturedErrors() {
    if (!before_.isOpen())
        return;
    dup2(before_.get(), STDERR_FILENO);
    takeLines();
    for (const auto& line : last_)
        std::cerr << line << '\n';
}

std::vector<std::string> CapturedErrors::takeLines() {
    constexpr std::size_t longestLine = 4096;
    constexpr std::size_t mostLines = 20;
    std::vector<std::string> lines;
    std::array<char, 4096> buffer;
    ssize_t count = 0;
    while (output_.isOpen() && (count = read(output_.get(), buffer.data(), buffer.size())) > 0)
        for (const char character :
             std::string_view(buffer.data(), static_cast<std::size_t>(count)))
            if (character == '\n' || unfinished_.size() == longestLine)
                lines.push_back(std::exchange(unfinished_, {}));
            else
                unfinished_ += character;
    last_.insert(last_.end(), lines.begin(), lines.end());
    while (last_.size() > mostLines)
        last_.pop_front();
    return lines;
}

} // namespace simulator
