#include "Simulator/Supervisor/HomeScreenProcess.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>

namespace simulator {

namespace {

using platform::FileDescriptor;

void check(int error, const char* what) {
    if (error != 0)
        throw std::system_error(error, std::generic_category(), what);
}

/// What is done to the descriptors of the new process.
class FileActions {
public:
    explicit FileActions(int link) {
        check(posix_spawn_file_actions_init(&actions_), "file actions");
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        // Standard output is for events alone.
        posix_spawn_file_actions_adddup2(&actions_, STDERR_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, link, linkDescriptor);
    }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

/// Signals as a program expects them, whatever the supervisor does with its own.
class Attributes {
public:
    Attributes() {
        check(posix_spawnattr_init(&attributes_), "attributes");
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                                   POSIX_SPAWN_SETPGROUP);
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() { posix_spawnattr_destroy(&attributes_); }

    const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

struct Link {
    FileDescriptor supervisorEnd;
    FileDescriptor homeScreenEnd;
};

Link makeLink() {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        check(errno, "socket to the home screen");
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

/// This program. By its path where it still lies there, since a tool that runs it under watch may
/// itself be what the link stands for; by the link when it has been built anew meanwhile.
std::string ownProgram() {
    const std::filesystem::path link = "/proc/self/exe";
    std::error_code error;
    const auto path = std::filesystem::read_symlink(link, error);
    return !error && std::filesystem::exists(path, error) ? path : link;
}

/// The words that start this program once more; in a build for another processor the emulator's
/// come first, since the machine cannot run the program by itself.
std::vector<std::string> ownCommand() {
    std::vector<std::string> words;
    std::istringstream emulator(PURGO_EMULATOR);
    for (std::string word; emulator >> word;)
        words.push_back(word);
    words.push_back(ownProgram());
    return words;
}

pid_t spawnHomeScreen(const HomeScreenSettings& settings, int link) {
    auto command = ownCommand();
    const auto arguments = settings.arguments();
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(command.size() + 1);
    for (auto& word : command)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    const FileActions actions(link);
    const Attributes attributes;
    pid_t number = -1;
    check(posix_spawnp(&number, pointers.front(), actions.get(), attributes.get(), pointers.data(),
                       environ),
          "home screen");
    return number;
}

} // namespace

HomeScreenProcess::HomeScreenProcess(const HomeScreenSettings& settings)
    : channel_(FileDescriptor()) {
    auto link = makeLink();
    number_ = spawnHomeScreen(settings, link.homeScreenEnd.get());
    channel_ = LineChannel(std::move(link.supervisorEnd));
}

void HomeScreenProcess::kill() const {
    ::kill(number_, SIGKILL);
}

} // namespace simulator
