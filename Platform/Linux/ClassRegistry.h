#pragma once

#include "Platform/Object.h"
#include "Platform/System.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace platform {

/// A class that can be looked up: its name and its shared object, if it has one.
class Class {
public:
    Class(std::string name, std::shared_ptr<Object> sharedObject)
        : name_(std::move(name)), sharedObject_(std::move(sharedObject)) {}

    const std::string& name() const { return name_; }
    const std::shared_ptr<Object>& sharedObject() const { return sharedObject_; }

private:
    std::string name_;
    std::shared_ptr<Object> sharedObject_;
};

/// The classes of the process, by name. Threads: main thread only.
class ClassRegistry {
public:
    /// Adds a class. The first one of a name stays.
    void add(const std::string& name, const std::shared_ptr<Object>& sharedObject = nullptr);

    /// Takes a class away, as when the image that had it had never been loaded.
    void remove(const std::string& name);

    const Class* find(const std::string& name) const;

private:
    std::map<std::string, Class> classes_;
};

} // namespace platform
