#include "Simulator/Picture/Drawing.h"

namespace simulator {
namespace {

constexpr std::string_view surface = "#fafafc";
constexpr std::string_view hairline = "#c4c4ca";
constexpr std::string_view ink = "#0a0a0a";
constexpr std::string_view quietInk = "#7c7c84";
constexpr std::string_view actionInk = "#0b72f0";
constexpr std::string_view destructiveInk = "#fb3a30";

/// Corners have become rounder in the course of the flat systems.
double cornerRadius(const platform::SystemVersion& system, AlertPlace place) {
    if (system.major >= 8)
        return 13;
    return place == AlertPlace::middle ? 8 : 5;
}

/// The line that parts a button from what is above it, and from another one beside it.
void drawHairlines(SVGWriter& writer, const AlertButton& button, const AlertLayout& alert) {
    for (const Box& panel : alert.panels) {
        if (!panel.contains(button.box))
            continue;
        if (button.box.y > panel.y + 1)
            drawBox(writer, {button.box.x, button.box.y, button.box.width, 0.75}, 0, hairline);
        if (button.box.x > panel.x + 1)
            drawBox(writer, {button.box.x, button.box.y, 0.75, button.box.height}, 0, hairline);
    }
}

void drawTextField(SVGWriter& writer, const AlertTextField& field) {
    drawBox(writer, field.box.inset(0.5, 0.5), 3, "#fff", {{"stroke", "#b9b9c0"}});
    drawText(writer, field.text, field.isPlaceholder ? "#a6a6ad" : ink);
}

void drawPanels(SVGWriter& writer, const AlertLayout& alert, double radius) {
    for (const Box& panel : alert.panels)
        drawShadow(writer, panel, radius);
    if (alert.arrow)
        drawPath(writer, arrowPath(*alert.arrow, 1), {{"fill", surface}});
    for (const Box& panel : alert.panels)
        drawBox(writer, panel, radius, surface);
}

} // namespace

void drawFlatAlert(SVGWriter& writer, const AlertLayout& alert,
                   const platform::SystemVersion& system) {
    drawPanels(writer, alert, cornerRadius(system, alert.place));
    for (const TextBlock& text : alert.texts)
        drawText(writer, text, alert.place == AlertPlace::middle ? ink : quietInk);
    if (alert.textField)
        drawTextField(writer, *alert.textField);
    for (const AlertButton& button : alert.buttons) {
        drawHairlines(writer, button, alert);
        const bool isDestructive = button.kind == AlertButton::Kind::destructive;
        drawText(writer, button.title, isDestructive ? destructiveInk : actionInk);
    }
}

} // namespace simulator
