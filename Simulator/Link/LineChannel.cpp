#include "Simulator/Link/LineChannel.h"

#include <array>
#include <cerrno>

#include <sys/socket.h>

namespace simulator {

bool LineChannel::send(std::string line) {
    line += '\n';
    std::string_view rest = line;
    while (!rest.empty()) {
        const ssize_t sent = ::send(socket_.get(), rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR)
            return false;
        if (sent > 0)
            rest.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

LineChannel::Received LineChannel::receive() {
    received_.erase(0, taken_);
    searched_ -= taken_;
    taken_ = 0;
    std::array<char, 65536> buffer;
    const ssize_t count = recv(socket_.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count > 0)
        received_.append(buffer.data(), static_cast<std::size_t>(count));
    if (count > 0)
        return Received::something;
    const bool isEarly = count < 0 && (errno == EAGAIN || errno == EINTR);
    return isEarly ? Received::nothing : Received::end;
}

std::optional<std::string> LineChannel::takeLine() {
    const auto end = received_.find('\n', searched_);
    if (end == std::string::npos) {
        searched_ = received_.size();
        return std::nullopt;
    }
    auto line = received_.substr(taken_, end - taken_);
    taken_ = searched_ = end + 1;
    return line;
}

void LineChannel::finish() {
    shutdown(socket_.get(), SHUT_WR);
}

} // namespace simulator
