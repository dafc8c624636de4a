#pragma once

#include <string_view>

namespace simulator {

/// Standard output, written at once and in full, by a program that must end when it is told to
/// even though nobody reads what it writes.
class Output {
public:
    /// Writing is given up when `interruption` becomes readable.
    explicit Output(int interruption) : interruption_(interruption) {}

    /// Waits for a slow reader. Writes nothing more once it was given up or the reader is gone.
    void write(std::string_view text);

    /// Whether all that was to be written has been written.
    bool isIntact() const { return isIntact_; }

private:
    bool canWrite() const;

    int interruption_;
    bool isIntact_ = true;
};

} // namespace simulator
