#include "Simulator/Supervisor/Supervisor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <utility>
#include <vector>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace simulator {

namespace {

constexpr int patience = 3;
constexpr std::chrono::seconds timeToEnd{5};

/// Whether a signal is one by which a process crashes, and not one that ends it from outside.
bool isCrash(int signal) {
    constexpr std::array crashes = {SIGQUIT, SIGILL,  SIGTRAP, SIGABRT, SIGBUS,
                                    SIGFPE,  SIGSEGV, SIGXCPU, SIGXFSZ, SIGSYS};
    return std::find(crashes.begin(), crashes.end(), signal) != crashes.end();
}

int pollTimeout(const std::optional<std::chrono::steady_clock::time_point>& deadline) {
    if (!deadline)
        return -1;
    const auto rest = *deadline - std::chrono::steady_clock::now();
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(rest).count();
    return static_cast<int>(std::clamp<std::int64_t>(milliseconds, 0, INT_MAX));
}

} // namespace

Supervisor::Supervisor(platform::DeviceConfiguration device, FrontEnd& frontEnd,
                       const Signals& endingSignals)
    : frontEnd_(frontEnd), endingSignals_(endingSignals), childEnded_({SIGCHLD}) {
    settings_.device = std::move(device);
    settings_.clockOrigin = Clock::now().time_since_epoch();
    settings_.supervisor = getpid();
}

void Supervisor::run() {
    try {
        runHomeScreens();
    } catch (...) {
        children_.end();
        throw;
    }
    if (state_ == State::idle && !isInterrupted_)
        letHomeScreenEnd();
    children_.end();
}

void Supervisor::runHomeScreens() {
    startHomeScreen();
    while (!wantsToEnd()) {
        if (state_ == State::idle)
            giveNextCommand();
        if (!wantsToEnd())
            waitForSomething();
    }
}

void Supervisor::startHomeScreen() {
    homeScreen_.emplace(settings_);
    isListening_ = true;
    state_ = State::starting;
    setDeadline();
}

void Supervisor::giveNextCommand() {
    if (!command_)
        command_ = frontEnd_.nextCommand();
    if (!command_)
        return;
    state_ = State::busy;
    isBegun_ = false;
    setDeadline();
    // A home screen that is gone shows soon enough, and its successor gets the command.
    homeScreen_->channel().send(*command_);
}

void Supervisor::setDeadline() {
    const auto limit = frontEnd_.commandLimit();
    deadline_ = limit ? std::optional(Clock::now() + *limit) : std::nullopt;
}

void Supervisor::waitForSomething() {
    std::vector<pollfd> polled = {
        {endingSignals_.descriptor(), POLLIN, 0},
        {childEnded_.descriptor(), POLLIN, 0},
        {isListening_ ? homeScreen_->channel().descriptor() : -1, POLLIN, 0},
    };
    const auto fixedCount = static_cast<std::ptrdiff_t>(polled.size());
    for (const int descriptor : frontEnd_.descriptors())
        polled.push_back({descriptor, POLLIN, 0});
    if (poll(polled.data(), polled.size(), pollTimeout(deadline_)) < 0)
        return;

    isInterrupted_ = polled[0].revents != 0;
    // What a home screen said before its end comes first.
    if (polled[2].revents != 0)
        takeMessages();
    if (polled[1].revents != 0)
        reapChildren();
    for (auto each = polled.begin() + fixedCount; each != polled.end(); ++each)
        if (each->revents != 0)
            frontEnd_.descriptorReady(each->fd);
    if (deadline_ && Clock::now() >= *deadline_)
        deadlinePassed();
}

void Supervisor::deadlinePassed() {
    deadline_.reset();
    // The command that waits for the start of a home screen fails with it.
    if (!command_)
        command_ = frontEnd_.nextCommand();
    command_.reset();
    frontEnd_.commandFailed(state_ == State::starting
                                ? "the home screen did not finish starting in time"
                                : "the command did not end in time");
    homeScreen_->kill();
}

LineChannel::Received Supervisor::takeMessages() {
    auto& channel = homeScreen_->channel();
    const auto received = channel.receive();
    while (const auto line = channel.takeLine())
        if (const auto message = Message::decode(*line))
            take(*message);
    if (received == LineChannel::Received::end) {
        isListening_ = false;
        // One that nobody can talk to any more is none. What it died of, if it did, stays as it is.
        homeScreen_->kill();
    }
    return received;
}

void Supervisor::take(const Message& message) {
    settings_.device.startTime = message.now;
    switch (message.kind) {
    case Message::Kind::event:
        frontEnd_.eventHappened(message.content);
        break;
    case Message::Kind::listed:
        frontEnd_.listed(message.content);
        break;
    case Message::Kind::ready:
        becomeIdle();
        break;
    case Message::Kind::begun:
        isBegun_ = true;
        frontEnd_.commandBegun(message.now);
        break;
    case Message::Kind::busy:
        if (deadline_)
            *deadline_ += std::chrono::duration_cast<Clock::duration>(
                std::chrono::duration<double>(message.content.get<double>()));
        break;
    case Message::Kind::done:
        settings_.device.isUnlocked = message.content.get<bool>();
        becomeIdle();
        if (std::exchange(command_, std::nullopt))
            frontEnd_.commandDone();
        break;
    case Message::Kind::failed:
        becomeIdle();
        if (std::exchange(command_, std::nullopt))
            frontEnd_.commandFailed(message.content.get<std::string>());
        break;
    }
}

void Supervisor::becomeIdle() {
    state_ = State::idle;
    deadline_.reset();
}

void Supervisor::reapChildren() {
    while (childEnded_.take()) {
    }
    int status = 0;
    pid_t child = 0;
    while ((child = waitpid(-1, &status, WNOHANG)) > 0)
        if (child == homeScreen_->number())
            homeScreenEnded(status);
}

void Supervisor::homeScreenEnded(int status) {
    while (isListening_ && takeMessages() == LineChannel::Received::something) {
    }
    const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    const bool hasCrashed = isCrash(signal);
    frontEnd_.homeScreenEnded(signal);
    auto event = makeEvent(now(), hasCrashed ? eventName::homeScreenCrashed
                                             : eventName::homeScreenRestarted);
    if (hasCrashed)
        event["signal"] = signal;
    frontEnd_.eventHappened(event);

    const bool hasDoneNothing =
        state_ == State::starting || (state_ == State::busy && command_ && !isBegun_);
    endsWithoutWork_ = hasDoneNothing ? endsWithoutWork_ + 1 : 0;
    if (hasDoneNothing && settings_.isInSafeMode)
        throw Hopeless("the home screen does not stay up, not even in safe mode");
    if (state_ == State::busy && isBegun_ && std::exchange(command_, std::nullopt))
        frontEnd_.commandInterrupted();
    settings_.isInSafeMode = hasCrashed || endsWithoutWork_ >= patience;
    startHomeScreen();
}

void Supervisor::letHomeScreenEnd() {
    homeScreen_->channel().finish();
    deadline_ = Clock::now() + timeToEnd;
    while (Clock::now() < *deadline_ && waitpid(homeScreen_->number(), nullptr, WNOHANG) == 0) {
        pollfd polled[] = {{endingSignals_.descriptor(), POLLIN, 0},
                           {childEnded_.descriptor(), POLLIN, 0}};
        poll(polled, 2, pollTimeout(deadline_));
        if (polled[0].revents != 0)
            return;
        while (childEnded_.take()) {
        }
    }
}

bool Supervisor::wantsToEnd() const {
    return isInterrupted_ || frontEnd_.isFinished();
}

std::chrono::nanoseconds Supervisor::now() const {
    if (settings_.device.clock == platform::ClockKind::virtualTime)
        return settings_.device.startTime;
    return Clock::now().time_since_epoch() - settings_.clockOrigin;
}

} // namespace simulator
