#include "Simulator/Picture/Drawing.h"

#include <algorithm>

namespace simulator {
namespace {

/// The paints of one kind of button: its surface and its title.
struct ButtonPaint {
    std::string_view surface;
    std::string_view title;
};

ButtonPaint paintOf(AlertButton::Kind kind, AlertPlace place) {
    const bool isSheet = place != AlertPlace::middle;
    switch (kind) {
    case AlertButton::Kind::destructive:
        return {"url(#glossyDestructive)", "#fff"};
    case AlertButton::Kind::cancel:
        return {isSheet ? "url(#glossySheetCancel)" : "url(#glossyCancel)", "#fff"};
    case AlertButton::Kind::plain:
        break;
    }
    return isSheet ? ButtonPaint{"url(#glossySheetButton)", "#1b1d20"}
                   : ButtonPaint{"url(#glossyButton)", "#fff"};
}

void drawButton(SVGWriter& writer, const AlertButton& button, AlertPlace place) {
    const double radius = place == AlertPlace::middle ? 5 : 8;
    const ButtonPaint paint = paintOf(button.kind, place);
    drawBox(writer, button.box.inset(0.5, 0.5), radius, paint.surface,
            {{"stroke", "#060b18"}, {"stroke-opacity", 0.75}});
    Box edge = button.box.inset(radius, 1.5);
    edge.height = 1;
    drawBox(writer, edge, 0, "#fff", {{"fill-opacity", 0.35}});
    drawText(writer, button.title, paint.title);
}

/// The light that falls on the upper part of an alert.
void drawGloss(SVGWriter& writer, Box box, double radius) {
    const double depth = std::min(30.0, box.height / 2);
    SVGPath path;
    path.step("M", {box.x, box.y + radius})
        .step("a", {radius, radius, 0, 0, 1, radius, -radius})
        .step("L", {box.right() - radius, box.y})
        .step("a", {radius, radius, 0, 0, 1, radius, radius})
        .step("L", {box.right(), box.y + depth * 0.6})
        .step("Q", {box.centerX(), box.y + depth * 1.4, box.x, box.y + depth * 0.6})
        .step("Z");
    drawPath(writer, path.text(), {{"fill", "url(#glossyGloss)"}});
}

void drawView(SVGWriter& writer, Box box) {
    constexpr double radius = 11;
    drawShadow(writer, box, radius);
    drawBox(writer, box.inset(1, 1), radius, "url(#glossyView)",
            {{"stroke", "#fff"}, {"stroke-opacity", 0.85}, {"stroke-width", 2}});
    drawGloss(writer, box.inset(2.5, 2.5), radius - 2);
}

void drawSheet(SVGWriter& writer, Box box) {
    drawBox(writer, box, 0, "url(#glossySheet)");
    drawBox(writer, {box.x, box.y, box.width, 1}, 0, "#000", {{"fill-opacity", 0.7}});
    drawBox(writer, {box.x, box.y + 1, box.width, 1}, 0, "#fff", {{"fill-opacity", 0.4}});
}

void drawPopover(SVGWriter& writer, const AlertLayout& alert) {
    constexpr double radius = 10;
    drawShadow(writer, alert.box, radius);
    if (alert.arrow) {
        const bool isAtTop = alert.arrow->direction == PopoverArrow::Direction::up;
        drawPath(writer, arrowPath(*alert.arrow, 2), {{"fill", isAtTop ? "#7d90b5" : "#22304f"}});
    }
    drawBox(writer, alert.box, radius, "url(#glossyPopover)");
    drawBox(writer, alert.box.inset(7, 7), radius - 4, "url(#glossySheet)",
            {{"stroke", "#000"}, {"stroke-opacity", 0.5}});
}

void drawTextField(SVGWriter& writer, const AlertTextField& field) {
    drawBox(writer, field.box.inset(0.5, 0.5), 3, "#fff", {{"stroke", "#0a1226"}});
    drawBox(writer, {field.box.x + 1, field.box.y + 1, field.box.width - 2, 3}, 0, "#000",
            {{"fill-opacity", 0.12}});
    drawText(writer, field.text, field.isPlaceholder ? "#8e939c" : "#111");
}

} // namespace

void defineGlossyPaints(SVGWriter& writer) {
    defineGradient(writer, "glossyView", {{0, "#3b5180"}, {0.45, "#1f3260"}, {1, "#121f42"}});
    defineGradient(writer, "glossyGloss", {{0, "#fff", 0.55}, {1, "#fff", 0.12}});
    defineGradient(writer, "glossyButton",
                   {{0, "#a3b0cc"}, {0.5, "#6579a4"}, {0.5, "#4d6292"}, {1, "#5f74a3"}});
    defineGradient(writer, "glossyCancel",
                   {{0, "#76829f"}, {0.5, "#3c4a6e"}, {0.5, "#28365b"}, {1, "#36456c"}});
    defineGradient(writer, "glossyDestructive",
                   {{0, "#ef9089"}, {0.5, "#d23a33"}, {0.5, "#b8150e"}, {1, "#cf352e"}});
    defineGradient(writer, "glossySheet", {{0, "#6a6f78"}, {0.08, "#3a3e45"}, {1, "#16181b"}});
    defineGradient(writer, "glossySheetButton",
                   {{0, "#ffffff"}, {0.5, "#eceef1"}, {0.5, "#d5d8de"}, {1, "#e9ebef"}});
    defineGradient(writer, "glossySheetCancel",
                   {{0, "#7b808a"}, {0.5, "#454a52"}, {0.5, "#2b2f35"}, {1, "#3a3f46"}});
    defineGradient(writer, "glossyPopover", {{0, "#7d90b5"}, {0.1, "#34466a"}, {1, "#1a2742"}});
}

void drawGlossyAlert(SVGWriter& writer, const AlertLayout& alert) {
    if (alert.place == AlertPlace::middle)
        drawView(writer, alert.box);
    else if (alert.place == AlertPlace::lowerEdge)
        drawSheet(writer, alert.box);
    else
        drawPopover(writer, alert);
    for (const TextBlock& text : alert.texts)
        drawText(writer, text, "#fff");
    if (alert.textField)
        drawTextField(writer, *alert.textField);
    for (const AlertButton& button : alert.buttons)
        drawButton(writer, button, alert.place);
}

} // namespace simulator
