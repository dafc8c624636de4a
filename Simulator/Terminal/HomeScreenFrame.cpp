#include "Simulator/Terminal/Frame.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

namespace simulator {

namespace {

constexpr int tileHeight = 3;
constexpr int narrowestTile = 16;
constexpr int goodTile = 24;
constexpr int dockHeight = 2;

/// The clock stands at 10:00 when the device's clock stands at zero.
std::string clockText(double time) {
    constexpr int start = 10 * 60 * 60;
    const int second = start + static_cast<int>(std::fmod(std::max(0.0, time), 86400.0));
    char text[40];
    std::snprintf(text, sizeof text, "%d:%02d:%02d", second / 3600 % 24, second / 60 % 60,
                  second % 60);
    return text;
}

bool isFocused(const InterfaceState& state, const TargetId& id) {
    return state.focus == id;
}

/// Three letters for an icon: the capitals of its bundle's name.
std::string iconLetters(const std::string& bundle) {
    const auto slash = bundle.find_last_of('/') + 1;
    const auto name = bundle.substr(slash, bundle.find('.', slash) - slash);
    std::string capitals;
    for (const char letter : name)
        if (letter >= 'A' && letter <= 'Z')
            capitals += letter;
    if (capitals.size() < 2)
        capitals = name;
    return capitals.size() > 3 ? capitals.substr(capitals.size() - 3) : capitals;
}

void drawIcon(Canvas& canvas, const Area& area, const std::optional<std::string>& bundle,
              bool hasFocus, Style style) {
    canvas.frame(area, hasFocus ? Border::heavy : bundle ? Border::light : Border::dashed, style);
    // The icon's name says more than letters without a bundle could.
    const Area letters = area.inset(1, 1);
    canvas.putCentered(letters, fitted(bundle ? iconLetters(*bundle) : "?", letters.width), style);
}

/// The part of the home screen that scrolls: it is drawn as high as it needs to be.
class Content {
public:
    Content(const PhoneScreen& screen, const InterfaceState& state, int width)
        : screen_(screen), state_(state), canvas_({width, heightFor(screen)}) {}

    void draw() {
        if (screen_.isSafeMode)
            note("Safe mode after a crash: no libraries are loaded. r starts it again.");
        drawToggles();
        drawListeners();
        if (screen_.toggles.empty() && screen_.listeners.empty() && !screen_.isSafeMode)
            note("Nothing is registered here.");
    }

    /// Shows as much as there is room for in the area, with what has the focus.
    void showIn(Frame& frame, const Area& area) const {
        int scroll = 0;
        for (const auto& target : targets_)
            if (isFocused(state_, target.id))
                scroll = std::max(0, target.area.bottom() - area.height);
        frame.canvas.copy(canvas_, scroll, area);
        const bool isCut = row_ - scroll > area.height;
        if (scroll > 0)
            frame.canvas.put(area.right() - 1, area.y, "▲", Style::dim());
        if (isCut)
            frame.canvas.put(area.right() - 1, area.bottom() - 1, "▼", Style::dim());
        for (auto target : targets_) {
            target.area.x += area.x;
            target.area.y += area.y - scroll;
            target.area = target.area.within(area);
            frame.targets.push_back(std::move(target));
        }
    }

private:
    static int heightFor(const PhoneScreen& screen) {
        constexpr std::size_t most = 200;
        return 12 + tileHeight * static_cast<int>(std::min(most, screen.toggles.size())) +
               12 * static_cast<int>(std::min(most, screen.listeners.size()));
    }

    void heading(std::string_view text) {
        canvas_.put(0, row_++, text, Style::colored(Color::cyan));
    }

    int paragraph(int column, std::string_view text, std::size_t mostLines, Style style) {
        auto lines = wrapped(text, canvas_.size().columns - column);
        lines.resize(std::min(lines.size(), mostLines));
        for (const auto& line : lines)
            canvas_.put(column, row_++, line, style);
        return static_cast<int>(lines.size());
    }

    void note(std::string_view text) {
        paragraph(0, text, 3, Style::dim());
        ++row_;
    }

    void drawToggles() {
        if (screen_.toggles.empty())
            return;
        heading("Toggles");
        const int room = canvas_.size().columns;
        const int columns = std::max(std::clamp(room / narrowestTile, 1, 2), room / goodTile);
        const int width = room / columns;
        int column = 0;
        for (const auto& toggle : screen_.toggles) {
            drawTile(toggle, {column * width, row_, width, tileHeight});
            column = (column + 1) % columns;
            row_ += column == 0 ? tileHeight : 0;
        }
        row_ += (column == 0 ? 0 : tileHeight) + 1;
    }

    void drawTile(const ShownToggle& toggle, const Area& tile) {
        const TargetId id{TargetId::Kind::toggle, toggle.identifier};
        const bool hasFocus = isFocused(state_, id);
        const Style style = toggle.isEnabled ? Style{} : Style::dim();
        drawIcon(canvas_, {tile.x, tile.y, 5, tileHeight}, toggle.bundle, hasFocus, style);
        const Area text{tile.x + 6, tile.y, tile.width - 7, tileHeight};
        auto lines = wrapped(toggle.title.value_or(toggle.identifier), text.width);
        const std::size_t room = toggle.isEnabled ? tileHeight : tileHeight - 1;
        if (lines.size() > room)
            lines.resize(room);
        canvas_.setClip(text);
        int row = text.y;
        for (const auto& line : lines)
            canvas_.put(text.x, row++, line, hasFocus ? Style::reversed() : style);
        if (!toggle.isEnabled)
            canvas_.put(text.x, row, fitted("disabled", text.width), style);
        canvas_.clearClip();
        targets_.push_back({id, tile});
    }

    void drawListeners() {
        if (screen_.listeners.empty())
            return;
        heading("Gestures");
        for (const auto& listener : screen_.listeners)
            drawListener(listener);
    }

    void drawListener(const ShownListener& listener) {
        const TargetId id{TargetId::Kind::listener, listener.name};
        const bool hasFocus = isFocused(state_, id);
        const int top = row_;
        canvas_.put(0, row_, hasFocus ? "▸" : " ");
        paragraph(2, listener.title.value_or(listener.name), 2,
                  hasFocus ? Style::reversed() : Style::bold());
        if (listener.description)
            paragraph(2, *listener.description, 3, Style::dim());
        const auto gesture = state_.gestures.find(listener.name);
        const bool hasGesture =
            gesture != state_.gestures.end() && gesture->second < gestureNames.size();
        paragraph(2,
                  hasGesture ? std::string("↳ ") + gestureNames[gesture->second]
                             : "(no gesture: a assigns one)",
                  2, hasGesture ? Style::colored(Color::green) : Style::dim());
        targets_.push_back({id, {0, top, canvas_.size().columns, row_ - top}});
        ++row_;
    }

    const PhoneScreen& screen_;
    const InterfaceState& state_;
    Canvas canvas_;
    std::vector<Target> targets_;
    int row_ = 0;
};

void drawStatusBar(Canvas& canvas, const PhoneScreen& screen, const InterfaceState& state,
                   const Area& row) {
    const Style style = Style::reversed();
    canvas.fill(row, " ", style);
    canvas.put(row.x + 1, row.y, "▂▄▆█", style);
    canvas.putCentered(row, fitted(clockText(std::max(screen.time, state.now)), row.width), style);
    const std::string_view lock = screen.isUnlocked ? "unlocked" : "locked";
    canvas.put(row.right() - 1 - static_cast<int>(lock.size()), row.y, lock, style);
}

void drawDock(Frame& frame, const InterfaceState& state, const Area& area) {
    const TargetId id{TargetId::Kind::hostApplication};
    const bool hasFocus = isFocused(state, id);
    frame.canvas.fill({area.x, area.y, area.width, 1}, "─", Style::dim());
    const Area row{area.x, area.y + 1, area.width, 1};
    frame.canvas.putCentered(row, fitted(hasFocus ? "▸(P) Purgo " : " (P) Purgo ", area.width),
                             hasFocus ? Style::reversed() : Style{});
    frame.targets.push_back({id, {row.x + row.width / 2 - 6, row.y, 12, 1}});
}

void drawHostPage(Frame& frame, const PhoneScreen& screen, const InterfaceState& state,
                  const Area& area) {
    auto& canvas = frame.canvas;
    const TargetId id{TargetId::Kind::home};
    canvas.putCentered({area.x, area.y, area.width, 1}, fitted("Purgo", area.width), Style::bold());
    canvas.put(area.x + 1, area.y, "‹ Home", isFocused(state, id) ? Style::reversed() : Style{});
    frame.targets.push_back({id, {area.x, area.y, 8, 1}});
    canvas.fill({area.x, area.y + 1, area.width, 1}, "─", Style::dim());
    drawIcon(canvas, {area.x + area.width / 2 - 3, area.y + 3, 7, 3}, "P", false, {});
    const auto text =
        screen.hostApplicationURL
            ? "The host application has taken the cleanup over. It was opened with\n\n" +
                  *screen.hostApplicationURL
            : std::string("The host application was opened by its icon.");
    int row = area.y + 7;
    for (const auto& line : wrapped(text, area.width - 4))
        canvas.put(area.x + 2, row++, line);
}

} // namespace

void drawHomeScreen(Frame& frame, const PhoneScreen& screen, const InterfaceState& state,
                    const Area& area) {
    frame.canvas.setClip(area);
    drawStatusBar(frame.canvas, screen, state, {area.x, area.y, area.width, 1});
    const Area below{area.x, area.y + 1, area.width, area.height - 1};
    if (screen.hostApplicationURL || state.isHostApplicationOpen) {
        drawHostPage(frame, screen, state, below);
    } else {
        Content content(screen, state, area.width - 2);
        content.draw();
        content.showIn(frame, {below.x + 1, below.y, below.width - 2, below.height - dockHeight});
        drawDock(frame, state, {below.x, below.bottom() - dockHeight, below.width, dockHeight});
    }
    frame.canvas.clearClip();
}

} // namespace simulator
