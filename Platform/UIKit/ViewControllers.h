#pragma once

#include "Platform/Object.h"
#include "Platform/UIKit/Views.h"

#include <memory>

namespace platform {

class UIAlertController;

/// A view controller: it owns a view and can present an alert controller over it.
///
/// Threads: main thread only.
class UIViewController : public Object {
public:
    /// Makes a plain view controller whose view fills the main screen.
    static std::shared_ptr<UIViewController> make();

    virtual std::shared_ptr<UIView> view() = 0;

    /// Presents an alert controller over this one. Its coming appearance is reported inside the
    /// call. Does nothing while either of the two is part of another presentation.
    ///
    /// Ownership: the system keeps both until the presented one has disappeared.
    virtual void presentViewController(const std::shared_ptr<UIAlertController>& controller,
                                       bool animated) = 0;

    /// Dismisses the controller that this one presents, if any. Its coming disappearance is
    /// reported inside the call, the disappearance itself on a later turn of the main loop.
    virtual void dismissViewController(bool animated) = 0;
};

} // namespace platform
