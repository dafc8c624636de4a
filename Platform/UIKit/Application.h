#pragma once

#include "Platform/Object.h"
#include "Platform/System.h"

#include <memory>
#include <string>

namespace platform {

/// What an application object may or may not implement, by system version and kind of process.
enum class ApplicationOperation { isProtectedDataAvailable, applicationOpenURL };

/// The application object of the process.
///
/// Ownership:  lives as long as the process.
/// Threads:    main thread only.
class UIApplication : public Object {
public:
    /// The application object of a class: of "SpringBoard" in the home screen, else of
    /// "UIApplication".
    static std::shared_ptr<UIApplication> sharedApplication(const Class& ofClass);

    /// Whether the object implements an operation. Nothing may be asked of it that it does not.
    virtual bool respondsTo(ApplicationOperation operation) const = 0;

    /// Whether the device is unlocked, so that its protected data can be read.
    virtual bool isProtectedDataAvailable() const = 0;

    /// Opens a URL the home screen's own way.
    virtual void applicationOpenURL(const std::string& url) = 0;

    /// Opens a URL the way of any application.
    virtual void openURL(const std::string& url) = 0;
};

} // namespace platform
