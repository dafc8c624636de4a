#pragma once

#include "Simulator/Picture/Geometry.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct TextStyle {
    double size = 12;
    bool isBold = false;

    double lineHeight() const { return size * 1.3; }
};

enum class Alignment { leading, center };

/// A line of text and the room that it takes.
struct TextLine {
    Box box;
    std::string text;
    bool isRightToLeft = false;
};

/// Lines of text in one style, one below the other.
struct TextBlock {
    Box box;
    TextStyle style;
    Alignment alignment = Alignment::center;
    std::vector<TextLine> lines;
};

/// The width of a text on one line, in points.
double textWidth(std::string_view text, TextStyle style);

/// Sets a text into the box from its upper edge on: wrapped to its width, and cut with an ellipsis
/// where its height ends. The block is as wide as the box and as high as its lines, of which there
/// is at least one, unless the text is empty.
TextBlock wrappedText(std::string_view text, TextStyle style, Box box,
                      Alignment alignment = Alignment::center);

/// Sets a text as one line into the middle of the box's height. A text that is too wide is made
/// smaller, down to `smallestScale`, and then cut with an ellipsis.
TextBlock fittedText(std::string_view text, TextStyle style, Box box,
                     Alignment alignment = Alignment::center, double smallestScale = 0.75);

} // namespace simulator
