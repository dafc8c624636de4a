#pragma once

#include <algorithm>

namespace simulator {

/// A rectangle in points; y grows downwards.
struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double right() const { return x + width; }
    double bottom() const { return y + height; }
    double centerX() const { return x + width / 2; }
    double centerY() const { return y + height / 2; }

    Box inset(double horizontally, double vertically) const {
        return {x + horizontally, y + vertically, std::max(0.0, width - 2 * horizontally),
                std::max(0.0, height - 2 * vertically)};
    }
    Box movedBy(double right, double down) const { return {x + right, y + down, width, height}; }

    /// Both leave a hundredth of a point to rounding.
    bool contains(const Box& other) const {
        return other.x >= x - 0.01 && other.y >= y - 0.01 && other.right() <= right() + 0.01 &&
               other.bottom() <= bottom() + 0.01;
    }
    bool overlaps(const Box& other) const {
        return other.x < right() - 0.01 && x < other.right() - 0.01 && other.y < bottom() - 0.01 &&
               y < other.bottom() - 0.01;
    }
};

} // namespace simulator
