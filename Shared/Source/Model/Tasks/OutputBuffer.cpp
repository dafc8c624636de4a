#include "Shared/Source/Model/Tasks/OutputBuffer.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <system_error>

#include <unistd.h>

namespace purgo {
namespace {

constexpr std::size_t initialCapacity = std::size_t{64} * 1024;

// There are systems that refuse a read of 2 GiB or more instead of reading less.
constexpr std::size_t largestRead = std::size_t{16} * 1024 * 1024;

} // namespace

std::optional<ReadFailure> OutputBuffer::readToEnd(int descriptor) {
    for (;;) {
        if (size_ == capacity_ && !grow()) {
            return fail("NSMallocException",
                        "*** -[NSConcreteMutableData appendBytes:length:]: unable to allocate "
                        "memory for more than " +
                            std::to_string(capacity_) + " bytes");
        }
        const std::size_t room = std::min(capacity_ - size_, largestRead);
        const ssize_t count = read(descriptor, bytes_.get() + size_, room);
        if (count == 0)
            break;
        if (count > 0) {
            size_ += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            return fail("NSFileHandleOperationException",
                        "*** -[NSConcreteFileHandle availableData]: " +
                            std::generic_category().message(errno));
        }
    }
    // One byte stays, for a size of 0 would free the block.
    resize(std::max<std::size_t>(size_, 1));
    return std::nullopt;
}

std::optional<ReadFailure> OutputBuffer::fail(const char* name, const std::string& reason) {
    *this = OutputBuffer();
    return ReadFailure{name, reason};
}

bool OutputBuffer::grow() {
    if (capacity_ == 0)
        return resize(initialCapacity);
    return capacity_ <= std::numeric_limits<std::size_t>::max() / 2 && resize(capacity_ * 2);
}

bool OutputBuffer::resize(std::size_t capacity) {
    void* const block = std::realloc(bytes_.get(), capacity);
    if (block == nullptr)
        return false;
    // The old block belongs to the new one already.
    static_cast<void>(bytes_.release());
    bytes_.reset(static_cast<char*>(block));
    capacity_ = capacity;
    return true;
}

} // namespace purgo
