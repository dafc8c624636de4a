#pragma once

#include "Platform/Pipes.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// One end of the socket between the supervisor and the home screen, which carries lines of text.
class LineChannel {
public:
    explicit LineChannel(platform::FileDescriptor socket) : socket_(std::move(socket)) {}

    int descriptor() const { return socket_.get(); }

    /// Sends a line, waiting for the other side when it is slow to read. False when the other side
    /// is gone.
    bool send(std::string line);

    enum class Received { something, nothing, end };

    /// Takes in some of what has arrived, without waiting. The end comes when the other side is
    /// gone and all that it sent has been taken in.
    Received receive();

    /// The next complete line of what has been taken in, without its end.
    std::optional<std::string> takeLine();

    /// Tells the other side that nothing more comes.
    void finish();

private:
    platform::FileDescriptor socket_;
    std::string received_;
    std::size_t taken_ = 0;    // of received_, by lines that were handed out
    std::size_t searched_ = 0; // of received_, in vain for the end of a line
};

} // namespace simulator
