#pragma once

#include "Platform/Object.h"

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace platform {

/// A coordinate in points, of the width that the build's graphics use.
using CGFloat = std::conditional_t<sizeof(void*) == 8, double, float>;

/// A rectangle in points. Equality is exact, member by member.
struct CGRect {
    CGFloat x = 0;
    CGFloat y = 0;
    CGFloat width = 0;
    CGFloat height = 0;

    bool operator==(const CGRect&) const = default;
};

/// A view: something with bounds that a sheet can point at.
class UIView : public Object {
public:
    explicit UIView(CGRect frame) : frame_(frame) {}

    /// The view's rectangle in the view around it.
    CGRect frame() const { return frame_; }

    /// The view's rectangle in its own coordinates.
    CGRect bounds() const { return {0, 0, frame_.width, frame_.height}; }

private:
    CGRect frame_;
};

class UIToolbar : public UIView {
public:
    using UIView::UIView;
};

class UITabBar : public UIView {
public:
    using UIView::UIView;
};

/// A button in a bar. No view, so it has no rectangle of its own.
class UIBarButtonItem : public Object {};

/// A one-line text field in an alert.
class UITextField : public Object {
public:
    const std::string& text() const { return text_; }
    void setText(std::string text) { text_ = std::move(text); }
    const std::string& placeholder() const { return placeholder_; }
    void setPlaceholder(std::string placeholder) { placeholder_ = std::move(placeholder); }

private:
    std::string text_;
    std::string placeholder_;
};

enum class UserInterfaceIdiom { phone = 0, pad = 1 };

/// What kind of device this is.
UserInterfaceIdiom userInterfaceIdiom();

/// The main screen's rectangle in points.
CGRect mainScreenBounds();

} // namespace platform
