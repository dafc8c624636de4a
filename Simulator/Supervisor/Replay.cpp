#include "Simulator/Supervisor/Replay.h"

#include "Simulator/HomeScreen/Commands.h"
#include "Simulator/Link/Requests.h"

#include <iostream>
#include <utility>

namespace simulator {

namespace {

using std::chrono::nanoseconds;

/// As much as a timer may have fired late while the recording was made, so that a command that was
/// given before it seems to come after it.
constexpr nanoseconds lateness = std::chrono::milliseconds(250);

/// What of an event must be the same again; in which order its members stand says nothing.
nlohmann::json compared(const Event& event) {
    nlohmann::json content;
    for (const auto& [name, value] : event.items())
        if (name != "time")
            content[name] = nlohmann::json::parse(jsonLine(value));
    return content;
}

/// Whether a command only let time pass, which the recorded times tell as well.
bool isWaiting(const std::string& command) {
    return command == "settle" || command.starts_with("wait ");
}

} // namespace

ReplayFrontEnd::ReplayFrontEnd(Recording recording, EventPrinter& printer, DeviceTime time)
    : recording_(std::move(recording)), printer_(printer), time_(std::move(time)) {}

const RecordedLine* ReplayFrontEnd::nextLine() {
    for (; next_ < recording_.lines.size(); ++next_) {
        const auto& line = recording_.lines[next_];
        if (line.has("event") || line.has("command") || line.has("failure"))
            return &line;
        if (line.has("signal"))
            signal_ = line.content.at("signal").get<int>();
    }
    return nullptr;
}

void ReplayFrontEnd::lineCame() {
    ++next_;
    signal_.reset();
    reached_.reset();
    hasSettled_ = hasSignalled_ = false;
}

std::optional<std::string> ReplayFrontEnd::nextCommand() {
    if (!std::exchange(keepsBack_, true))
        return request(keepingBackRequest());
    while (!isFinished()) {
        const auto* line = nextLine();
        if (!line) {
            isFinished_ = true;
            break;
        }
        if (line->has("event"))
            return stepTowardsEvent(*line);
        if (line->has("failure")) {
            differ("the command was carried out");
            break;
        }
        if (auto command = giveCommand(*line))
            return command;
    }
    return std::nullopt;
}

std::optional<std::string> ReplayFrontEnd::request(std::string line) {
    isOwnRequest_ = true;
    return line;
}

std::optional<std::string> ReplayFrontEnd::stepTowardsEvent(const RecordedLine& line) {
    if (time_() < line.time())
        return request(stepRequest(line.time(), nanoseconds::zero()));
    if (!std::exchange(hasSettled_, true))
        return request(settlingRequest());
    if (line.content.at("event") == eventName::homeScreenCrashed)
        signal_ = line.content.value("signal", 0);
    if (signal_ && !std::exchange(hasSignalled_, true))
        return request(signalRequest(*signal_));
    differ("nothing happened");
    return std::nullopt;
}

std::optional<std::string> ReplayFrontEnd::giveCommand(const RecordedLine& line) {
    const auto command = line.content.at("command").get<std::string>();
    // When no step leads further, a timer is in the way that fired only after the command.
    if (const auto now = time_(); now < line.time() && reached_ != now) {
        reached_ = now;
        return request(stepRequest(line.time(), lateness));
    }
    const bool fails =
        next_ + 1 < recording_.lines.size() && recording_.lines[next_ + 1].has("failure");
    lineCame();
    if (command == quitCommand)
        isFinished_ = true;
    return isFinished_ || (isWaiting(command) && !fails) ? std::nullopt : std::optional(command);
}

void ReplayFrontEnd::commandDone() {
    const auto* line = nextLine();
    if (!std::exchange(isOwnRequest_, false) && line && line->has("failure"))
        differ("the command was carried out");
}

void ReplayFrontEnd::commandFailed(const std::string& reason) {
    const auto* line = nextLine();
    const bool isOwn = std::exchange(isOwnRequest_, false);
    const bool isExpected =
        !isOwn && line && line->has("failure") && line->content.at("failure") == reason;
    if (isExpected)
        lineCame();
    else
        differ("it failed: " + reason);
}

void ReplayFrontEnd::eventHappened(const Event& event) {
    if (isFinished())
        return;
    printer_.print(event);
    if (event.at("event") == eventName::homeScreenStarted)
        keepsBack_ = false;
    const auto* line = nextLine();
    if (line && line->has("event") && compared(line->content) == compared(event))
        lineCame();
    else
        differ(jsonLine(event));
}

void ReplayFrontEnd::differ(const std::string& happened) {
    if (isFinished())
        return;
    const auto* line = nextLine();
    fail("expected " + (line ? jsonLine(line->content) : "no more events") + " but " + happened);
}

void ReplayFrontEnd::fail(const std::string& reason) {
    const auto& lines = recording_.lines;
    const auto last = lines.empty() ? 0 : lines.back().number;
    std::cerr << (next_ < lines.size() ? lines[next_].number : last) << ": " << reason << std::endl;
    hasFailed_ = isFinished_ = true;
}

std::optional<std::chrono::seconds> ReplayFrontEnd::commandLimit() const {
    return std::chrono::seconds(60);
}

bool ReplayFrontEnd::isFinished() const {
    return isFinished_ || !printer_.output().isIntact();
}

int ReplayFrontEnd::exitStatus() const {
    return hasFailed_ || !printer_.output().isIntact() ? 1 : 0;
}

} // namespace simulator
