#pragma once

#include <optional>
#include <utility>

namespace platform {

/// Owns a file descriptor and closes it.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    ~FileDescriptor() { close(); }

    /// The descriptor, or -1 when there is none.
    int get() const { return descriptor_; }
    bool isOpen() const { return descriptor_ >= 0; }

    /// Closes the descriptor early; does nothing when there is none.
    void close();

private:
    int descriptor_ = -1;
};

/// A pipe between this process and a child.
struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

/// Makes a pipe that holds as much as the system allows.
///
/// Both ends are closed on exec, and neither is ever 0, 1 or 2, even in a process that has those
/// closed.
///
/// Threads:  any.
/// Errors:   nothing when the process or the system has no descriptors left; `errno` says why.
std::optional<Pipe> makePipe();

} // namespace platform
