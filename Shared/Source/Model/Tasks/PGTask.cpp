#include "Shared/Source/Model/Tasks/PGTask.h"

#include <cerrno>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Environment.h"
#include "Platform/Exceptions.h"
#include "Platform/Notifications.h"
#include "Platform/System.h"
#include "Platform/Text.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace purgo {

extern "C" {
constinit const std::intptr_t PGTaskError = INTPTR_MIN;
constinit const char* const PGTaskDidTerminateNotification = "PGTaskDidTerminateNotification";
}

namespace {

constexpr const char* nullDevice = "/dev/null";

/// A text as a C string holds it.
std::string upToFirstNUL(const std::string& text) {
    return text.substr(0, text.find('\0'));
}

/// The last component of a path: separators behind it do not count, and the root's is the root.
std::string lastPathComponent(const std::string& path) {
    const auto last = path.find_last_not_of('/');
    if (last == std::string::npos)
        return "/";
    const auto separator = path.find_last_of('/', last);
    return path.substr(separator + 1, last - separator);
}

std::vector<std::string> argumentVector(const std::string& launchPath,
                                        const std::vector<std::string>& arguments) {
    std::vector<std::string> argv{lastPathComponent(upToFirstNUL(launchPath))};
    argv.reserve(arguments.size() + 1);
    for (const auto& argument : arguments)
        argv.push_back(upToFirstNUL(argument));
    return argv;
}

std::string messageForCode(std::intptr_t code) {
    switch (code) {
    case PGTaskErrorWaitpid:
        return "Error during waitpid.";
    case PGTaskErrorSignaled:
        return "Task exited after being signaled.";
    case PGTaskErrorReadOutput:
        return "Error while reading the task output.";
    default:
        return "Unknown error: " + std::to_string(code);
    }
}

} // namespace

std::shared_ptr<PGTask> PGTask::make(const std::string& launchPath,
                                     const std::vector<std::string>& arguments) {
    if (launchPath.empty() || launchPath.front() != '/') {
        throw platform::Exception(platform::NSInvalidArgumentException,
                                  "[PGTask: invalid launch path]");
    }
    return std::shared_ptr<PGTask>(new PGTask(launchPath, arguments));
}

PGTask::PGTask(const std::string& launchPath, const std::vector<std::string>& arguments)
    : argv_(argumentVector(launchPath, arguments)), launchPath_(upToFirstNUL(launchPath)) {}

bool PGTask::launchSynchronously() {
    return launch() && getOutput() && waitAndGetExitStatus();
}

bool PGTask::launchAsynchronously() {
    if (!launch())
        return false;
    platform::asyncOnHighPriorityQueue([task = shared_from_this()] {
        if (task->getOutput())
            task->waitAndGetExitStatus();
    });
    return true;
}

bool PGTask::launch() {
    if (launched_) {
        throw platform::Exception(platform::NSInvalidArgumentException,
                                  "[PGTask: attempted to launch or modify instance after launch]");
    }
    int failure = configureStreams();
    if (failure == 0)
        failure = spawn();
    if (failure != 0) {
        terminatedWithStatus(failure, true, "-[PGTask launch]");
        return false;
    }
    // While this process can write too, reading would never come to an end.
    if (pipe_)
        pipe_->writeEnd.close();
    launched_ = true;
    return true;
}

/// Prepares what the streams ask for. Returns the number of the error that is in the way, if any:
/// without a pipe the launch has failed like one without a program.
int PGTask::configureStreams() {
    fileActions_.reset();
    pipe_.reset();
    if (stdErrAction_ == PGTaskStreamActionInherit && stdOutAction_ == PGTaskStreamActionInherit)
        return 0;
    fileActions_.emplace();
    const bool capturesOut = stdOutAction_ == PGTaskStreamActionCapture;
    const bool capturesErr = stdErrAction_ == PGTaskStreamActionCapture;
    if (capturesOut || capturesErr) {
        pipe_ = platform::makePipe();
        if (!pipe_)
            return errno;
        if (capturesOut)
            fileActions_->duplicate(pipe_->writeEnd.get(), STDOUT_FILENO);
        if (capturesErr)
            fileActions_->duplicate(pipe_->writeEnd.get(), STDERR_FILENO);
        fileActions_->close(pipe_->readEnd.get());
        fileActions_->close(pipe_->writeEnd.get());
    }
    if (stdOutAction_ == PGTaskStreamActionDiscard)
        fileActions_->reopenForWriting(STDOUT_FILENO, platform::rootedPath(nullDevice));
    if (stdErrAction_ == PGTaskStreamActionDiscard)
        fileActions_->reopenForWriting(STDERR_FILENO, platform::rootedPath(nullDevice));
    return fileActions_->failure();
}

int PGTask::spawn() {
    std::vector<char*> argv;
    argv.reserve(argv_.size() + 1);
    for (const auto& argument : argv_)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    return posix_spawn(&pid_, platform::rootedPath(launchPath_).c_str(),
                       fileActions_ ? fileActions_->get() : nullptr, nullptr, argv.data(),
                       platform::environment());
}

bool PGTask::getOutput() {
    if (!pipe_)
        return true;
    OutputBuffer output;
    const auto failure = output.readToEnd(pipe_->readEnd.get());
    if (failure) {
        terminatedWithStatus(PGTaskErrorReadOutput, true,
                             "-[PGTask getOutput] [" + failure->name +
                                 " Reason: " + failure->reason + "]");
    } else {
        // Nobody can write any more. After a failure somebody may, and must not be ended for it.
        pipe_.reset();
    }
    setOutput(std::move(output));
    return !failure;
}

bool PGTask::waitAndGetExitStatus() {
    int status = 0;
    std::intptr_t code = 0;
    if (waitpid(pid_, &status, 0) < 0)
        code = PGTaskErrorWaitpid;
    else if (!WIFEXITED(status))
        code = PGTaskErrorSignaled;
    if (code != 0) {
        terminatedWithStatus(code, true, "-[PGTask waitAndGetExitStatus]");
        return false;
    }
    terminatedWithStatus(WEXITSTATUS(status), false, "");
    return true;
}

void PGTask::terminatedWithStatus(std::intptr_t status, bool error,
                                  const std::string& additionalInfo) {
    if (error) {
        const auto prefix = additionalInfo.empty() ? additionalInfo : additionalInfo + " ";
        const std::lock_guard lock(mutex_);
        error_ = PGTaskErrorInfo{PGTaskErrorDomain, status, prefix + messageForCode(status)};
    }
    terminationStatus_ = error ? PGTaskError : status;
    terminated_ = true;
    platform::asyncOnMainQueue([task = shared_from_this()] {
        platform::NotificationCenter::defaultCenter().post(PGTaskDidTerminateNotification, task);
    });
}

std::optional<std::string_view> PGTask::output() const {
    const std::lock_guard lock(mutex_);
    return output_ ? std::optional(output_->bytes()) : std::nullopt;
}

void PGTask::setOutput(OutputBuffer output) {
    if (!platform::isValidUTF8(output.bytes()))
        return;
    const std::lock_guard lock(mutex_);
    output_ = std::move(output);
}

std::optional<PGTaskErrorInfo> PGTask::error() const {
    const std::lock_guard lock(mutex_);
    return error_;
}

} // namespace purgo
