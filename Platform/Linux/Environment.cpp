#include "Platform/Environment.h"

#include <unistd.h>

namespace platform {

char** environment() {
    return environ;
}

} // namespace platform
