#pragma once

#include "Platform/Pipes.h"
#include "Tests/Support/Emulation.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tests {

/// How a program ended and what it printed.
struct ProgramResult {
    /// -1 when a signal ended it.
    int exitStatus = -1;
    /// 0 when it ended by itself.
    int signal = 0;
    std::string output;
    std::string errors;
};

namespace detail {

inline std::string readToEnd(int descriptor, std::chrono::seconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    std::string text;
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd readable{descriptor, POLLIN, 0};
        if (left.count() <= 0 || poll(&readable, 1, static_cast<int>(left.count())) <= 0)
            throw std::runtime_error("a program did not end in time; it printed: " + text);
        std::array<char, 4096> bytes;
        const ssize_t count = read(descriptor, bytes.data(), bytes.size());
        if (count <= 0)
            return text;
        text.append(bytes.data(), static_cast<std::size_t>(count));
    }
}

// The environment of the tests, without what steers the programs of the simulator.
inline std::vector<std::string> environmentWith(const std::map<std::string, std::string>& more) {
    std::vector<std::string> environment;
    for (char** entry = environ; *entry; ++entry)
        if (!std::string_view(*entry).starts_with("PURGO_"))
            environment.emplace_back(*entry);
    for (const auto& [name, value] : more)
        environment.emplace_back(name).append("=").append(value);
    return environment;
}

inline std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace detail

/// Runs a command to its end and collects what it prints. Throws when it cannot be started, and
/// when it takes longer than a minute.
inline ProgramResult runCommand(std::vector<std::string> command,
                                const std::map<std::string, std::string>& environment = {}) {
    auto pipe = platform::makePipe();
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> errors(std::tmpfile(), std::fclose);
    if (!pipe || !errors)
        throw std::runtime_error("no pipe or file for the output of " + command.front());
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipe->writeEnd.get(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(errors.get()), STDERR_FILENO);
    std::vector<std::string> variables = detail::environmentWith(environment);
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, command.front().c_str(), &actions, nullptr,
                     detail::pointersTo(command).data(), detail::pointersTo(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error("cannot start " + command.front());
    pipe->writeEnd.close();

    ProgramResult result;
    int status = 0;
    try {
        result.output = detail::readToEnd(pipe->readEnd.get(), std::chrono::minutes(1));
    } catch (...) {
        kill(child, SIGKILL);
        waitpid(child, &status, 0);
        throw;
    }
    waitpid(child, &status, 0);
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    std::rewind(errors.get());
    for (int byte = std::fgetc(errors.get()); byte != EOF; byte = std::fgetc(errors.get()))
        result.errors += static_cast<char>(byte);
    return result;
}

/// Runs a program of the build in the same way.
inline ProgramResult runProgram(const std::string& path, const std::vector<std::string>& arguments,
                                const std::map<std::string, std::string>& environment = {}) {
    return runCommand(commandOf(path, arguments), environment);
}

} // namespace tests
