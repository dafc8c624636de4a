#pragma once

#include "Platform/UIKit/ViewControllers.h"
#include "Platform/UIKit/Views.h"

#include <memory>
#include <vector>

namespace platform {

/// The window level of the system's alerts. An ordinary window has level 0.
inline constexpr CGFloat UIWindowLevelAlert = 2000;

/// A window of the application.
///
/// Ownership:  whoever made it; a window that is released leaves the screen, and the window that
///             was key before it is key again. A window owns its root view controller.
/// Threads:    main thread only.
class UIWindow : public UIView {
public:
    using UIView::UIView;

    static std::shared_ptr<UIWindow> make(CGRect frame);

    virtual void setRootViewController(std::shared_ptr<UIViewController> controller) = 0;
    virtual void setWindowLevel(CGFloat level) = 0;

    /// Gives the window a clear background, so that what lies below shows through.
    virtual void setClearBackgroundColor() = 0;

    virtual void makeKeyAndVisible() = 0;
};

/// The application's key window, or null.
std::shared_ptr<UIWindow> keyWindow();

/// The application's visible windows.
std::vector<std::shared_ptr<UIWindow>> applicationWindows();

} // namespace platform
