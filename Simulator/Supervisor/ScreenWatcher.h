#pragma once

#include "Simulator/Picture/PhoneScreen.h"
#include "Simulator/Supervisor/DeviceTime.h"
#include "Simulator/Supervisor/FrontEndLayer.h"

#include <optional>
#include <string>

namespace simulator {

/// When a front end is told how toggles and listeners are called.
enum class Listing { forPictures, atEachStart };

/// Keeps up with what is to be seen on the device, and takes the pictures that the front end's
/// command `snapshot` asks for.
class ScreenWatcher : public FrontEndLayer {
public:
    /// `screen` is kept up to date; `deviceRoot` is the folder that stands for the device's "/".
    ScreenWatcher(FrontEnd& inner, PhoneScreen& screen, std::string deviceRoot, DeviceTime time,
                  Listing listing = Listing::forPictures);

    std::optional<std::string> nextCommand() override;
    void commandBegun(std::chrono::nanoseconds time) override;
    void commandDone() override;
    void commandFailed(const std::string& reason) override;
    void commandInterrupted() override;
    void eventHappened(const Event& event) override;
    void listed(const Event& event) override;

private:
    /// Whose command is under way.
    enum class Doing { nothing, innerCommand, snapshot, ownListing };

    std::optional<std::string> begin(std::string command);
    void takePicture(const std::string& path);

    PhoneScreen& screen_;
    std::string deviceRoot_;
    DeviceTime time_;
    Listing listing_;
    bool isListingDue_ = false;
    Doing doing_ = Doing::nothing;
    std::string command_;
    std::string picturePath_;
};

} // namespace simulator
