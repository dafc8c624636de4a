#include "Simulator/Terminal/Frame.h"

#include <algorithm>

namespace simulator {

namespace {

struct HelpLine {
    std::string_view keys;
    std::string_view text;
};

constexpr HelpLine helpLines[] = {
    {"Tab, Shift-Tab", "to the next, to the previous thing that can be chosen"},
    {"arrows", "the same, inside the alert while there is one"},
    {"Enter, click", "activates a toggle, makes a gesture, presses a button"},
    {"1 … 9", "presses that button of the front alert"},
    {"Esc", "leaves the host application; presses an alert's cancel button"},
    {"a, A", "assigns the next, the previous gesture to the listener"},
    {"b, o", "the gesture is aborted; another listener handled it"},
    {"l", "locks or unlocks the device"},
    {"c", "fills the caches, so that a cleanup has something to do"},
    {"g", "the gallery: alerts of every kind"},
    {"p", "writes a picture of the screen into the current folder"},
    {"r", "restarts the home screen"},
    {":", "takes a command as scripts have them, such as :wait 1 or :screen"},
    {"PgUp, PgDn, wheel", "scrolls the log, or an alert's text that is cut"},
    {"Home, End", "to the log's beginning, to its end"},
    {"Ctrl-L, Ctrl-Z", "draws everything anew; suspends the simulator"},
    {"q, Ctrl-C", "ends the simulator"},
};

/// Clears a box in the middle of an area, and returns its inside.
Area box(Frame& frame, const Area& area, Size size, std::string_view title) {
    const int width = std::min(area.width - 2, size.columns + 4);
    const int height = std::min(area.height, size.rows + 2);
    const Area outside{area.x + (area.width - width) / 2, area.y + (area.height - height) / 2,
                       width, height};
    frame.canvas.fill(outside);
    frame.canvas.frame(outside, Border::heavy, {}, title);
    // Nothing behind it can be chosen.
    frame.targets.clear();
    frame.cursor.reset();
    return outside.inset(2, 1);
}

} // namespace

void drawHelp(Frame& frame, const Area& area) {
    constexpr int keysWidth = 18;
    constexpr int textWidth = 54;
    std::vector<std::vector<GlyphLine>> texts;
    int rows = 0;
    const int room = std::min(textWidth, area.width - 6 - keysWidth);
    for (const auto& line : helpLines) {
        texts.push_back(wrapped(line.text, room));
        rows += static_cast<int>(texts.back().size());
    }
    const Area inside = box(frame, area, {keysWidth + textWidth, rows}, "help: any key closes it");
    int row = inside.y;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        frame.canvas.put(inside.x, row, helpLines[index].keys, Style::bold());
        for (const auto& line : texts[index])
            frame.canvas.put(inside.x + keysWidth, row++, line);
    }
}

void drawGallery(Frame& frame, const InterfaceState& state, const Area& area) {
    const int count = static_cast<int>(state.exhibits.size());
    const Area inside =
        box(frame, area, {70, std::max(1, count)}, "gallery: Enter view, c controller, Esc closes");
    if (count == 0)
        frame.canvas.put(inside.x, inside.y, "(no exhibits have come yet)", Style::dim());
    int nameWidth = 0;
    for (const auto& exhibit : state.exhibits)
        nameWidth = std::max(nameWidth, std::min(inside.width / 2, columnsOf(exhibit.name)));
    const int focused = static_cast<int>(state.exhibit);
    const int first = std::max(0, focused + 1 - inside.height);
    frame.canvas.setClip(inside);
    for (int index = first; index < std::min(count, first + inside.height); ++index) {
        const auto& exhibit = state.exhibits[static_cast<std::size_t>(index)];
        const Area row{inside.x, inside.y + index - first, inside.width, 1};
        const Style style = index == focused ? Style::reversed() : Style{};
        frame.canvas.fill(row, " ", style);
        frame.canvas.put(row.x, row.y, index == focused ? "▸" : " ", style);
        frame.canvas.put(row.x + 1, row.y, fitted(exhibit.name, nameWidth), style);
        frame.canvas.put(row.x + nameWidth + 3, row.y,
                         fitted(exhibit.description, row.width - nameWidth - 3), style);
        frame.targets.push_back(
            {{TargetId::Kind::exhibit, exhibit.name, 0, static_cast<std::size_t>(index)}, row});
    }
    frame.canvas.clearClip();
    if (first > 0)
        frame.canvas.put(inside.right(), inside.y, "▲");
    if (first + inside.height < count)
        frame.canvas.put(inside.right(), inside.bottom() - 1, "▼");
}

} // namespace simulator
