#include "Simulator/Picture/Drawing.h"

namespace simulator {
namespace {

/// How far the device reaches beyond its screen.
struct Bezel {
    double sides;
    double top;
    double bottom;
    double radius;
};

constexpr Bezel phoneBezel{22, 78, 84, 46};
constexpr Bezel padBezel{56, 76, 84, 40};

bool isPad(const PhoneScreen& screen) {
    return screen.idiom == platform::UserInterfaceIdiom::pad;
}

void drawHomeButton(SVGWriter& writer, double x, double y, Look look) {
    constexpr double radius = 25;
    const bool isGlossy = look == Look::glossy;
    writer.element("circle", {{"cx", x},
                              {"cy", y},
                              {"r", radius},
                              {"fill", "url(#homeButton)"},
                              {"stroke", isGlossy ? "#3a3d42" : "#c3c6cc"},
                              {"stroke-width", isGlossy ? 1.5 : 3}});
}

} // namespace

void defineDevicePaints(SVGWriter& writer, Look look) {
    const bool isGlossy = look == Look::glossy;
    const std::string_view barButton = isGlossy ? "#4a658f" : "#fff";
    if (isGlossy) {
        defineGradient(writer, "device", {{0, "#8d9197"}, {0.5, "#5c6066"}, {1, "#7d8187"}});
        defineGradient(writer, "face", {{0, "#1d1f22"}, {1, "#08090a"}});
        defineGradient(writer, "homeButton", {{0, "#060607"}, {1, "#2b2e32"}});
        defineGradient(writer, "wallpaper", {{0, "#35618f"}, {0.55, "#1d3d63"}, {1, "#0b1c33"}});
        defineGradient(writer, "dock", {{0, "#fff", 0.3}, {0.5, "#fff", 0.12}, {1, "#000", 0.3}});
        defineGradient(writer, "bar", {{0, "#b9c6d8"}, {0.5, "#8699b4"}, {1, "#6d84a4"}});
    } else {
        defineGradient(writer, "device", {{0, "#d9dce1"}, {1, "#b4b8be"}});
        defineGradient(writer, "face", {{0, "#fdfdfd"}, {1, "#f1f2f4"}});
        defineGradient(writer, "homeButton", {{0, "#f4f5f6"}, {1, "#fdfdfd"}});
        defineGradient(writer, "wallpaper", {{0, "#2b8fc4"}, {0.5, "#4f6fd0"}, {1, "#8c58b8"}});
        defineGradient(writer, "dock", {{0, "#fff", 0.28}, {1, "#fff", 0.28}});
        defineGradient(writer, "bar", {{0, "#f9f9f9"}, {1, "#f6f6f7"}});
    }
    defineGradient(writer, "barButton", {{0, "#8ea5c6"}, {0.5, "#5f7ba5"}, {1, barButton}});
    defineGradient(writer, "neutralIcon", {{0, "#a9b1bd"}, {1, "#6b7482"}});
}

Box deviceBox(const PhoneScreen& screen, Box screenBox) {
    const Bezel& bezel = isPad(screen) ? padBezel : phoneBezel;
    return {screenBox.x - bezel.sides, screenBox.y - bezel.top, screenBox.width + 2 * bezel.sides,
            screenBox.height + bezel.top + bezel.bottom};
}

void drawDevice(SVGWriter& writer, const PhoneScreen& screen, Box screenBox) {
    const Look look = lookOf(screen.system);
    const Box device = deviceBox(screen, screenBox);
    const double radius = (isPad(screen) ? padBezel : phoneBezel).radius;
    const std::string_view detail = look == Look::glossy ? "#34373c" : "#c9ccd1";
    drawShadow(writer, device, radius);
    drawBox(writer, device, radius, "url(#device)");
    drawBox(writer, device.inset(3, 3), radius - 3, "url(#face)");
    const double middle = device.centerX();
    const double forehead = (device.y + screenBox.y) / 2;
    if (!isPad(screen))
        drawBox(writer, {middle - 27, forehead + 4, 54, 6}, 3, detail);
    writer.element("circle", {{"cx", middle},
                              {"cy", forehead - (isPad(screen) ? 0 : 13)},
                              {"r", 3.5},
                              {"fill", detail}});
    drawHomeButton(writer, middle, (screenBox.bottom() + device.bottom()) / 2, look);
    drawBox(writer, screenBox.inset(-1, -1), 0, "#000");
}

} // namespace simulator
