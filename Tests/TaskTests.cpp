#include "Shared/Source/Model/Tasks/PGTask.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>
#include <thread>

#include "Platform/Exceptions.h"
#include "Tests/Programs/Pattern.h"
#include "Tests/Support/Emulation.h"
#include "Tests/Support/TestDevice.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace purgo;

std::shared_ptr<PGTask> childThat(const std::vector<std::string>& does,
                                  std::intptr_t stdOutAction = PGTaskStreamActionCapture,
                                  std::intptr_t stdErrAction = PGTaskStreamActionInherit) {
    auto task = PGTask::make(PURGO_TEST_CHILD, does);
    task->setStdOutAction(stdOutAction);
    task->setStdErrAction(stdErrAction);
    return task;
}

/// The descriptors that are open in this process, or only those that a child gets.
std::set<int> openDescriptors(bool onlyInherited = false) {
    std::set<int> open;
    for (int descriptor = 0; descriptor < 256; ++descriptor) {
        const int flags = fcntl(descriptor, F_GETFD);
        if (flags >= 0 && !(onlyInherited && (flags & FD_CLOEXEC) != 0))
            open.insert(descriptor);
    }
    return open;
}

/// As the child lists them.
std::string listed(const std::set<int>& descriptors) {
    std::string list;
    for (const int descriptor : descriptors)
        list += std::to_string(descriptor) + " ";
    return list;
}

std::ptrdiff_t threadCount() {
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return std::distance(begin(threads), end(threads));
}

bool hasNoChildren() {
    return waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD;
}

std::string contentsOf(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Holds up a child that waits for it, until it is opened.
class Gate {
public:
    explicit Gate(std::string path) : path_(std::move(path)) {
        mkfifo(path_.c_str(), 0600);
        pipe_ = platform::FileDescriptor(::open(path_.c_str(), O_RDWR | O_CLOEXEC));
    }
    const std::string& path() const { return path_; }
    void open() { ASSERT_EQ(write(pipe_.get(), "\n", 1), 1); }

private:
    std::string path_;
    platform::FileDescriptor pipe_;
};

/// Has a standard stream of this process in a file for a while; closed when there is no file.
class ReplacedStream {
public:
    explicit ReplacedStream(int stream, const std::string& path = "")
        : stream_(stream), saved_(fcntl(stream, F_DUPFD_CLOEXEC, 100)) {
        close(stream);
        const int file = creat(path.c_str(), 0600);
        if (file >= 0 && file != stream) {
            dup2(file, stream);
            close(file);
        }
    }
    ~ReplacedStream() { dup2(saved_.get(), stream_); }

private:
    int stream_;
    platform::FileDescriptor saved_;
};

/// Counts the notifications of a task's end, and does not keep the task.
class EndCounter {
public:
    explicit EndCounter(const PGTask& task) : task_(&task) {
        center().addObserver(
            this, [this](const auto&) { count(); }, PGTaskDidTerminateNotification, task_);
    }
    ~EndCounter() { center().removeObserver(this, PGTaskDidTerminateNotification, task_); }

    int value() const { return count_; }

private:
    static platform::NotificationCenter& center() {
        return platform::NotificationCenter::defaultCenter();
    }
    void count() {
        EXPECT_EQ(std::this_thread::get_id(), thread_);
        EXPECT_TRUE(task_->isTerminated());
        ++count_;
    }

    const PGTask* task_;
    const std::thread::id thread_ = std::this_thread::get_id();
    int count_ = 0;
};

void expectRefusal(const std::function<void()>& call, const std::string& reason) {
    try {
        call();
        ADD_FAILURE() << "not refused";
    } catch (const platform::Exception& exception) {
        EXPECT_EQ(exception.name(), "NSInvalidArgumentException");
        EXPECT_EQ(exception.reason(), reason);
    }
}

void expectFailure(const PGTask& task, std::intptr_t code, const std::string& description) {
    EXPECT_TRUE(task.isTerminated());
    EXPECT_FALSE(task.isRunning());
    EXPECT_EQ(task.terminationStatus(), PGTaskError);
    EXPECT_EQ(task.processIdentifier(), PGTaskError);
    ASSERT_TRUE(task.error());
    EXPECT_EQ(task.error()->domain, "com.delvarin.PGTask");
    EXPECT_EQ(task.error()->code, code);
    EXPECT_EQ(task.error()->localizedDescription, description);
}

class Task : public testing::Test {
protected:
    ~Task() override { EXPECT_TRUE(hasNoChildren()); }

    std::string file(const std::string& name) const { return device_.files().at(name); }
    bool runUntil(const std::function<bool()>& condition) const {
        return device_.device().mainLoop().runUntil(condition, std::chrono::seconds(60));
    }
    void finish() const { EXPECT_TRUE(device_.settle()); }

    const tests::TestDevice device_;
};

TEST_F(Task, ARelativeLaunchPathAndASecondLaunchAreRefused) {
    for (const auto* path : {"", "bin/true"})
        expectRefusal([path] { PGTask::make(path); }, "[PGTask: invalid launch path]");

    const auto task = childThat({});
    ASSERT_TRUE(task->launchSynchronously());
    const std::string reason = "[PGTask: attempted to launch or modify instance after launch]";
    expectRefusal([&task] { task->launchSynchronously(); }, reason);
    expectRefusal([&task] { task->launchAsynchronously(); }, reason);
}

TEST_F(Task, TheChildGetsItsNameItsArgumentsAndTheEnvironment) {
    setenv("TASK_TESTS", "inherited", 1);
    const std::vector<std::string> arguments = {
        "--name", "--print", " a b=\u00E9\"", "--print", "", "--environment", "TASK_TESTS"};
    const auto task = childThat(arguments);
    EXPECT_TRUE(task->launchSynchronously());
    EXPECT_EQ(task->output(), "purgo-test-child a b=\u00E9\"inherited");
    EXPECT_EQ(task->arguments(), arguments);
    EXPECT_EQ(task->launchPath(), PURGO_TEST_CHILD);
    EXPECT_TRUE(PGTask::make("/")->arguments().empty());
}

TEST_F(Task, AnyExitCodeIsASuccessAndASignalIsNone) {
    for (const int code : {0, 3, 255}) {
        const auto task = childThat({"--exit", std::to_string(code)});
        EXPECT_TRUE(task->launchSynchronously());
        EXPECT_EQ(task->terminationStatus(), code);
        EXPECT_FALSE(task->error());
    }
    const auto task = childThat({"--print", "last words", "--signal", "9"});
    EndCounter ends(*task);
    EXPECT_FALSE(task->launchSynchronously());
    expectFailure(*task, PGTaskError + 2,
                  "-[PGTask waitAndGetExitStatus] Task exited after being signaled.");
    EXPECT_EQ(task->output(), "last words");
    EXPECT_EQ(ends.value(), 0);
    finish();
    EXPECT_EQ(ends.value(), 1);
}

TEST_F(Task, AChildThatSomebodyElseReapedCannotBeWaitedFor) {
    std::signal(SIGCHLD, SIG_IGN);
    const auto task = childThat({});
    EXPECT_FALSE(task->launchSynchronously());
    std::signal(SIGCHLD, SIG_DFL);
    expectFailure(*task, PGTaskError + 3, "-[PGTask waitAndGetExitStatus] Error during waitpid.");
}

TEST_F(Task, AFailedLaunchIsAnnouncedAndCanBeTriedAgain) {
    if (!tests::reportsFailedLaunches())
        GTEST_SKIP() << "the emulation does not report a failed launch to the parent";
    const auto task = PGTask::make("/no/such/program", {"--print", "here now"});
    task->setStdOutAction(PGTaskStreamActionCapture);
    EndCounter ends(*task);
    EXPECT_FALSE(task->launchAsynchronously());
    EXPECT_FALSE(task->isLaunched());
    expectFailure(*task, 2, "-[PGTask launch] Unknown error: 2");
    EXPECT_EQ(ends.value(), 0);
    finish();
    EXPECT_EQ(ends.value(), 1);

    const auto descriptors = openDescriptors();
    EXPECT_FALSE(task->launchSynchronously());
    EXPECT_EQ(openDescriptors(), descriptors);

    std::filesystem::create_directories(file("/no/such"));
    std::filesystem::create_symlink(PURGO_TEST_CHILD, file("/no/such/program"));
    EXPECT_TRUE(task->launchSynchronously());
    EXPECT_EQ(task->output(), "here now");
    EXPECT_EQ(task->terminationStatus(), 0);
    finish();
    EXPECT_EQ(ends.value(), 3);
}

TEST_F(Task, EachStreamGoesWhereItsActionSays) {
    struct Case {
        std::intptr_t stdOutAction, stdErrAction;
        std::optional<std::string_view> captured;
        std::string onStandardOutput, onStandardError;
    };
    const Case cases[] = {
        {0, 0, std::nullopt, "13", "24"}, {1, 0, "13", "", "24"}, {0, 1, "24", "13", ""},
        {1, 1, "1234", "", ""},           {1, 2, "13", "", ""},   {2, 1, "24", "", ""},
        {2, 2, std::nullopt, "", ""},     {0, 2, {}, "13", ""},   {7, -1, {}, "13", "24"},
        {1, 3, "13", "", "24"},           {-2, 2, {}, "13", ""},
    };
    for (const auto& [stdOutAction, stdErrAction, captured, standardOutput, standardError] :
         cases) {
        const auto task =
            childThat({"--print", "1", "--error", "2", "--print", "3", "--error", "4"},
                      stdOutAction, stdErrAction);
        {
            const ReplacedStream output(STDOUT_FILENO, file("output"));
            const ReplacedStream error(STDERR_FILENO, file("error"));
            task->launchSynchronously();
        }
        SCOPED_TRACE(std::to_string(stdOutAction) + " " + std::to_string(stdErrAction));
        EXPECT_EQ(task->terminationStatus(), 0);
        EXPECT_EQ(task->output(), captured);
        EXPECT_EQ(contentsOf(file("output")), standardOutput);
        EXPECT_EQ(contentsOf(file("error")), standardError);
    }

    device_.files().write("/dev/null", "");
    EXPECT_TRUE(childThat({"--error", "2"}, 0, PGTaskStreamActionDiscard)->launchSynchronously());
    EXPECT_EQ(contentsOf(file("/dev/null")), "2") << "the device has a null device of its own";
}

TEST_F(Task, OutputIsEmptyWithoutBytesAndMissingWhenItIsNotUTF8) {
    const auto silent = childThat({"--close-stdout"});
    EXPECT_TRUE(silent->launchSynchronously());
    EXPECT_EQ(silent->output(), "");

    const auto garbled = childThat({"--print", "language=\xFF"});
    EXPECT_TRUE(garbled->launchSynchronously());
    EXPECT_EQ(garbled->output(), std::nullopt);
    EXPECT_FALSE(garbled->error());
}

TEST_F(Task, LargeOutputArrivesWhole) {
    constexpr std::size_t size = std::size_t{64} * 1024 * 1024;
    const auto task = childThat({"--write", std::to_string(size)});
    EXPECT_TRUE(task->launchSynchronously());
    ASSERT_TRUE(task->output());
    ASSERT_EQ(task->output()->size(), size);
    const std::string period = patternPeriod();
    for (auto rest = *task->output(); !rest.empty();
         rest.remove_prefix(std::min(period.size(), rest.size())))
        ASSERT_TRUE(rest.substr(0, period.size()) ==
                    std::string_view(period).substr(0, rest.size()));
}

TEST_F(Task, ARunningTaskHasAProcessAndIsKeptUntilItsEndIsAnnounced) {
    Gate gate(file("gate"));
    auto task = childThat({"--print", "too early", "--wait-for", gate.path()});
    const std::weak_ptr<PGTask> observed = task;
    EndCounter ends(*task);
    EXPECT_EQ(task->processIdentifier(), PGTaskError);
    ASSERT_TRUE(task->launchAsynchronously());
    EXPECT_TRUE(task->isRunning());
    EXPECT_EQ(kill(static_cast<pid_t>(task->processIdentifier()), 0), 0);
    EXPECT_EQ(task->terminationStatus(), PGTaskError);
    EXPECT_EQ(task->output(), std::nullopt);
    EXPECT_FALSE(task->error());

    task.reset();
    EXPECT_TRUE(observed.lock());
    gate.open();
    finish();
    EXPECT_EQ(ends.value(), 1);
    EXPECT_FALSE(observed.lock());
}

TEST_F(Task, AnOutputThatCannotBeReadEndsTheRunWithoutWaiting) {
    Gate gate(file("gate"));
    const auto task = childThat({"--wait-for", gate.path(), "--print", "never read"});
    EndCounter ends(*task);
    const auto before = openDescriptors();
    ASSERT_TRUE(task->launchAsynchronously());
    const auto child = static_cast<pid_t>(task->processIdentifier());
    for (const int descriptor : openDescriptors()) {
        if (!before.contains(descriptor)) {
            // A folder can be opened, but not read.
            const platform::FileDescriptor unreadable(open("/", O_RDONLY | O_CLOEXEC));
            dup2(unreadable.get(), descriptor);
        }
    }
    gate.open();
    finish();
    EXPECT_EQ(ends.value(), 1);
    expectFailure(*task, PGTaskError + 1,
                  "-[PGTask getOutput] [NSFileHandleOperationException Reason: "
                  "*** -[NSConcreteFileHandle availableData]: Is a directory] "
                  "Error while reading the task output.");
    EXPECT_EQ(task->output(), "");
    EXPECT_EQ(waitpid(child, nullptr, 0), child);
}

TEST_F(Task, RunningTasksDoNotHoldEachOthersPipes) {
    const auto inherited = listed(openDescriptors(true));
    const auto failed = PGTask::make("/no/such/program");
    failed->setStdOutAction(PGTaskStreamActionCapture);
    ASSERT_NE(failed->launchSynchronously(), tests::reportsFailedLaunches());
    Gate firstGate(file("first"));
    Gate secondGate(file("second"));
    const auto first = childThat({"--wait-for", firstGate.path(), "--print", "1"});
    ASSERT_TRUE(first->launchAsynchronously());
    const auto second = childThat({"--descriptors", "--wait-for", secondGate.path()});
    ASSERT_TRUE(second->launchAsynchronously());

    firstGate.open();
    EXPECT_TRUE(runUntil([&first] { return first->isTerminated(); }));
    EXPECT_EQ(first->output(), "1");
    EXPECT_TRUE(second->isRunning());
    secondGate.open();
    EXPECT_TRUE(runUntil([&second] { return second->isTerminated(); }));
    EXPECT_EQ(second->output(), inherited);
}

TEST_F(Task, AProcessWithoutStandardStreamsCanCaptureAndDiscard) {
    const auto capturing = childThat({"--print", "1", "--error", "2", "--descriptors"},
                                     PGTaskStreamActionCapture, PGTaskStreamActionCapture);
    const auto discarding = childThat({"--print", "1", "--error", "2"}, PGTaskStreamActionDiscard,
                                      PGTaskStreamActionDiscard);
    {
        const ReplacedStream input(STDIN_FILENO);
        const ReplacedStream output(STDOUT_FILENO);
        const ReplacedStream error(STDERR_FILENO);
        capturing->launchSynchronously();
        discarding->launchSynchronously();
    }
    auto inherited = openDescriptors(true);
    inherited.erase(STDIN_FILENO);
    EXPECT_EQ(capturing->output(), "12" + listed(inherited));
    EXPECT_EQ(discarding->terminationStatus(), 0);
}

TEST_F(Task, AThousandRunsLeaveNothingBehind) {
    // A sanitizer has a thread of its own, from the first other one on.
    childThat({})->launchAsynchronously();
    finish();
    const auto descriptors = openDescriptors();
    const auto threads = threadCount();
    for (int run = 0; run < 1000; ++run) {
        const auto task = run % 5 == 4
                              ? PGTask::make("/no/such/program")
                              : childThat({"--print", "x", run % 5 ? "--exit" : "--signal", "9"});
        task->setStdOutAction(run % 3 == 0 ? PGTaskStreamActionDiscard : PGTaskStreamActionCapture);
        task->setStdErrAction(PGTaskStreamActionDiscard);
        run % 2 == 0 ? task->launchSynchronously() : task->launchAsynchronously();
    }
    const auto isQuiet = [threads] {
        return threadCount() <= threads && hasNoChildren();
    };
    EXPECT_TRUE(runUntil(isQuiet));
    finish();
    EXPECT_EQ(openDescriptors(), descriptors);
}

} // namespace
