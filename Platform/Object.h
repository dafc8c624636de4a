#pragma once

namespace platform {

/// The root of everything that the system hands around without knowing its type: the object of a
/// notification, the control that a sheet points at.
class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object();
};

} // namespace platform
