#pragma once

#include "Platform/Object.h"
#include "Platform/Pipes.h"
#include "Shared/Source/Model/Tasks/FileActions.h"
#include "Shared/Source/Model/Tasks/OutputBuffer.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace purgo {

extern "C" {

/// The least value of its type. Stands for "no status" and "no process", and is the number from
/// which a task's own error codes are counted.
[[gnu::visibility("default")]] extern const std::intptr_t PGTaskError;

/// The name of the notification that a run has ended.
[[gnu::visibility("default")]] extern const char* const PGTaskDidTerminateNotification;
}

inline constexpr const char* PGTaskErrorDomain = "com.delvarin.PGTask";

inline constexpr std::intptr_t PGTaskErrorReadOutput = INTPTR_MIN + 1;
inline constexpr std::intptr_t PGTaskErrorSignaled = INTPTR_MIN + 2;
inline constexpr std::intptr_t PGTaskErrorWaitpid = INTPTR_MIN + 3;

/// What becomes of a stream of the child. Any other value does the same as the first.
inline constexpr std::intptr_t PGTaskStreamActionInherit = 0;
inline constexpr std::intptr_t PGTaskStreamActionCapture = 1;
inline constexpr std::intptr_t PGTaskStreamActionDiscard = 2;

/// Why a run failed. The code is one of the three above, or the error number of the launch.
struct PGTaskErrorInfo {
    std::string domain;
    std::intptr_t code;
    std::string localizedDescription;
};

/// A child process: created, configured, launched once, then only read.
///
/// However the run ends, `PGTaskDidTerminateNotification` is posted once with the task as its
/// object. A child that ends with another exit code than 0 has not failed.
///
/// States:     created -> running -> exited or failed. A launch that fails is not running and not
///             launched, but terminated; it may be tried again, and leaves its error and
///             `isTerminated()` behind.
/// Ownership:  shared; the worker and the pending notification keep a launched task alive. One
///             that goes before its child neither waits for it nor signals it.
/// Threads:    configure and launch on one thread, any; the getters on any. The notification is
///             posted on the main thread, on a later turn of its loop than the launch.
/// Errors:     a relative launch path and a second launch throw `NSInvalidArgumentException`;
///             everything else is `error()`.
class PGTask final : public platform::Object, public std::enable_shared_from_this<PGTask> {
public:
    /// A task for an executable at an absolute path of the device. Texts end at their first NUL
    /// character, as the child gets them.
    static std::shared_ptr<PGTask> make(const std::string& launchPath,
                                        const std::vector<std::string>& arguments = {});

    /// Runs the child to its end on this thread, which waits for it.
    ///
    /// True means that the child ended by itself, with any exit code, and that its output could be
    /// read.
    bool launchSynchronously();

    /// Starts the child and leaves reading and waiting to a worker.
    ///
    /// True means that the child was started, not that it did its work.
    bool launchAsynchronously();

    std::string launchPath() const { return launchPath_; }
    std::vector<std::string> arguments() const { return {argv_.begin() + 1, argv_.end()}; }

    /// The child's process id while it is running, otherwise `PGTaskError`.
    std::intptr_t processIdentifier() const { return isRunning() ? pid_ : PGTaskError; }
    bool isLaunched() const { return launched_; }
    bool isTerminated() const { return terminated_; }
    bool isRunning() const { return launched_ && !terminated_; }

    /// The child's exit code, 0 to 255, once it has exited, otherwise `PGTaskError`.
    std::intptr_t terminationStatus() const {
        return terminated_ ? terminationStatus_.load() : PGTaskError;
    }

    /// What the child wrote to its captured streams, in the order of its writing. Missing until all
    /// of it has been read, when no stream was captured, and when it is not valid UTF-8; empty when
    /// it could not be read, though in an asynchronous run not until after `isTerminated()`.
    ///
    /// Ownership: the text is good as long as the task.
    std::optional<std::string_view> output() const;

    std::optional<PGTaskErrorInfo> error() const;

    /// What becomes of the child's standard streams. Counts at the launch.
    std::intptr_t stdErrAction() const { return stdErrAction_; }
    void setStdErrAction(std::intptr_t action) { stdErrAction_ = action; }
    std::intptr_t stdOutAction() const { return stdOutAction_; }
    void setStdOutAction(std::intptr_t action) { stdOutAction_ = action; }

private:
    PGTask(const std::string& launchPath, const std::vector<std::string>& arguments);

    bool launch();
    int configureStreams();
    bool getOutput();
    bool waitAndGetExitStatus();
    void terminatedWithStatus(std::intptr_t status, bool error, const std::string& additionalInfo);

    void setOutput(OutputBuffer output);
    int spawn();

    const std::vector<std::string> argv_;
    std::optional<FileActions> fileActions_;
    const std::string launchPath_;
    pid_t pid_ = 0;
    std::optional<platform::Pipe> pipe_;
    std::atomic<bool> launched_ = false;
    std::atomic<bool> terminated_ = false;
    mutable std::mutex mutex_; // guards error_ and output_
    std::optional<PGTaskErrorInfo> error_;
    std::optional<OutputBuffer> output_;
    std::intptr_t stdErrAction_ = PGTaskStreamActionInherit;
    std::intptr_t stdOutAction_ = PGTaskStreamActionInherit;
    std::atomic<std::intptr_t> terminationStatus_ = INTPTR_MIN;
};

} // namespace purgo
