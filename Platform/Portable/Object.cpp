#include "Platform/Object.h"

namespace platform {

// Defined here so that the type has one home, which casts in all loaded images agree on.
Object::~Object() = default;

} // namespace platform
