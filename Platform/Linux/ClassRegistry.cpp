#include "Platform/Linux/ClassRegistry.h"

namespace platform {

void ClassRegistry::add(const std::string& name, const std::shared_ptr<Object>& sharedObject) {
    classes_.try_emplace(name, name, sharedObject);
}

void ClassRegistry::remove(const std::string& name) {
    classes_.erase(name);
}

const Class* ClassRegistry::find(const std::string& name) const {
    const auto found = classes_.find(name);
    return found == classes_.end() ? nullptr : &found->second;
}

} // namespace platform
