#include "Platform/Notifications.h"

#include <algorithm>

namespace platform {

void NotificationCenter::addObserver(const void* observer,
                                     std::function<void(const Notification&)> callback,
                                     const std::string& name, const Object* object) {
    registrations_.push_back(
        std::make_shared<Registration>(Registration{observer, name, object, std::move(callback)}));
}

void NotificationCenter::removeObserver(const void* observer, const std::string& name,
                                        const Object* object) {
    std::erase_if(registrations_, [&](const auto& registration) {
        return registration->observer == observer && registration->name == name &&
               registration->object == object;
    });
}

void NotificationCenter::post(const std::string& name, std::shared_ptr<Object> object) {
    const Notification notification{name, std::move(object)};
    // Observers come and go while others are being called: the list is fixed before the first call.
    const auto atPosting = registrations_;
    for (const auto& registration : atPosting) {
        if (registration->name != name || registration->object != notification.object.get())
            continue;
        const bool isStillRegistered = std::find(registrations_.begin(), registrations_.end(),
                                                 registration) != registrations_.end();
        if (isStillRegistered)
            registration->callback(notification);
    }
}

} // namespace platform
