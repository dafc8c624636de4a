#pragma once

#include "Simulator/Picture/AlertLayout.h"
#include "Simulator/Picture/PictureLayout.h"
#include "Simulator/Picture/SVGWriter.h"

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// A place on the way of a gradient.
struct GradientStop {
    double offset;
    std::string_view color;
    double opacity = 1;
};

/// Defines a gradient from the upper to the lower edge of what it fills; "url(#id)" paints with it.
void defineGradient(SVGWriter& writer, std::string_view id, const std::vector<GradientStop>& stops);

void drawBox(SVGWriter& writer, Box box, double radius, std::string_view fill,
             const Attributes& more = {});
void drawPath(SVGWriter& writer, std::string_view path, const Attributes& attributes);

/// Begins a part of the document, with the coordinates of what is around it, of which nothing
/// leaves the box.
void openClipped(SVGWriter& writer, Box box);

/// Draws a shadow that something of this shape throws.
void drawShadow(SVGWriter& writer, Box box, double radius);

/// Draws a text. Nothing of it leaves its block, whatever the face that it is drawn with.
void drawText(SVGWriter& writer, const TextBlock& block, std::string_view color);

/// The triangle of a popover's arrow, as a path that reaches a little into the popover.
std::string arrowPath(const PopoverArrow& arrow, double overlap);

// What a look needs in order to be drawn, and what it looks like.

void defineGlossyPaints(SVGWriter& writer);
void drawGlossyAlert(SVGWriter& writer, const AlertLayout& alert);
void drawFlatAlert(SVGWriter& writer, const AlertLayout& alert,
                   const platform::SystemVersion& system);

void defineDevicePaints(SVGWriter& writer, Look look);

/// The device around a screen: its outline, the screen being at the origin.
Box deviceBox(const PhoneScreen& screen, Box screenBox);
void drawDevice(SVGWriter& writer, const PhoneScreen& screen, Box screenBox);

/// Everything on the screen but the alerts.
void drawHomeScreen(SVGWriter& writer, const PictureLayout& layout, const PhoneScreen& screen,
                    const std::string& deviceRoot);

} // namespace simulator
