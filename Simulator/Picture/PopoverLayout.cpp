#include "Simulator/Picture/PictureLayout.h"

#include <algorithm>
#include <array>
#include <utility>

namespace simulator {
namespace {

using Direction = PopoverArrow::Direction;

constexpr double arrowBase = 34;
constexpr double arrowLength = 15;
constexpr double cornerRoom = 14; // that the arrow leaves to the popover's round corners
constexpr double lowestPopover = 240;

/// A side of the anchor, by the direction in which an arrow from there points.
struct Side {
    Direction direction;
    double width;
    double height;
};

std::array<Side, 4> sidesOf(const PopoverPlacement& placement) {
    const auto& [area, anchor] = placement;
    return {{{Direction::up, area.width, area.bottom() - anchor.bottom() - arrowLength},
             {Direction::down, area.width, anchor.y - area.y - arrowLength},
             {Direction::left, area.right() - anchor.right() - arrowLength, area.height},
             {Direction::right, anchor.x - area.x - arrowLength, area.height}}};
}

/// `value`, moved so that a length from there on stays between the two ends.
double kept(double value, double length, double first, double last) {
    return std::max(first, std::min(value, last - length));
}

/// Where the popover's upper left corner comes to lie.
Box placed(Box popover, Direction direction, const PopoverPlacement& placement) {
    const auto& [area, anchor] = placement;
    const double x =
        kept(anchor.centerX() - popover.width / 2, popover.width, area.x, area.right());
    const double y =
        kept(anchor.centerY() - popover.height / 2, popover.height, area.y, area.bottom());
    switch (direction) {
    case Direction::up:
        return popover.movedBy(x, anchor.bottom() + arrowLength);
    case Direction::down:
        return popover.movedBy(x, anchor.y - arrowLength - popover.height);
    case Direction::left:
        return popover.movedBy(anchor.right() + arrowLength, y);
    case Direction::right:
        return popover.movedBy(anchor.x - arrowLength - popover.width, y);
    }
    return popover;
}

PopoverArrow arrowFor(Box popover, Direction direction, Box anchor) {
    const Box inner = popover.inset(cornerRoom, cornerRoom);
    const double x = kept(anchor.centerX() - arrowBase / 2, arrowBase, inner.x, inner.right());
    const double y = kept(anchor.centerY() - arrowBase / 2, arrowBase, inner.y, inner.bottom());
    switch (direction) {
    case Direction::up:
        return {direction, {x, popover.y - arrowLength, arrowBase, arrowLength}};
    case Direction::down:
        return {direction, {x, popover.bottom(), arrowBase, arrowLength}};
    case Direction::left:
        return {direction, {popover.x - arrowLength, y, arrowLength, arrowBase}};
    case Direction::right:
        return {direction, {popover.right(), y, arrowLength, arrowBase}};
    }
    return {};
}

AlertLayout besideAnchor(const ShownAlert& alert, Look look, const PopoverPlacement& placement,
                         Side side) {
    AlertLayout layout =
        alertLayout(alert, look, AlertPlace::popover, placement.area.width, side.height);
    const Box box = placed(layout.box, side.direction, placement);
    layout.moveBy(box.x, box.y);
    layout.arrow = arrowFor(box, side.direction, placement.anchor);
    return layout;
}

} // namespace

AlertLayout popoverLayout(const ShownAlert& alert, Look look, PopoverPlacement placement) {
    const Box wanted =
        alertLayout(alert, look, AlertPlace::popover, placement.area.width, placement.area.height)
            .box;
    const auto sides = sidesOf(placement);
    const auto roomy = std::find_if(sides.begin(), sides.end(), [&wanted](const Side& side) {
        return side.width >= wanted.width && side.height >= wanted.height;
    });
    if (roomy != sides.end())
        return besideAnchor(alert, look, placement, *roomy);
    const Side larger = sides[0].height >= sides[1].height ? sides[0] : sides[1];
    if (larger.height >= lowestPopover)
        return besideAnchor(alert, look, placement, larger);
    // The anchor leaves no room beside it, so the popover lies on it and points at its middle.
    const Box middle{placement.anchor.centerX(), placement.anchor.centerY(), 1, 1};
    return popoverLayout(alert, look, {placement.area, middle});
}

} // namespace simulator
