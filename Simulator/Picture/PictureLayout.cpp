#include "Simulator/Picture/PictureLayout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

namespace simulator {
namespace {

constexpr double statusBarHeight = 20;
constexpr double barHeight = 44;
constexpr double screenMargin = 8; // that alerts leave to the screen's edges

bool isPad(const PhoneScreen& screen) {
    return screen.idiom == platform::UserInterfaceIdiom::pad;
}

Box screenBox(const PhoneScreen& screen) {
    return isPad(screen) ? Box{0, 0, 768, 1024} : Box{0, 0, 320, 480};
}

/// It is ten o'clock on the screen when the device's clock stands at zero.
std::string clockText(double seconds) {
    constexpr double minutesOfADay = 24 * 60;
    const double passed = std::isfinite(seconds) ? std::floor(std::max(0.0, seconds) / 60) : 0;
    const int minutes = static_cast<int>(std::fmod(10 * 60 + passed, minutesOfADay));
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%d:%02d", minutes / 60, minutes % 60);
    return text.data();
}

StatusBarLayout statusBarLayout(const PhoneScreen& screen, Box box) {
    StatusBarLayout bar;
    bar.box = {0, 0, box.width, statusBarHeight};
    bar.signal = {8, 6, 30, 8};
    bar.clock = fittedText(clockText(screen.time), {12, true},
                           {box.centerX() - 22, 2, 44, statusBarHeight - 4});
    bar.lock = {bar.clock.box.x - 14, 4, 10, 12};
    bar.battery = {box.width - 34, 5, 26, 10};
    return bar;
}

/// Whether a sheet of a pad points at a button in a bar, which then must be there.
bool pointsAtBarButton(const PhoneScreen& screen) {
    return isPad(screen) &&
           std::any_of(screen.alerts.begin(), screen.alerts.end(), [](const ShownAlert& alert) {
               return alert.isSheet() && alert.anchor && alert.anchor->kind != "view" &&
                      !alert.anchor->rect;
           });
}

std::optional<BarLayout> barLayout(const PhoneScreen& screen, Box box) {
    const bool hasButton = pointsAtBarButton(screen);
    if (!hasButton && !screen.hostApplicationURL)
        return std::nullopt;
    BarLayout bar;
    bar.box = {0, statusBarHeight, box.width, barHeight};
    const Box title = bar.box.inset(60, 4);
    bar.title = fittedText(screen.hostApplicationURL ? "Purgo" : "", {18, true}, title);
    if (hasButton)
        bar.button = Box{box.width - 48, statusBarHeight + 6, 40, 32};
    return bar;
}

/// How icons are laid out on one kind of device.
struct IconMetrics {
    double cellWidth;
    double cellHeight;
    double iconSize;
    double titleSize;
    double margin;
};

constexpr IconMetrics phoneIcons{100, 104, 60, 11.5, 10};
constexpr IconMetrics padIcons{140, 136, 76, 13, 34};

const IconMetrics& iconMetrics(const PhoneScreen& screen) {
    return isPad(screen) ? padIcons : phoneIcons;
}

IconLayout iconLayout(const std::string& title, Box cell, const IconMetrics& metrics) {
    constexpr double top = 6;
    constexpr double gap = 5;
    IconLayout layout;
    layout.box = cell;
    layout.icon = {cell.centerX() - metrics.iconSize / 2, cell.y + top, metrics.iconSize,
                   metrics.iconSize};
    const double titleTop = layout.icon.bottom() + gap;
    layout.title = wrappedText(title, {metrics.titleSize},
                               {cell.x + 3, titleTop, cell.width - 6, cell.bottom() - titleTop});
    return layout;
}

IconLayout toggleLayout(const ShownToggle& toggle, Box cell, const IconMetrics& metrics) {
    // A toggle without a title can be told from the others by its identifier only.
    const std::string title = toggle.title.value_or("");
    IconLayout layout = iconLayout(title.empty() ? toggle.identifier : title, cell, metrics);
    layout.isEnabled = toggle.isEnabled;
    layout.bundle = toggle.bundle;
    return layout;
}

/// Lays the toggles out in rows, as many as the area has room for, and says how many are left.
void addToggles(PictureLayout& layout, const PhoneScreen& screen, Box area) {
    constexpr double noteHeight = 24;
    const IconMetrics& metrics = iconMetrics(screen);
    const Box cells{area.x, area.y, area.width, area.height - noteHeight};
    const auto columns = static_cast<std::size_t>(cells.width / metrics.cellWidth);
    const auto rows = static_cast<std::size_t>(cells.height / metrics.cellHeight);
    const double pitch = cells.width / static_cast<double>(columns);
    const std::size_t shown = std::min(screen.toggles.size(), columns * rows);
    for (std::size_t index = 0; index < shown; ++index) {
        const std::size_t rowIndex = index / columns;
        const auto row = static_cast<double>(rowIndex);
        const auto column = static_cast<double>(index % columns);
        const Box cell{cells.x + column * pitch, cells.y + row * metrics.cellHeight, pitch,
                       metrics.cellHeight};
        layout.toggles.push_back(toggleLayout(screen.toggles[index], cell, metrics));
    }
    std::string note;
    if (shown < screen.toggles.size())
        note = "+ " + std::to_string(screen.toggles.size() - shown);
    else if (screen.isSafeMode)
        note = "Safe mode";
    const Box room{area.x, area.bottom() - noteHeight, area.width, noteHeight};
    if (!note.empty())
        layout.note = fittedText(note, {14, true}, room);
}

void addHomeScreen(PictureLayout& layout, const PhoneScreen& screen) {
    const IconMetrics& metrics = iconMetrics(screen);
    const double dockHeight = metrics.iconSize + metrics.titleSize * 1.3 + 20;
    layout.dock = {0, layout.screen.height - dockHeight, layout.screen.width, dockHeight};
    const Box cell{layout.dock.centerX() - metrics.cellWidth / 2, layout.dock.y + 2,
                   metrics.cellWidth, dockHeight - 2};
    layout.hostApplication = iconLayout("Purgo", cell, metrics);
    layout.hostApplication.bundle = hostApplicationBundle;
    const double top = (layout.bar ? layout.bar->box : layout.statusBar.box).bottom();
    const Box area{0, top, layout.screen.width, layout.dock.y - top};
    addToggles(layout, screen, area.inset(metrics.margin, 8));
}

HostPageLayout hostPageLayout(const PhoneScreen& screen, Box box) {
    const double iconSize = isPad(screen) ? 128 : 84;
    const double margin = isPad(screen) ? 120 : 20;
    constexpr double padding = 12;
    HostPageLayout page;
    page.box = box;
    page.icon = {box.centerX() - iconSize / 2, box.y + 44, iconSize, iconSize};
    const double panelTop = page.icon.bottom() + 36;
    const Box room{margin + padding, panelTop + padding, box.width - 2 * (margin + padding),
                   box.bottom() - panelTop - 2 * padding - 20};
    page.url = wrappedText(screen.hostApplicationURL.value_or(""), {14}, room);
    page.panel = {margin, panelTop, box.width - 2 * margin, page.url.box.height + 2 * padding};
    return page;
}

/// Where alerts may lie.
Box alertArea(Box screen) {
    return {screenMargin, statusBarHeight + screenMargin, screen.width - 2 * screenMargin,
            screen.height - statusBarHeight - 2 * screenMargin};
}

/// What is to be seen of a rectangle on the screen; a point at the edge for one that lies outside.
Box clipped(platform::CGRect rect, Box screen) {
    const auto edge = [](double value, double limit) {
        return std::isfinite(value) ? std::clamp(value, 0.0, limit) : 0.0;
    };
    const double x = edge(rect.x, screen.width - 1);
    const double y = edge(rect.y, screen.height - 1);
    const double right = edge(rect.x + rect.width, screen.width);
    const double bottom = edge(rect.y + rect.height, screen.height);
    return {x, y, std::max(1.0, right - x), std::max(1.0, bottom - y)};
}

Box anchorOf(const ShownAlert& alert, const PictureLayout& layout) {
    if (alert.anchor && alert.anchor->rect)
        return clipped(*alert.anchor->rect, layout.screen);
    if (alert.anchor && alert.anchor->kind != "view" && layout.bar && layout.bar->button)
        return *layout.bar->button;
    return {layout.screen.centerX(), layout.screen.centerY(), 1, 1};
}

AlertLayout sheetLayout(const ShownAlert& alert, const PictureLayout& layout) {
    const Box area = alertArea(layout.screen);
    AlertLayout sheet =
        alertLayout(alert, layout.look, AlertPlace::lowerEdge, layout.screen.width, area.height);
    // A glossy sheet is part of the screen's edge; the flat ones float above it.
    const double bottom = layout.look == Look::glossy ? layout.screen.bottom() : area.bottom();
    sheet.moveBy(layout.screen.centerX() - sheet.box.width / 2, bottom - sheet.box.height);
    return sheet;
}

/// The alerts in the middle of the screen, from the front to the back. They would hide each other,
/// so each looks out above the one before.
class Stack {
public:
    Stack(const PictureLayout& layout, std::size_t count)
        : area_(alertArea(layout.screen)), look_(layout.look),
          behind_(static_cast<double>(std::max(count, std::size_t{1}))),
          step_(std::min(42.0, area_.height * 0.3 / behind_)), front_{0, area_.bottom() + step_, 0,
                                                                      area_.height} {}

    AlertLayout add(const ShownAlert& alert) {
        // Each leaves room above it for those that still come.
        behind_ -= 1;
        const double highest = area_.y + behind_ * step_;
        AlertLayout view =
            alertLayout(alert, look_, AlertPlace::middle, area_.width, area_.bottom() - highest);
        const double height = view.box.height;
        const double y =
            std::min({area_.centerY() - height / 2, front_.y - step_, front_.bottom() - height});
        view.moveBy(area_.centerX() - view.box.width / 2, std::max(highest, y));
        front_ = view.box;
        return view;
    }

private:
    Box area_;
    Look look_;
    double behind_;
    double step_;
    Box front_; // the one added last
};

void addAlerts(PictureLayout& layout, const PhoneScreen& screen) {
    const auto isView = [](const ShownAlert& alert) {
        return !alert.isSheet();
    };
    const auto views = std::count_if(screen.alerts.begin(), screen.alerts.end(), isView);
    Stack stack(layout, static_cast<std::size_t>(views));
    const Box area = alertArea(layout.screen);
    for (const ShownAlert& alert : screen.alerts) {
        if (isView(alert)) {
            layout.alerts.push_back(stack.add(alert));
        } else if (!isPad(screen)) {
            layout.alerts.push_back(sheetLayout(alert, layout));
        } else {
            const Box anchor = anchorOf(alert, layout);
            layout.alerts.push_back(popoverLayout(alert, layout.look, {area, anchor}));
            const bool isPoint = anchor.width <= 1 && anchor.height <= 1;
            if (alert.anchor && alert.anchor->rect && !isPoint &&
                !anchor.overlaps(layout.alerts.back().box))
                layout.anchors.push_back(anchor);
        }
    }
    std::reverse(layout.alerts.begin(), layout.alerts.end());
}

} // namespace

PictureLayout pictureLayout(const PhoneScreen& screen) {
    PictureLayout layout;
    layout.look = lookOf(screen.system);
    layout.screen = screenBox(screen);
    layout.statusBar = statusBarLayout(screen, layout.screen);
    layout.bar = barLayout(screen, layout.screen);
    addHomeScreen(layout, screen);
    if (screen.hostApplicationURL) {
        const double top = layout.bar->box.bottom();
        layout.hostPage =
            hostPageLayout(screen, {0, top, layout.screen.width, layout.screen.height - top});
    }
    addAlerts(layout, screen);
    return layout;
}

} // namespace simulator
