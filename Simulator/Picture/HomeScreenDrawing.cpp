#include "Simulator/Picture/Drawing.h"
#include "Simulator/Picture/Icons.h"

#include <initializer_list>

namespace simulator {
namespace {

void drawWallpaper(SVGWriter& writer, Box screen, Look look) {
    drawBox(writer, screen, 0, "url(#wallpaper)");
    const double unit = screen.width;
    const std::string_view light = look == Look::glossy ? "#9ec9ff" : "#fff";
    for (const double size : {0.9, 0.62, 0.36})
        writer.element("circle", {{"cx", screen.x + unit * 0.82},
                                  {"cy", screen.y + screen.height * 0.62},
                                  {"r", unit * size},
                                  {"fill", light},
                                  {"fill-opacity", 0.06}});
}

/// The icon for what has none.
void drawNeutralIcon(SVGWriter& writer, Box box) {
    const Box edge = box.inset(0.5, 0.5);
    drawBox(writer, edge, box.width * 0.22, "url(#neutralIcon)",
            {{"stroke", "#fff"}, {"stroke-opacity", 0.5}});
    writer.element("circle", {{"cx", box.centerX()},
                              {"cy", box.centerY()},
                              {"r", box.width * 0.22},
                              {"fill", "none"},
                              {"stroke", "#fff"},
                              {"stroke-width", box.width * 0.07}});
}

void drawIcon(SVGWriter& writer, Box box, const std::optional<std::string>& bundle,
              const std::string& deviceRoot) {
    const std::string uri = bundle ? iconURI(deviceRoot, *bundle) : "";
    if (uri.empty())
        drawNeutralIcon(writer, box);
    else
        writer.element("image", {{"x", box.x},
                                 {"y", box.y},
                                 {"width", box.width},
                                 {"height", box.height},
                                 {"href", uri}});
}

void drawNamedIcon(SVGWriter& writer, const IconLayout& icon, const std::string& deviceRoot) {
    writer.open("g", {{"opacity", icon.isEnabled ? 1 : 0.4}});
    drawIcon(writer, icon.icon, icon.bundle, deviceRoot);
    drawText(writer, icon.title, "#fff");
    writer.close();
}

void drawDock(SVGWriter& writer, const PictureLayout& layout) {
    drawBox(writer, layout.dock, 0, "url(#dock)");
    const bool isGlossy = layout.look == Look::glossy;
    if (isGlossy)
        drawBox(writer, {layout.dock.x, layout.dock.y, layout.dock.width, 1}, 0, "#fff",
                {{"fill-opacity", 0.5}});
}

void drawBarButton(SVGWriter& writer, Box box, Look look) {
    const bool isGlossy = look == Look::glossy;
    if (isGlossy)
        drawBox(writer, box.inset(0.5, 0.5), 5, "url(#barButton)",
                {{"stroke", "#1f2f49"}, {"stroke-opacity", 0.7}});
    for (const double place : {-9.0, 0.0, 9.0})
        writer.element("circle", {{"cx", box.centerX() + place},
                                  {"cy", box.centerY()},
                                  {"r", 2.6},
                                  {"fill", isGlossy ? "#fff" : "#0b72f0"}});
}

void drawBar(SVGWriter& writer, const BarLayout& bar, Look look) {
    const bool isGlossy = look == Look::glossy;
    drawBox(writer, bar.box, 0, "url(#bar)");
    drawBox(writer, {bar.box.x, bar.box.bottom() - 1, bar.box.width, 1}, 0,
            isGlossy ? "#2d3f5c" : "#b8b8bd");
    drawText(writer, bar.title, isGlossy ? "#fff" : "#0a0a0a");
    if (bar.button)
        drawBarButton(writer, *bar.button, look);
}

void drawHostPage(SVGWriter& writer, const HostPageLayout& page, const PictureLayout& layout,
                  const std::string& deviceRoot) {
    drawBox(writer, layout.screen, 0, layout.look == Look::glossy ? "#d5dae2" : "#efeff4");
    drawIcon(writer, page.icon, hostApplicationBundle, deviceRoot);
    drawBox(writer, page.panel.inset(0.5, 0.5), layout.look == Look::glossy ? 9 : 6, "#fff",
            {{"stroke", "#b3b7bf"}});
    drawText(writer, page.url, "#2b3a55");
}

void drawLock(SVGWriter& writer, Box box, bool isUnlocked, std::string_view color) {
    const Box body{box.x, box.y + 5, box.width, box.height - 5};
    drawBox(writer, body, 1.5, color);
    // Open, the shackle stands beside the body and is let go at one end.
    const double x = isUnlocked ? body.x + 5.5 : body.x + 2;
    const double foot = isUnlocked ? body.y - 1.5 : body.y + 1;
    SVGPath shackle;
    shackle.step("M", {x, body.y + 1})
        .step("V", {box.y + 3.5})
        .step("a", {3, 3, 0, 0, 1, 6, 0})
        .step("V", {foot});
    drawPath(writer, shackle.text(), {{"fill", "none"}, {"stroke", color}, {"stroke-width", 1.6}});
}

void drawSignal(SVGWriter& writer, Box box, Look look, std::string_view color) {
    constexpr int steps = 5;
    const double pitch = box.width / steps;
    for (int step = 0; step < steps; ++step) {
        const double x = box.x + pitch * step;
        if (look == Look::flat) {
            writer.element("circle", {{"cx", x + pitch / 2},
                                      {"cy", box.centerY()},
                                      {"r", pitch * 0.38},
                                      {"fill", color}});
            continue;
        }
        const double height = box.height * (step + 2) / (steps + 1);
        drawBox(writer, {x, box.bottom() - height, pitch * 0.6, height}, 0.5, color);
    }
}

void drawBattery(SVGWriter& writer, Box box, std::string_view color) {
    const Box body{box.x, box.y, box.width - 3, box.height};
    drawBox(writer, body.inset(0.5, 0.5), 2, "none", {{"stroke", color}});
    const Box charge = body.inset(2, 2);
    drawBox(writer, {charge.x, charge.y, charge.width * 0.8, charge.height}, 0.5, color);
    drawBox(writer, {body.right() + 1, box.centerY() - 2, 1.5, 4}, 0.5, color);
}

void drawStatusBar(SVGWriter& writer, const PictureLayout& layout, bool isUnlocked) {
    const StatusBarLayout& bar = layout.statusBar;
    const bool isOnLight = layout.hostPage.has_value() && layout.look == Look::flat;
    const std::string_view color = isOnLight ? "#0a0a0a" : "#fff";
    if (layout.look == Look::glossy)
        drawBox(writer, bar.box, 0, "#000", {{"fill-opacity", layout.hostPage ? 1 : 0.55}});
    else if (layout.bar)
        drawBox(writer, bar.box, 0, isOnLight ? "#f9f9f9" : "#000",
                {{"fill-opacity", isOnLight ? 1 : 0.35}});
    drawSignal(writer, bar.signal, layout.look, color);
    drawLock(writer, bar.lock, isUnlocked, color);
    drawText(writer, bar.clock, color);
    drawBattery(writer, bar.battery, color);
}

} // namespace

void drawHomeScreen(SVGWriter& writer, const PictureLayout& layout, const PhoneScreen& screen,
                    const std::string& deviceRoot) {
    if (layout.hostPage) {
        drawHostPage(writer, *layout.hostPage, layout, deviceRoot);
    } else {
        drawWallpaper(writer, layout.screen, layout.look);
        for (const IconLayout& toggle : layout.toggles)
            drawNamedIcon(writer, toggle, deviceRoot);
        if (layout.note)
            drawText(writer, *layout.note, "#fff");
        drawDock(writer, layout);
        drawNamedIcon(writer, layout.hostApplication, deviceRoot);
    }
    if (layout.bar)
        drawBar(writer, *layout.bar, layout.look);
    for (const Box& anchor : layout.anchors)
        drawBox(writer, anchor.inset(1, 1), 6, "#fff",
                {{"fill-opacity", 0.2},
                 {"stroke", "#fff"},
                 {"stroke-width", 2},
                 {"stroke-dasharray", "6 4"}});
    drawStatusBar(writer, layout, screen.isUnlocked);
}

} // namespace simulator
