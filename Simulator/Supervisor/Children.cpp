#include "Simulator/Supervisor/Children.h"

#include <charconv>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace simulator {

namespace {

/// The parent of a process, or 0 when it is gone.
pid_t parentOf(const std::string& processFolder) {
    std::ifstream file(processFolder + "/stat");
    const std::string content(std::istreambuf_iterator<char>(file), {});
    // "number (name) state parent …", in which the name may hold anything, brackets too.
    const auto nameEnd = content.rfind(") ");
    pid_t parent = 0;
    if (nameEnd != std::string::npos && nameEnd + 4 < content.size())
        std::from_chars(&content[nameEnd + 4], content.data() + content.size(), parent);
    return parent;
}

} // namespace

Children::Children() {
    prctl(PR_SET_CHILD_SUBREAPER, 1L);
    others_ = present();
}

std::set<pid_t> Children::present() const {
    std::set<pid_t> children;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const auto name = entry.path().filename().string();
        pid_t number = 0;
        std::from_chars(name.data(), name.data() + name.size(), number);
        if (number > 0 && parentOf(entry.path()) == getpid() && !others_.contains(number))
            children.insert(number);
    }
    return children;
}

void Children::end() const {
    // Each one that goes may leave further ones.
    for (auto children = present(); !children.empty(); children = present()) {
        for (const auto child : children)
            kill(child, SIGKILL);
        for (const auto child : children)
            waitpid(child, nullptr, 0);
    }
}

} // namespace simulator
