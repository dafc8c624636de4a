#include "Simulator/Supervisor/Recording.h"

#include "Simulator/HomeScreen/Commands.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace simulator {

namespace {

bool isSpace(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

Event header(const platform::DeviceConfiguration& configuration) {
    const bool isPad = configuration.idiom == platform::UserInterfaceIdiom::pad;
    return {{"recording", 1},
            {"system", configuration.systemVersion.text()},
            {"idiom", isPad ? "pad" : "phone"},
            {"unlocked", configuration.isUnlocked}};
}

std::string contentOf(int descriptor) {
    std::string content;
    std::array<char, 65536> buffer;
    ssize_t count = 0;
    while ((count = ::read(descriptor, buffer.data(), buffer.size())) > 0)
        content.append(buffer.data(), static_cast<std::size_t>(count));
    if (count < 0)
        throw std::system_error(errno, std::generic_category(), "recording");
    return content;
}

bool hasText(const Event& object, const char* member) {
    const auto found = object.find(member);
    return found != object.end() && found->is_string();
}

bool isRecordedLine(const Event& object) {
    if (!object.is_object())
        return false;
    const auto time = object.find("time");
    const bool isTimed = time != object.end() && time->is_number();
    const auto signal = object.find("signal");
    return object.contains("recording") ||
           (isTimed &&
            (hasText(object, "command") || hasText(object, "failure") || hasText(object, "event") ||
             (signal != object.end() && signal->is_number_integer())));
}

} // namespace

Recorder::Recorder(FrontEnd& inner, const std::string& path,
                   const platform::DeviceConfiguration& configuration, DeviceTime time)
    : FrontEndLayer(inner),
      file_(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, 0666)),
      time_(std::move(time)) {
    if (!file_.isOpen())
        throw std::system_error(errno, std::generic_category(), path);
    writeLine(header(configuration));
}

std::optional<std::string> Recorder::nextCommand() {
    auto command = inner().nextCommand();
    command_ = command.value_or("");
    return command;
}

void Recorder::commandBegun(std::chrono::nanoseconds time) {
    write(time, "command", command_);
    inner().commandBegun(time);
}

void Recorder::commandFailed(const std::string& reason) {
    write(time_(), "failure", reason);
    inner().commandFailed(reason);
}

void Recorder::eventHappened(const Event& event) {
    writeLine(event);
    inner().eventHappened(event);
}

void Recorder::homeScreenEnded(int signal) {
    // By SIGTERM the host application ends it, and is to do so again.
    if (signal != 0 && signal != SIGTERM)
        write(time_(), "signal", signal);
    inner().homeScreenEnded(signal);
}

int Recorder::exitStatus() const {
    return isIntact_ ? FrontEndLayer::exitStatus() : 1;
}

void Recorder::finish() {
    write(time_(), "command", quitCommand);
}

void Recorder::write(std::chrono::nanoseconds time, const char* member, const Event& value) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(time);
    writeLine({{"time", static_cast<double>(milliseconds.count()) / 1000}, {member, value}});
}

void Recorder::writeLine(const Event& object) {
    const auto line = jsonLine(object) + "\n";
    std::string_view rest = line;
    while (isIntact_ && !rest.empty()) {
        const ssize_t written = ::write(file_.get(), rest.data(), rest.size());
        if (written >= 0)
            rest.remove_prefix(static_cast<std::size_t>(written));
        else
            isIntact_ = errno == EINTR;
    }
}

std::chrono::nanoseconds RecordedLine::time() const {
    constexpr double lastSecond = 1e9;
    const double time = std::clamp(content.at("time").get<double>(), 0.0, lastSecond);
    return std::chrono::milliseconds(std::llround(time * 1000));
}

bool Recording::isIn(int descriptor) {
    if (lseek(descriptor, 0, SEEK_CUR) != 0)
        return false;
    char character = ' ';
    while (isSpace(character) && ::read(descriptor, &character, 1) == 1) {
    }
    lseek(descriptor, 0, SEEK_SET);
    return character == '{';
}

Recording Recording::read(int descriptor) {
    Recording recording;
    std::istringstream text(contentOf(descriptor));
    std::size_t number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        if (std::all_of(line.begin(), line.end(), isSpace))
            continue;
        auto object = Event::parse(line, nullptr, false);
        if (!isRecordedLine(object))
            throw std::runtime_error(std::to_string(number) + ": this is no line of a recording");
        recording.lines.push_back({number, std::move(object)});
    }
    return recording;
}

} // namespace simulator
