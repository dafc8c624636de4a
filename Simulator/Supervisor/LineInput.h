#pragma once

#include "Platform/Pipes.h"

#include <optional>
#include <string>
#include <utility>

namespace simulator {

/// Lines of text from a file, a pipe or a terminal.
///
/// Nothing behind a line is read before it is asked for, so that whoever shares the input finds
/// the rest of it there.
class LineInput {
public:
    explicit LineInput(platform::FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

    int descriptor() const { return descriptor_.get(); }

    /// The next line without its end, or nothing while it has not arrived. Does not wait. The end
    /// of the input ends its last line too.
    std::optional<std::string> takeLine();

    /// Whether the input has come to its end.
    bool isAtEnd() const { return isAtEnd_; }

private:
    bool isReadable() const;

    platform::FileDescriptor descriptor_;
    std::string line_;
    bool isAtEnd_ = false;
};

} // namespace simulator
