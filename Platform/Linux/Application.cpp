#include "Platform/Linux/Application.h"

#include "Platform/Linux/Device.h"

#include <utility>

namespace platform {

std::shared_ptr<UIApplication> UIApplication::sharedApplication(const Class& ofClass) {
    return std::dynamic_pointer_cast<UIApplication>(ofClass.sharedObject());
}

SimulatedApplication::SimulatedApplication(std::set<ApplicationOperation> operations)
    : operations_(std::move(operations)) {}

bool SimulatedApplication::respondsTo(ApplicationOperation operation) const {
    return operations_.contains(operation);
}

bool SimulatedApplication::isProtectedDataAvailable() const {
    return Device::current().isUnlocked();
}

void SimulatedApplication::applicationOpenURL(const std::string& url) {
    Device::current().observer().urlOpened(url, "applicationOpenURL");
}

void SimulatedApplication::openURL(const std::string& url) {
    Device::current().observer().urlOpened(url, "openURL");
}

} // namespace platform
