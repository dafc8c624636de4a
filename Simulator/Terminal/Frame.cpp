#include "Simulator/Terminal/Frame.h"

#include "Simulator/Picture/Characters.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace simulator {

namespace {

bool isPad(const PhoneScreen& screen) {
    return screen.idiom == platform::UserInterfaceIdiom::pad;
}

/// The device as large as the window allows, in about its own proportions.
Area deviceArea(const PhoneScreen& screen, Size size) {
    const int rows = size.rows - 1;
    if (isPad(screen))
        return {0, 0, std::clamp(size.columns * 55 / 100, 44, 92), std::min(rows, 60)};
    return {0, 0, std::clamp(size.columns * 46 / 100, 37, 52), std::min(rows, 38)};
}

std::string deviceTitle(const PhoneScreen& screen) {
    return std::string(isPad(screen) ? "pad" : "phone") + ", system " + screen.system.text() +
           (screen.isSafeMode ? ", safe mode" : "");
}

std::string hints(const PhoneScreen& screen, const InterfaceState& state) {
    using Kind = TargetId::Kind;
    const auto kind = state.focus ? std::optional(state.focus->kind) : std::nullopt;
    if (kind == Kind::textField)
        return "type the text · Enter sends it · Tab goes on · Esc leaves it";
    if (kind == Kind::button)
        return "Enter or 1–9 presses · ←→ choose · Tab goes on · l lock · p picture · ? help";
    if (kind == Kind::listener)
        return "Enter makes the gesture · a another one · b abort · o other handled it · ? help";
    if (screen.hostApplicationURL || state.isHostApplicationOpen)
        return "Esc home · l lock · r restart · p picture · ? help · q quit";
    return "Tab next · l lock · r restart · g gallery · p picture · ? help · q quit";
}

void drawBottomLine(Frame& frame, const PhoneScreen& screen, const InterfaceState& state,
                    const Area& row) {
    if (state.commandLine) {
        frame.canvas.put(row.x, row.y, ":", Style::bold());
        drawDraft(frame, *state.commandLine, {row.x + 1, row.y, row.width - 1, 1}, {});
        return;
    }
    const auto busy =
        state.busyWith.empty() ? GlyphLine() : fitted("busy: " + state.busyWith, row.width / 3);
    const int left = row.width - columnsOf(busy);
    frame.canvas.put(row.x, row.y, fitted(hints(screen, state), left - 1), Style::dim());
    Style style = Style::reversed();
    style.color = Color::yellow;
    frame.canvas.put(row.x + left, row.y, busy, style);
}

Style styleOf(LogEntry::Kind kind) {
    switch (kind) {
    case LogEntry::Kind::command:
        return Style::colored(Color::cyan);
    case LogEntry::Kind::failure:
        return Style::colored(Color::red);
    case LogEntry::Kind::note:
        return Style::colored(Color::yellow);
    case LogEntry::Kind::event:
        break;
    }
    return {};
}

struct LogLine {
    std::string time;
    GlyphLine text;
    Style style;
};

std::string timeText(double time) {
    char text[40];
    std::snprintf(text, sizeof text, "%6.1f", time);
    return text;
}

/// The last lines of the log, newest first, as many as are asked for.
std::vector<LogLine> lastLines(const InterfaceState& state, int width, std::size_t most) {
    std::vector<LogLine> lines;
    for (auto entry = state.log.rbegin(); entry != state.log.rend() && lines.size() < most;
         ++entry) {
        const auto text = wrapped(entry->text, width);
        for (auto line = text.rbegin(); line != text.rend(); ++line)
            lines.push_back({std::next(line) == text.rend() ? timeText(entry->time) : "", *line,
                             styleOf(entry->kind)});
    }
    return lines;
}

Frame tooSmall(Size size) {
    Frame frame{Canvas(size), {}, {}, {}};
    const auto text = "The window is too small: " + std::to_string(size.columns) + "×" +
                      std::to_string(size.rows) + ". The simulator needs " +
                      std::to_string(smallestWindow.columns) + "×" +
                      std::to_string(smallestWindow.rows) + ". q quits.";
    int row = 0;
    for (const auto& line : wrapped(text, std::max(2, size.columns)))
        frame.canvas.put(0, row++, line);
    return frame;
}

} // namespace

void drawDraft(Frame& frame, const TextDraft& draft, const Area& row, Style style) {
    auto before = fitted(encoded(draft.text.substr(0, draft.cursor)), 1 << 20);
    const auto behind = fitted(encoded(draft.text.substr(draft.cursor)), 1 << 20);
    while (!before.empty() && columnsOf(before) > row.width - 1)
        before.erase(before.begin());
    frame.canvas.fill(row, " ", style);
    frame.canvas.put(row.x, row.y, before, style);
    const int cursor = row.x + columnsOf(before);
    int column = cursor;
    for (const auto& glyph : behind) {
        if (column + glyph.columns > row.right())
            break;
        frame.canvas.put(column, row.y, GlyphLine{glyph}, style);
        column += glyph.columns;
    }
    frame.cursor = CursorPosition{cursor, row.y};
}

void drawLog(Frame& frame, const InterfaceState& state, const Area& area) {
    constexpr int timeWidth = 7;
    const Area inside = area.inset(1, 1);
    const int scroll = std::max(0, state.logScroll);
    const int wanted = inside.height + scroll;
    const auto lines = lastLines(state, inside.width - timeWidth, static_cast<std::size_t>(wanted));
    const int count = static_cast<int>(lines.size());
    frame.log = area;
    frame.logScroll = std::clamp(count - inside.height, 0, scroll);
    frame.canvas.frame(area, Border::light, Style::dim(),
                       frame.logScroll == 0
                           ? "events"
                           : "events, " + std::to_string(frame.logScroll) + " newer lines below");
    const int shown = std::min(count, inside.height);
    frame.canvas.setClip(inside);
    for (int row = 0; row < shown; ++row) {
        const auto& line = lines[static_cast<std::size_t>(frame.logScroll + shown - 1 - row)];
        frame.canvas.put(inside.x, inside.y + row, line.time, Style::dim());
        frame.canvas.put(inside.x + timeWidth, inside.y + row, line.text, line.style);
    }
    frame.canvas.clearClip();
}

Frame drawFrame(const PhoneScreen& screen, const InterfaceState& state, Size size) {
    if (size.columns < smallestWindow.columns || size.rows < smallestWindow.rows)
        return tooSmall(size);
    Frame frame{Canvas(size), {}, {}, {}};
    const Area device = deviceArea(screen, size);
    const Area inside = device.inset(1, 1);
    frame.canvas.frame(device, Border::light, {}, deviceTitle(screen));
    // The front alert's targets come first.
    drawHomeScreen(frame, screen, state, inside);
    auto behind = std::exchange(frame.targets, {});
    if (!screen.alerts.empty()) {
        frame.canvas.restyle({inside.x, inside.y + 1, inside.width, inside.height - 1},
                             Style::dim());
        drawAlerts(frame, screen, state, {inside.x, inside.y + 1, inside.width, inside.height - 1});
    }
    std::move(behind.begin(), behind.end(), std::back_inserter(frame.targets));
    drawLog(frame, state, {device.right(), 0, size.columns - device.width, size.rows - 1});
    drawBottomLine(frame, screen, state, {0, size.rows - 1, size.columns, 1});
    const Area whole{0, 0, size.columns, size.rows - 1};
    if (state.overlay == InterfaceState::Overlay::help)
        drawHelp(frame, whole);
    else if (state.overlay == InterfaceState::Overlay::gallery)
        drawGallery(frame, state, whole);
    return frame;
}

} // namespace simulator
