#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace purgo {

/// Why reading came to nothing: the name and the reason of the exception that the system's file
/// handle raises in such a case.
struct ReadFailure {
    std::string name;
    std::string reason;
};

/// All that can be read from a descriptor, in one block.
///
/// The block doubles while it is being filled and is cut to its contents at the end. A large one is
/// moved by its pages, so that nothing is copied again, and the part that nothing has been read
/// into takes up addresses, but no memory.
class OutputBuffer {
public:
    /// Reads until the end of the file, waiting for more as long as it takes.
    ///
    /// Errors: the buffer is empty after a failure.
    std::optional<ReadFailure> readToEnd(int descriptor);

    std::string_view bytes() const { return {bytes_.get(), size_}; }

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    std::optional<ReadFailure> fail(const char* name, const std::string& reason);
    bool grow();
    bool resize(std::size_t capacity);

    std::unique_ptr<char[], Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace purgo
