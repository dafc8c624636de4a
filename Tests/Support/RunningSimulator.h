#pragma once

#include "Tests/Support/RunProgram.h"
#include "Tests/Support/SimulatedPhone.h"

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tests {

/// A simulator that runs while the test types commands to it and watches its events.
///
/// Whatever waits for it throws after a minute.
class RunningSimulator {
public:
    RunningSimulator(const SimulatedPhone& phone, std::vector<std::string> options) {
        options.insert(options.begin(), {"--device", phone.files.path(), "--json"});
        auto command = commandOf(PURGO_SIMULATOR, options);
        auto input = makePipe();
        auto output = makePipe();
        auto errors = makePipe();
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input.readEnd.get(), STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output.writeEnd.get(), STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, errors.writeEnd.get(), STDERR_FILENO);
        const int error = posix_spawnp(&number_, command.front().c_str(), &actions, nullptr,
                                       detail::pointersTo(command).data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0)
            throw std::runtime_error("cannot start the simulator");
        input_ = std::move(input.writeEnd);
        output_ = std::move(output.readEnd);
        errors_ = std::move(errors.readEnd);
    }
    ~RunningSimulator() {
        if (number_ > 0) {
            kill(number_, SIGKILL);
            waitpid(number_, nullptr, 0);
        }
    }

    void type(std::string_view text) {
        if (write(input_.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            throw std::runtime_error("the simulator reads no more");
    }

    /// Reads events up to and with the next one of this name, and returns that one.
    nlohmann::ordered_json waitFor(const std::string& eventName) {
        for (;;) {
            auto event = nlohmann::ordered_json::parse(nextLine());
            if (event.at("event") == eventName)
                return event;
        }
    }

    void send(int signal) const { kill(number_, signal); }

    void stopReading() { output_.close(); }

    /// Makes the pipe for the output as small as can be, so that it is soon full.
    void narrowOutput() const { fcntl(output_.get(), F_SETPIPE_SZ, 4096); }

    /// Ends the input and waits until the simulator has ended, and every process that can still
    /// write to its standard error. Its output is read by `waitFor` only.
    ProgramResult end() {
        input_.close();
        ProgramResult result;
        result.errors = detail::readToEnd(errors_.get(), std::chrono::minutes(1));
        int status = 0;
        waitpid(std::exchange(number_, -1), &status, 0);
        result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
        return result;
    }

private:
    static platform::Pipe makePipe() {
        auto pipe = platform::makePipe();
        if (!pipe)
            throw std::runtime_error("no pipe");
        return std::move(*pipe);
    }

    std::string nextLine() {
        std::size_t end = 0;
        while ((end = unread_.find('\n')) == std::string::npos) {
            char bytes[4096];
            pollfd readable{output_.get(), POLLIN, 0};
            const ssize_t count =
                poll(&readable, 1, 60000) > 0 ? read(output_.get(), bytes, sizeof bytes) : 0;
            if (count <= 0)
                throw std::runtime_error("the event does not come; unread: " + unread_);
            unread_.append(bytes, static_cast<std::size_t>(count));
        }
        auto line = unread_.substr(0, end);
        unread_.erase(0, end + 1);
        return line;
    }

    pid_t number_ = -1;
    platform::FileDescriptor input_;
    platform::FileDescriptor output_;
    platform::FileDescriptor errors_;
    std::string unread_;
};

} // namespace tests
