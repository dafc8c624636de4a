#pragma once

#include <exception>
#include <string>

namespace platform {

inline constexpr const char* NSInvalidArgumentException = "NSInvalidArgumentException";
inline constexpr const char* NSInternalInconsistencyException = "NSInternalInconsistencyException";

/// A programming error, as the system reports it: a name and a reason.
///
/// Nobody catches one. Uncaught it ends the process with SIGABRT, which the phone answers by
/// starting the home screen again in safe mode.
class Exception : public std::exception {
public:
    Exception(std::string name, std::string reason);

    const std::string& name() const { return name_; }
    const std::string& reason() const { return reason_; }

    /// Name and reason in one line, for the message of an uncaught exception.
    const char* what() const noexcept override;

private:
    std::string name_;
    std::string reason_;
    std::string what_;
};

/// Reports a failed precondition of an instance operation to the current assertion handler.
///
/// Threads:  any.
/// Errors:   always throws `NSInternalInconsistencyException` with the description as its reason.
[[noreturn]] void handleFailureInMethod(const std::string& method, const void* object,
                                        const std::string& file, int line,
                                        const std::string& description);

} // namespace platform
