#pragma once

#include "Platform/UIKit/Application.h"

#include <set>

namespace platform {

/// The application object of the simulated device: the lock state is the device's, and an opened
/// URL is told to the device's observer.
class SimulatedApplication : public UIApplication {
public:
    /// An application object that implements just these of the optional operations.
    explicit SimulatedApplication(std::set<ApplicationOperation> operations);

    bool respondsTo(ApplicationOperation operation) const override;
    bool isProtectedDataAvailable() const override;
    void applicationOpenURL(const std::string& url) override;
    void openURL(const std::string& url) override;

private:
    std::set<ApplicationOperation> operations_;
};

} // namespace platform
