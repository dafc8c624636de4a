#include "Simulator/Supervisor/ScreenWatcher.h"

#include "Platform/Pipes.h"
#include "Simulator/HomeScreen/Commands.h"
#include "Simulator/Link/Requests.h"
#include "Simulator/Picture/SVGPicture.h"

#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace simulator {

namespace {

/// Null when the file holds the text now, otherwise why it does not. Never waits for a reader, as
/// a pipe would make it.
const char* writeFile(const std::string& path, std::string_view text) {
    const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    platform::FileDescriptor file(open(path.c_str(), flags, 0666));
    while (file.isOpen() && !text.empty()) {
        const ssize_t written = write(file.get(), text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            break;
    }
    return file.isOpen() && text.empty() ? nullptr : std::strerror(errno);
}

/// The file that a command takes a picture into, or nothing for any other command.
std::optional<std::string> pictureOf(const std::string& command) {
    try {
        const auto call = parseCommand(command);
        return call.command->name == std::string_view(snapshotCommand)
                   ? std::optional(call.arguments.front())
                   : std::nullopt;
    } catch (const CommandFailure&) {
        return std::nullopt;
    }
}

} // namespace

ScreenWatcher::ScreenWatcher(FrontEnd& inner, PhoneScreen& screen, std::string deviceRoot,
                             DeviceTime time, Listing listing)
    : FrontEndLayer(inner), screen_(screen), deviceRoot_(std::move(deviceRoot)),
      time_(std::move(time)), listing_(listing) {}

std::optional<std::string> ScreenWatcher::nextCommand() {
    if (std::exchange(isListingDue_, false)) {
        doing_ = Doing::ownListing;
        return listingRequest();
    }
    auto command = inner().nextCommand();
    return command ? begin(std::move(*command)) : std::nullopt;
}

std::optional<std::string> ScreenWatcher::begin(std::string command) {
    command_ = std::move(command);
    const auto path = pictureOf(command_);
    doing_ = path ? Doing::snapshot : Doing::innerCommand;
    picturePath_ = path.value_or("");
    return path ? listingRequest() : command_;
}

void ScreenWatcher::commandBegun(std::chrono::nanoseconds time) {
    if (doing_ != Doing::ownListing)
        inner().commandBegun(time);
}

void ScreenWatcher::commandDone() {
    const auto done = std::exchange(doing_, Doing::nothing);
    if (done == Doing::innerCommand && (command_ == "lock" || command_ == "unlock"))
        screen_.setUnlocked(command_ == "unlock");
    if (done == Doing::snapshot)
        takePicture(picturePath_);
    else if (done == Doing::innerCommand)
        inner().commandDone();
}

void ScreenWatcher::takePicture(const std::string& path) {
    screen_.time = seconds(time_());
    if (const char* reason = writeFile(path, svgPicture(screen_, deviceRoot_)))
        inner().commandFailed(path + ": " + reason);
    else
        inner().commandDone();
}

void ScreenWatcher::commandFailed(const std::string& reason) {
    if (std::exchange(doing_, Doing::nothing) != Doing::ownListing)
        inner().commandFailed(reason);
}

void ScreenWatcher::commandInterrupted() {
    const auto interrupted = std::exchange(doing_, Doing::nothing);
    if (interrupted == Doing::snapshot)
        inner().commandFailed("the home screen went down before its picture was taken");
    else if (interrupted == Doing::innerCommand)
        inner().commandInterrupted();
}

void ScreenWatcher::eventHappened(const Event& event) {
    screen_.apply(event);
    if (listing_ == Listing::atEachStart && event.at("event") == eventName::homeScreenStarted)
        isListingDue_ = true;
    inner().eventHappened(event);
}

void ScreenWatcher::listed(const Event& event) {
    screen_.apply(event);
    inner().listed(event);
}

} // namespace simulator
