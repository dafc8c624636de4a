#include "Simulator/Terminal/TerminalFrontEnd.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <utility>

#include <sys/timerfd.h>
#include <unistd.h>

namespace simulator {

namespace {

/// After that long a command counts as one that keeps the home screen busy.
constexpr std::chrono::milliseconds unnoticed{300};
constexpr long redrawInterval = 250'000'000; // nanoseconds

platform::FileDescriptor makeTimer() {
    platform::FileDescriptor timer(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK));
    if (!timer.isOpen())
        throw std::system_error(errno, std::generic_category(), "timer");
    return timer;
}

/// An event in words, without its time and what it is set in by.
std::string withoutTime(const std::string& words) {
    const auto begin = words.find("] ");
    std::string text;
    for (auto index = begin == std::string::npos ? 0 : begin + 2; index < words.size(); ++index) {
        text += words[index];
        if (words[index] == '\n')
            index = words.find_first_not_of(' ', index + 1) - 1;
        if (index == std::string::npos - 1)
            break;
    }
    if (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

std::string absolutePath(const std::string& name) {
    char folder[PATH_MAX];
    return getcwd(folder, sizeof folder) ? std::string(folder) + "/" + name : name;
}

} // namespace

std::unique_ptr<TerminalFrontEnd> TerminalFrontEnd::make(PhoneScreen& screen, DeviceTime time,
                                                         std::string& reason) {
    reason = TerminalScreen::obstacle();
    if (!reason.empty())
        return nullptr;
    return std::unique_ptr<TerminalFrontEnd>(new TerminalFrontEnd(screen, std::move(time)));
}

TerminalFrontEnd::TerminalFrontEnd(PhoneScreen& screen, DeviceTime time)
    : time_(std::move(time)), signals_({SIGWINCH, SIGTSTP, SIGCONT}), redraw_(makeTimer()),
      interface_(screen, [this] { return nextPicture(); }) {
    showSoon();
}

TerminalFrontEnd::~TerminalFrontEnd() {
    // Who quits has seen the errors in the log.
    if (interface_.wantsToQuit())
        errors_.drop();
}

std::optional<std::string> TerminalFrontEnd::nextCommand() {
    interface_.setTime(seconds(time_()));
    command_ = interface_.takeCommand();
    commandStart_ = Clock::now();
    if (command_)
        showSoon();
    return command_;
}

void TerminalFrontEnd::commandEnds() {
    command_.reset();
    showSoon();
}

void TerminalFrontEnd::commandDone() {
    constexpr std::string_view snapshot = "snapshot ";
    if (command_ && command_->starts_with(snapshot))
        log(LogEntry::Kind::note,
            "the picture lies in " + absolutePath(command_->substr(snapshot.size())));
    commandEnds();
}

void TerminalFrontEnd::commandFailed(const std::string& reason) {
    log(LogEntry::Kind::failure, reason);
    commandEnds();
}

void TerminalFrontEnd::commandInterrupted() {
    commandEnds();
}

void TerminalFrontEnd::eventHappened(const Event& event) {
    interface_.setTime(seconds(time_()));
    auto text = withoutTime(words_.words(event));
    // The gallery's list shows the exhibits.
    if (event.at("event") != eventName::exhibitListed)
        interface_.log({LogEntry::Kind::event, event.at("time"), std::move(text)});
    interface_.eventHappened(event);
    showSoon();
}

void TerminalFrontEnd::listed(const Event&) {
    showSoon();
}

std::vector<int> TerminalFrontEnd::descriptors() const {
    std::vector<int> all = {STDIN_FILENO, signals_.descriptor(), redraw_.get()};
    if (errors_.descriptor() >= 0)
        all.push_back(errors_.descriptor());
    return all;
}

void TerminalFrontEnd::descriptorReady(int descriptor) {
    if (descriptor == STDIN_FILENO)
        takeKeys();
    else if (descriptor == signals_.descriptor())
        takeSignals();
    else if (descriptor == errors_.descriptor())
        takeErrors();
    else
        show();
}

void TerminalFrontEnd::takeKeys() {
    const auto size = terminal_.size();
    bool hasKey = false;
    while (const auto key = terminal_.takeKey()) {
        hasKey = true;
        interface_.handle(*key, size);
    }
    isHungUp_ = !hasKey && terminal_.isHungUp();
    showSoon();
}

void TerminalFrontEnd::takeSignals() {
    while (const auto signal = signals_.take()) {
        if (*signal == SIGTSTP)
            terminal_.suspend();
        else
            terminal_.resize();
    }
    showSoon();
}

void TerminalFrontEnd::takeErrors() {
    for (auto& line : errors_.takeLines())
        log(LogEntry::Kind::failure, std::move(line));
    showSoon();
}

void TerminalFrontEnd::show() {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto size = read(redraw_.get(), &count, sizeof count);
    interface_.setTime(seconds(time_()));
    const bool isLate = Clock::now() - commandStart_ > unnoticed;
    if (command_ && isLate)
        interface_.setBusy(*command_);
    else if (interface_.hasCommands() && isLate)
        interface_.setBusy("the home screen starts");
    else
        interface_.setBusy("");
    terminal_.show(interface_.draw(terminal_.size()));
}

void TerminalFrontEnd::showSoon() {
    const itimerspec soon{{0, redrawInterval}, {0, 1}};
    timerfd_settime(redraw_.get(), 0, &soon, nullptr);
}

void TerminalFrontEnd::log(LogEntry::Kind kind, std::string text) {
    interface_.log({kind, seconds(time_()), std::move(text)});
}

std::string TerminalFrontEnd::nextPicture() {
    std::string name;
    do
        name = "purgo-" + std::to_string(++pictures_) + ".svg";
    while (access(name.c_str(), F_OK) == 0);
    return name;
}

} // namespace simulator
