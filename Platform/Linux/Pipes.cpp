#include "Platform/Pipes.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr int firstAfterStandardStreams = 3;

/// The same open file under a descriptor that is none of the standard streams', or no descriptor
/// when there is none left.
FileDescriptor movedPastStandardStreams(FileDescriptor descriptor) {
    if (descriptor.get() >= firstAfterStandardStreams)
        return descriptor;
    return FileDescriptor(fcntl(descriptor.get(), F_DUPFD_CLOEXEC, firstAfterStandardStreams));
}

/// The size above which a pipe cannot be enlarged.
int pipeSizeLimit() {
    constexpr int usualLimit = 1024 * 1024;
    const FileDescriptor file(open("/proc/sys/fs/pipe-max-size", O_RDONLY | O_CLOEXEC));
    char digits[16] = {};
    if (!file.isOpen() || read(file.get(), digits, sizeof digits - 1) <= 0)
        return usualLimit;
    return static_cast<int>(std::strtol(digits, nullptr, 10));
}

/// Makes the pipe as large as this process may have it. The system refuses any enlargement once
/// the pipes of a user take up their share; then the pipe stays as it is.
void enlarge(const FileDescriptor& end) {
    constexpr int usualSize = 64 * 1024;
    for (int size = pipeSizeLimit(); size > usualSize; size /= 2)
        if (fcntl(end.get(), F_SETPIPE_SZ, size) >= 0)
            return;
}

} // namespace

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
        close();
        descriptor_ = std::exchange(other.descriptor_, -1);
    }
    return *this;
}

void FileDescriptor::close() {
    if (isOpen()) {
        const int reason = errno; // of a failure that the caller has still to report
        ::close(std::exchange(descriptor_, -1));
        errno = reason;
    }
}

std::optional<Pipe> makePipe() {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0)
        return std::nullopt;
    Pipe pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    pipe.readEnd = movedPastStandardStreams(std::move(pipe.readEnd));
    if (!pipe.readEnd.isOpen())
        return std::nullopt;
    pipe.writeEnd = movedPastStandardStreams(std::move(pipe.writeEnd));
    if (!pipe.writeEnd.isOpen())
        return std::nullopt;
    enlarge(pipe.writeEnd);
    return pipe;
}

} // namespace platform
