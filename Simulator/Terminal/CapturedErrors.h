#pragma once

#include "Platform/Pipes.h"

#include <deque>
#include <string>
#include <vector>

namespace simulator {

/// Catches what this process and its children write to standard error, so that it does not run
/// over what the terminal shows.
///
/// At its end standard error is what it was before, and the last lines are written there unless
/// they were dropped.
class CapturedErrors {
public:
    /// Catches nothing when standard error is no terminal: then it is in nobody's way.
    CapturedErrors();
    ~CapturedErrors();
    CapturedErrors(const CapturedErrors&) = delete;
    CapturedErrors& operator=(const CapturedErrors&) = delete;

    /// What becomes readable when there are lines; -1 when nothing is caught.
    int descriptor() const { return output_.get(); }

    /// The lines that have come. Does not wait.
    std::vector<std::string> takeLines();

    /// Forgets the lines, since somebody has seen them.
    void drop() { last_.clear(); }

private:
    platform::FileDescriptor before_;
    platform::FileDescriptor output_;
    std::string unfinished_;
    std::deque<std::string> last_;
};

} // namespace simulator
