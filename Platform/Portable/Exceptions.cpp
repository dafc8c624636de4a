#include "Platform/Exceptions.h"

#include <utility>

namespace platform {

Exception::Exception(std::string name, std::string reason)
    : name_(std::move(name)), reason_(std::move(reason)), what_(name_ + ": " + reason_) {}

// Out of line, so that the type has one home, which all loaded images agree on.
const char* Exception::what() const noexcept {
    return what_.c_str();
}

void handleFailureInMethod(const std::string& /*method*/, const void* /*object*/,
                           const std::string& /*file*/, int /*line*/,
                           const std::string& description) {
    throw Exception(NSInternalInconsistencyException, description);
}

} // namespace platform
