#include "Simulator/Picture/SVGPicture.h"

#include "Simulator/Picture/Drawing.h"
#include "Simulator/Picture/PictureLayout.h"
#include "Simulator/Picture/SVGWriter.h"

namespace simulator {
namespace {

void drawAlerts(SVGWriter& writer, const PictureLayout& layout, const PhoneScreen& screen) {
    for (const AlertLayout& alert : layout.alerts) {
        const bool isInFront = &alert == &layout.alerts.back();
        drawBox(writer, layout.screen, 0, "#000", {{"fill-opacity", isInFront ? 0.4 : 0.12}});
        if (layout.look == Look::glossy)
            drawGlossyAlert(writer, alert);
        else
            drawFlatAlert(writer, alert, screen.system);
    }
}

/// The screen's part of the document clips what is in it, so that nothing lies on the device.
void drawScreen(SVGWriter& writer, const PictureLayout& layout, const PhoneScreen& screen,
                const std::string& deviceRoot) {
    openClipped(writer, layout.screen);
    drawHomeScreen(writer, layout, screen, deviceRoot);
    drawAlerts(writer, layout, screen);
    writer.close();
}

} // namespace

std::string svgPicture(const PhoneScreen& screen, const std::string& deviceRoot) {
    constexpr double margin = 12;
    const PictureLayout layout = pictureLayout(screen);
    const Box picture = deviceBox(screen, layout.screen).inset(-margin, -margin);
    SVGWriter writer;
    writer.open("svg",
                {{"xmlns", "http://www.w3.org/2000/svg"},
                 {"width", picture.width},
                 {"height", picture.height},
                 {"viewBox", svgNumbers({picture.x, picture.y, picture.width, picture.height})},
                 {"font-family", "sans-serif"},
                 {"role", "img"}});
    writer.open("defs", {});
    defineDevicePaints(writer, layout.look);
    if (layout.look == Look::glossy)
        defineGlossyPaints(writer);
    writer.close();
    drawDevice(writer, screen, layout.screen);
    drawScreen(writer, layout, screen, deviceRoot);
    writer.close();
    return writer.document();
}

} // namespace simulator
