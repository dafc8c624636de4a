#include "PGAlertController/Source/PGAlertAction.h"

#include "PGAlertController/Source/PGACConcrete.h"

#include <utility>

namespace purgo {

std::shared_ptr<PGAlertAction> PGAlertAction::actionWithTitle(std::optional<std::string> title,
                                                              std::intptr_t style,
                                                              Handler handler) {
    return std::shared_ptr<PGAlertAction>(
        new PGAlertAction(std::move(title), style, std::move(handler)));
}

PGAlertAction::PGAlertAction(std::optional<std::string> title, std::intptr_t style, Handler handler)
    : concreteAction_(makeConcreteAction(std::move(title), style, handler)),
      handler_(std::move(handler)) {}

void PGAlertAction::performHandler() {
    const auto self = shared_from_this();
    if (handler_)
        handler_(*this);
}

void PGAlertAction::setConcreteAction(std::shared_ptr<PGAlertActionProtocol> action) {
    concreteAction_ = std::move(action);
}

} // namespace purgo
