#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace tests {

/// The words to put before a program of the build, where it was built for another processor than
/// the machine's; none otherwise.
inline std::vector<std::string> emulator() {
    std::vector<std::string> words;
    std::istringstream text(PURGO_EMULATOR);
    for (std::string word; text >> word;)
        words.push_back(word);
    return words;
}

/// The words that run a program of the build.
inline std::vector<std::string> commandOf(const std::string& program,
                                          const std::vector<std::string>& arguments = {}) {
    auto words = emulator();
    words.push_back(program);
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

inline bool isEmulated() {
    return !emulator().empty();
}

/// Whether a launch that fails is known at once. Under emulation the child is a copy that cannot
/// tell its parent: there it has been started, and ends with the exit code 127.
inline bool reportsFailedLaunches() {
    return !isEmulated();
}

} // namespace tests
