// Compares a task that captures its child's output with the least that anybody could do: reading
// the same child's output with plain read(2), once into one small buffer that is used again and
// again, and once into a fresh block that is large enough, which costs the memory's pages too.
//
//   task-output CHILD MEBIBYTES

#include "Shared/Source/Model/Tasks/PGTask.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "Platform/Environment.h"
#include "Platform/Linux/Device.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double secondsFor(const std::function<void()>& work) {
    double best = std::numeric_limits<double>::infinity();
    for (int round = 0; round < 5; ++round) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        best = std::min(best, taken.count());
    }
    return best;
}

/// Runs the child and gives the descriptor of its output to `reading`.
void runPlainly(std::vector<std::string> command, const std::function<void(int)>& reading) {
    auto pipe = platform::makePipe();
    if (!pipe)
        std::abort();
    purgo::FileActions actions;
    actions.duplicate(pipe->writeEnd.get(), STDOUT_FILENO);
    std::vector<char*> argv;
    for (auto& argument : command)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, argv[0], actions.get(), nullptr, argv.data(),
                    platform::environment()) != 0)
        std::abort();
    pipe->writeEnd.close();
    reading(pipe->readEnd.get());
    waitpid(child, nullptr, 0);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const std::string child = argv[1];
    const std::size_t size = std::stoul(argv[2]) * 1024 * 1024;
    const std::vector<std::string> arguments = {"--write", std::to_string(size)};
    const std::vector<std::string> command = {child, arguments[0], arguments[1]};
    constexpr std::size_t chunk = std::size_t{1024} * 1024;

    std::vector<char> small(chunk);
    const double again = secondsFor([&] {
        runPlainly(command, [&](int output) {
            while (read(output, small.data(), small.size()) > 0)
                continue;
        });
    });
    const double fresh = secondsFor([&] {
        runPlainly(command, [&](int output) {
            char* const block = static_cast<char*>(std::malloc(size + chunk));
            ssize_t count = 0;
            for (char* end = block; (count = read(output, end, chunk)) > 0; end += count)
                continue;
            std::free(block);
        });
    });
    const double captured = secondsFor([&] {
        const auto task = purgo::PGTask::make(child, arguments);
        task->setStdOutAction(purgo::PGTaskStreamActionCapture);
        if (!task->launchSynchronously())
            std::abort();
        // Nobody runs the main loop here, so the task and its output would stay.
        platform::Device::start({});
    });
    std::printf("plain, one small buffer  %8.3f s\nplain, a fresh block     %8.3f s\n"
                "captured                 %8.3f s, %.2f and %.2f times as long\n",
                again, fresh, captured, captured / again, captured / fresh);
}
