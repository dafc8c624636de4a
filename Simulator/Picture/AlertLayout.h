#pragma once

#include "Simulator/Picture/Geometry.h"
#include "Simulator/Picture/PhoneScreen.h"
#include "Simulator/Picture/Typesetting.h"

#include <optional>
#include <vector>

namespace simulator {

/// The two looks that the system has had: with gloss before version 7, flat from there on.
enum class Look { glossy, flat };

Look lookOf(const platform::SystemVersion& system);

/// Where an alert stands: in the middle of the screen, along the lower edge of a phone, or beside
/// what it points at on a pad.
enum class AlertPlace { middle, lowerEdge, popover };

struct AlertButton {
    enum class Kind { plain, cancel, destructive };

    Kind kind = Kind::plain;
    Box box;
    TextBlock title;
};

struct AlertTextField {
    Box box;
    TextBlock text;
    bool isPlaceholder = false;
};

/// The arrow of a popover: a triangle that stands on the popover's edge.
struct PopoverArrow {
    enum class Direction { up, down, left, right };

    Direction direction = Direction::up;
    Box box;
};

/// Where each part of an alert goes.
struct AlertLayout {
    AlertPlace place = AlertPlace::middle;
    /// All of it but the arrow.
    Box box;
    /// The surfaces that the rest lies on: one, or a second one for a button set apart.
    std::vector<Box> panels;
    /// The title and the message, as far as there are any.
    std::vector<TextBlock> texts;
    std::optional<AlertTextField> textField;
    /// In the order of their indices. Very many that nothing has room for end in one named "…".
    std::vector<AlertButton> buttons;
    std::optional<PopoverArrow> arrow;

    void moveBy(double right, double down);
};

/// Lays an alert out, with its upper left corner at the origin and without an arrow. Buttons become
/// lower and then stand in columns, and texts are cut, where the height is too little for them.
AlertLayout alertLayout(const ShownAlert& alert, Look look, AlertPlace place, double screenWidth,
                        double maximumHeight);

} // namespace simulator
