#pragma once

#include "PGAlertController/Source/PGAlertContracts.h"

namespace purgo {

/// A backend: what draws an alert for its facade.
///
/// Ownership:  the facade owns its backend; the backend does not own its delegate.
class PGACConcrete : public PGAlertControllerProtocol, public PGAlertControllerAdditions {
public:
    virtual std::shared_ptr<PGACDelegate> ACDelegate() const = 0;
    virtual void setACDelegate(std::weak_ptr<PGACDelegate> delegate) = 0;
};

/// The process-wide switch: while it is set, new facades and actions are made for the view-based
/// backend. What was made before keeps what it has.
bool forceViewAPI();
void setForceViewAPI(bool force);

/// Whether the build and the system have the backend on the system's alert controller.
bool hasControllerBackend();

/// Makes the backend of a new facade: the one on the system's alert controller where there is one
/// and the switch is not set, otherwise the one on alert views and sheets.
std::shared_ptr<PGACConcrete> makeConcreteController(std::optional<std::string> title,
                                                     std::optional<std::string> message,
                                                     std::intptr_t preferredStyle);

/// Makes what a new action wraps: a system action where the build and the system have them and the
/// switch is not set, otherwise an action of the library's own.
std::shared_ptr<PGAlertActionProtocol> makeConcreteAction(std::optional<std::string> title,
                                                          std::intptr_t style,
                                                          PGAlertActionProtocol::Handler handler);

/// Where in a view a popover points: at the rectangle, or at the middle when none was passed.
platform::CGRect anchorRect(platform::CGRect rect, const platform::UIView& inView);

} // namespace purgo
