#include "PGAlertController/Source/PGACConcrete.h"

#include "PGAlertController/Source/PGACConcrete_View.h"
#include "PGAlertController/Source/PGAlertActionConcrete.h"

#ifdef PURGO_HAS_CONTROLLER_BACKEND
#include "PGAlertController/Source/PGACConcrete_Controller.h"
#include "PGAlertController/Source/PGAlertActionConformance.h"
#endif

#include <utility>

namespace purgo {

namespace {

bool isViewAPIForced = false;

} // namespace

bool forceViewAPI() {
    return isViewAPIForced;
}

void setForceViewAPI(bool force) {
    isViewAPIForced = force;
}

bool hasControllerBackend() {
#ifdef PURGO_HAS_CONTROLLER_BACKEND
    return PGACConcrete_Controller::isSupported();
#else
    return false;
#endif
}

std::shared_ptr<PGACConcrete> makeConcreteController(std::optional<std::string> title,
                                                     std::optional<std::string> message,
                                                     std::intptr_t preferredStyle) {
#ifdef PURGO_HAS_CONTROLLER_BACKEND
    if (hasControllerBackend() && !forceViewAPI())
        return PGACConcrete_Controller::alertControllerWithTitle(
            std::move(title), std::move(message), preferredStyle);
#endif
    return PGACConcrete_View::alertControllerWithTitle(std::move(title), std::move(message),
                                                       preferredStyle);
}

std::shared_ptr<PGAlertActionProtocol> makeConcreteAction(std::optional<std::string> title,
                                                          std::intptr_t style,
                                                          PGAlertActionProtocol::Handler handler) {
#ifdef PURGO_HAS_CONTROLLER_BACKEND
    if (PGAlertActionConformance::isSupported() && !forceViewAPI())
        return PGAlertActionConformance::actionWithTitle(std::move(title), style,
                                                         std::move(handler));
#endif
    return PGAlertActionConcrete::actionWithTitle(std::move(title), style, handler);
}

platform::CGRect anchorRect(platform::CGRect rect, const platform::UIView& inView) {
    if (rect != kPGACInvalidRect)
        return rect;
    const auto bounds = inView.bounds();
    return {bounds.width / 2, bounds.height / 2, 1, 1};
}

} // namespace purgo
