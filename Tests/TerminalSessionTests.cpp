#include "Platform/Pipes.h"
#include "Tests/Support/SimulatedPhone.h"

#include <cctype>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>

namespace {

/// A simulator at a terminal of its own. Whatever waits for it throws after a minute.
class Session {
public:
    explicit Session(const tests::SimulatedPhone& phone, const char* terminal = "xterm-256color",
                     unsigned short columns = 80) {
        winsize window{24, columns, 0, 0};
        int master = -1;
        int slave = -1;
        if (openpty(&master, &slave, nullptr, nullptr, &window) != 0)
            throw std::runtime_error("no terminal");
        terminal_ = platform::FileDescriptor(master);
        slave_ = platform::FileDescriptor(slave);
        tcgetattr(master, &before_);
        const auto device = phone.files.path().string();
        number_ = fork();
        if (number_ == 0) {
            login_tty(slave);
            setenv("TERM", terminal, 1);
            execl(PURGO_SIMULATOR, PURGO_SIMULATOR, "--device", device.c_str(), nullptr);
            _exit(127);
        }
    }
    ~Session() {
        if (number_ > 0) {
            kill(number_, SIGKILL);
            waitpid(number_, nullptr, 0);
        }
    }

    void type(std::string_view keys) const {
        EXPECT_EQ(write(terminal_.get(), keys.data(), keys.size()),
                  static_cast<ssize_t>(keys.size()));
    }

    /// Reads until the text has been shown, since the last time.
    void waitFor(const std::string& text) {
        while (output_.find(text, seen_) == std::string::npos)
            readMore();
        seen_ = output_.find(text, seen_) + text.size();
    }

    void send(int signal) const { kill(number_, signal); }

    void resize(unsigned short columns, unsigned short rows) const {
        winsize window{rows, columns, 0, 0};
        ioctl(terminal_.get(), TIOCSWINSZ, &window);
    }

    pid_t homeScreen() const {
        const auto number = std::to_string(number_);
        pid_t child = 0;
        std::ifstream("/proc/" + number + "/task/" + number + "/children") >> child;
        return child;
    }

    /// Waits for the end, and returns how the program ended as `wait` tells it.
    int end() {
        int status = 0;
        while (waitpid(number_, &status, WNOHANG) == 0)
            readMore(10);
        number_ = -1;
        while (readMore(0)) {
        }
        return status;
    }

    /// Whether the terminal is as it was: its modes, its normal contents, its cursor.
    bool isRestored() const {
        termios now{};
        tcgetattr(terminal_.get(), &now);
        const auto last = [this](const char* text) {
            return output_.rfind(text);
        };
        return now.c_lflag == before_.c_lflag && now.c_iflag == before_.c_iflag &&
               now.c_oflag == before_.c_oflag && last("\033[?1049l") != std::string::npos &&
               last("\033[?1049l") > last("\033[?1049h") &&
               last("\033[?25h") != std::string::npos &&
               (last("\033[?25l") == std::string::npos || last("\033[?25h") > last("\033[?25l")) &&
               last(";1000l") != std::string::npos && last(";1000l") > last(";1000h");
    }

    const std::string& output() const { return output_; }

private:
    bool readMore(int limit = 60000) {
        pollfd readable{terminal_.get(), POLLIN, 0};
        if (poll(&readable, 1, limit) <= 0) {
            if (limit == 60000)
                throw std::runtime_error("the terminal shows nothing more: " + output_);
            return false;
        }
        char bytes[4096];
        const ssize_t count = read(terminal_.get(), bytes, sizeof bytes);
        if (count > 0)
            output_.append(bytes, static_cast<std::size_t>(count));
        return count > 0;
    }

    platform::FileDescriptor terminal_;
    // Kept open, so that the terminal's modes can be asked for when the simulator has gone.
    platform::FileDescriptor slave_;
    termios before_{};
    pid_t number_ = -1;
    std::string output_;
    std::size_t seen_ = 0;
};

TEST(TerminalSession, SurvivesItsHomeScreenAndLeavesTheTerminalAsItWas) {
    const tests::SimulatedPhone phone;
    Session session(phone);
    session.waitFor("Gestures");
    const auto first = session.homeScreen();
    ASSERT_GT(first, 1);
    kill(first, SIGKILL);
    session.waitFor("went down");
    session.waitFor("Gestures");
    // A click on the first toggle.
    session.type("\033[<0;5;4M\033[<0;5;4m");
    session.waitFor("Now?");
    session.waitFor("In 9.");
    session.resize(60, 20);
    session.waitFor("too small");
    session.resize(100, 30);
    session.waitFor("Gestures");
    session.type("q");
    const int status = session.end();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << session.output();
    EXPECT_TRUE(session.isRestored());
}

TEST(TerminalSession, EverySignalThatEndsItLeavesTheTerminalAsItWas) {
    const tests::SimulatedPhone phone;
    // The home screen hangs in a cleanup's child that never ends, and it goes all the same.
    phone.hostCleans("exec sleep 1000");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        Session session(phone);
        session.waitFor("Gestures");
        session.type("\t\t\r");
        session.waitFor("Cleaning");
        if (signal == SIGINT)
            session.type("\x03");
        else
            session.send(signal);
        const int status = session.end();
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
        EXPECT_TRUE(session.isRestored());
    }
}

TEST(TerminalSession, ADeviceThatNeverStartsIsToldOnACleanTerminal) {
    const tests::SimulatedPhone phone;
    phone.files.writeScript(phone.application + "iOS6_Purgo", "kill -SEGV $PPID");
    Session crashing(phone);
    crashing.waitFor("safe mode");
    crashing.type("q");
    EXPECT_EQ(crashing.end(), 0);
    EXPECT_TRUE(crashing.isRestored());
}

TEST(TerminalSession, AnUnfitTerminalGetsThePrompt) {
    const tests::SimulatedPhone phone;
    for (auto [terminal, columns] : {std::pair{"dumb", 80}, {"", 80}, {"xterm", 60}}) {
        Session session(phone, terminal, static_cast<unsigned short>(columns));
        session.waitFor("so here is a prompt");
        session.type("quit\n");
        EXPECT_EQ(session.end(), 0) << session.output();
        EXPECT_EQ(session.output().find("\033[?1049h"), std::string::npos);
    }
}

} // namespace
