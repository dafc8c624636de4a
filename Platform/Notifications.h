#pragma once

#include "Platform/Object.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// What an observer is told: that something happened to an object.
struct Notification {
    std::string name;
    std::shared_ptr<Object> object;
};

/// The process's one notification center: observers by name and object.
///
/// Ownership:  an observer is known by its address only and is not kept alive; the callback is
///             owned until it is removed and must not outlive what it refers to.
/// Threads:    main thread only.
class NotificationCenter {
public:
    static NotificationCenter& defaultCenter();

    /// Calls `callback` for every later notification of this name that is posted with this object.
    void addObserver(const void* observer, std::function<void(const Notification&)> callback,
                     const std::string& name, const Object* object);

    /// Takes back every registration of this observer for this name and object.
    void removeObserver(const void* observer, const std::string& name, const Object* object);

    /// Calls the observers of this name and object, in the order of their registration.
    ///
    /// Reentrancy:  observers may add and remove observers. One that is added while a notification
    ///              is being posted does not get it; one that is removed before its turn does not
    ///              either.
    void post(const std::string& name, std::shared_ptr<Object> object);

private:
    struct Registration {
        const void* observer;
        std::string name;
        const Object* object;
        std::function<void(const Notification&)> callback;
    };
    std::vector<std::shared_ptr<const Registration>> registrations_;
};

} // namespace platform
