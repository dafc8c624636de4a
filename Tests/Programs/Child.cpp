// A child for tests. Does what its arguments say, one after the other:
//
//   --print TEXT         writes the text to standard output
//   --error TEXT         writes the text to standard error
//   --write N            writes N bytes of the pattern to standard output
//   --name               writes the name that it was called by
//   --environment NAME   writes the value of an environment variable
//   --descriptors        writes the numbers of the open descriptors, a space behind each
//   --wait-for PATH      waits for a byte in a named pipe
//   --close-stdout       closes standard output
//   --signal N           ends itself by a signal
//   --exit N             exits with a code

#include "Tests/Programs/Pattern.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace {

void writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0)
            std::_Exit(99);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void writePattern(std::size_t size) {
    const std::string period = patternPeriod();
    for (std::size_t written = 0; written < size; written += period.size())
        writeAll(STDOUT_FILENO, std::string_view(period).substr(0, size - written));
}

void writeDescriptors() {
    std::string descriptors;
    for (int descriptor = 0; descriptor < 256; ++descriptor)
        if (fcntl(descriptor, F_GETFD) >= 0)
            descriptors += std::to_string(descriptor) + " ";
    writeAll(STDOUT_FILENO, descriptors);
}

[[noreturn]] void endBySignal(int number) {
    std::signal(number, SIG_DFL);
    std::raise(number);
    std::_Exit(98);
}

/// Does what a mode that takes a value asks for.
bool runWithValue(std::string_view mode, const char* value) {
    if (mode == "--print")
        writeAll(STDOUT_FILENO, value);
    else if (mode == "--error")
        writeAll(STDERR_FILENO, value);
    else if (mode == "--write")
        writePattern(std::stoul(value));
    else if (mode == "--environment")
        writeAll(STDOUT_FILENO, std::getenv(value));
    else if (mode == "--wait-for")
        std::ifstream(value).get();
    else if (mode == "--signal")
        endBySignal(std::stoi(value));
    else if (mode == "--exit")
        std::_Exit(std::stoi(value));
    else
        return false;
    return true;
}

bool runAlone(std::string_view mode, const char* name) {
    if (mode == "--name")
        writeAll(STDOUT_FILENO, name);
    else if (mode == "--descriptors")
        writeDescriptors();
    else if (mode == "--close-stdout")
        close(STDOUT_FILENO);
    else
        return false;
    return true;
}

} // namespace

int main(int argc, char** argv) {
    for (int index = 1; index < argc; ++index) {
        if (runAlone(argv[index], argv[0]))
            continue;
        if (index + 1 == argc || !runWithValue(argv[index], argv[index + 1]))
            return 97;
        ++index;
    }
    return 0;
}
