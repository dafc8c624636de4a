#include "Platform/Triggers.h"

#include "Platform/Linux/ClassRegistry.h"

namespace platform {

std::shared_ptr<FSSwitchPanel> FSSwitchPanel::sharedPanel(const Class& ofClass) {
    return std::dynamic_pointer_cast<FSSwitchPanel>(ofClass.sharedObject());
}

std::shared_ptr<LAActivator> LAActivator::sharedInstance(const Class& ofClass) {
    return std::dynamic_pointer_cast<LAActivator>(ofClass.sharedObject());
}

} // namespace platform
