#include "Platform/UIKit/Views.h"

#include "Platform/Linux/Device.h"

namespace platform {

UserInterfaceIdiom userInterfaceIdiom() {
    return Device::current().configuration().idiom;
}

CGRect mainScreenBounds() {
    if (userInterfaceIdiom() == UserInterfaceIdiom::pad)
        return {0, 0, 768, 1024};
    return {0, 0, 320, 480};
}

} // namespace platform
