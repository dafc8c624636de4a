#include "PGAlertController/Source/PGAlertActionConformance.h"

#include "Platform/System.h"

#include <utility>

namespace purgo {

bool PGAlertActionConformance::isSupported() {
    return platform::classNamed("UIAlertAction") != nullptr;
}

std::shared_ptr<PGAlertActionConformance>
PGAlertActionConformance::actionWithTitle(std::optional<std::string> title, std::intptr_t style,
                                          Handler handler) {
    platform::UIAlertAction::Handler systemHandler;
    if (handler)
        // The system may call it when this object is gone, so it gets one of its own.
        systemHandler = [handler = std::move(handler)](const auto& chosen) {
            PGAlertActionConformance action(chosen);
            handler(action);
        };
    return std::make_shared<PGAlertActionConformance>(
        platform::UIAlertAction::make(std::move(title), style, std::move(systemHandler)));
}

PGAlertActionConformance::PGAlertActionConformance(std::shared_ptr<platform::UIAlertAction> action)
    : action_(std::move(action)) {}

} // namespace purgo
