#include "Simulator/Terminal/Frame.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace simulator {

namespace {

constexpr int fewestTextRows = 3;

bool isPad(const PhoneScreen& screen) {
    return screen.idiom == platform::UserInterfaceIdiom::pad;
}

/// What a button is called, with the digit that presses it.
std::string label(const ShownAlert& alert, std::size_t index) {
    const auto digit = index < 9 ? std::to_string(index + 1) : " ";
    return digit + " " + alert.buttons[index].value_or("(no title)");
}

std::string markOf(const ShownAlert& alert, std::size_t index) {
    if (alert.cancelButtonIndex == index)
        return "cancel";
    return alert.destructiveButtonIndex == index ? "destructive" : "";
}

/// Where an alert may lie, and how.
struct Room {
    Area area;
    int width = 0;
    bool isPopover = false;
};

/// An alert that is laid out: first measured, then placed, then drawn.
class AlertView {
public:
    AlertView(const ShownAlert& alert, const InterfaceState& state, const Room& room)
        : alert_(alert), state_(state), width_(room.width) {
        readText();
        isSideBySide_ =
            !alert.isSheet() && alert.buttons.size() == 2 && fitsInHalf(0) && fitsInHalf(1);
        const int most = room.area.height;
        const int count = static_cast<int>(alert.buttons.size());
        const int frames = 2 + (alert.textField ? 1 : 0);
        textRows_ = static_cast<int>(text_.size());
        buttonRows_ = isSideBySide_ ? 1 : count;
        // First the lines between the buttons go, then text, then buttons.
        areSpaced_ = !isSideBySide_ && count > 1 && frames + textRows_ + 2 * count <= most;
        const int separators = areSpaced_ ? count : std::min(count, 1);
        const int rest = most - frames - separators;
        textRows_ = std::clamp(rest - buttonRows_, std::min(fewestTextRows, textRows_), textRows_);
        buttonRows_ = std::clamp(rest - textRows_, std::min(1, buttonRows_), buttonRows_);
        height_ = std::min(most, frames + separators + textRows_ + buttonRows_);
    }

    int width() const { return width_; }
    int height() const { return height_; }

    void draw(Frame& frame, const Area& area, const std::string& title, bool isFront) {
        auto& canvas = frame.canvas;
        canvas.setClip(area);
        const Style style = isFront ? Style{} : Style::dim();
        canvas.fill(area, " ", style);
        canvas.frame(area, alert_.isSheet() ? Border::light : Border::doubled, style, title);
        int row = area.y + 1;
        drawText(frame, {area.x + 2, row, area.width - 4, textRows_}, isFront, style);
        row += textRows_;
        if (alert_.textField)
            drawField(frame, {area.x + 2, row++, area.width - 4, 1}, isFront);
        if (isSideBySide_)
            drawPair(frame, {area.x, row, area.width, 2}, isFront);
        else if (!alert_.buttons.empty())
            drawList(frame, {area.x, row, area.width, area.bottom() - 1 - row}, isFront);
        canvas.clearClip();
    }

private:
    void readText() {
        for (auto& line : wrapped(alert_.title.value_or(""), width_ - 4))
            if (alert_.title)
                text_.push_back(std::move(line));
        titleRows_ = static_cast<int>(text_.size());
        if (alert_.message)
            for (auto& line : wrapped(*alert_.message, width_ - 4))
                text_.push_back(std::move(line));
    }

    std::string wholeLabel(std::size_t index) const {
        const auto mark = markOf(alert_, index);
        return label(alert_, index) + (mark.empty() ? "" : " (" + mark + ")");
    }
    bool fitsInHalf(std::size_t index) const {
        return columnsOf(wholeLabel(index)) + 2 <= (width_ - 3) / 2;
    }
    TargetId button(std::size_t index) const {
        return {TargetId::Kind::button, "", alert_.id, index};
    }

    void drawText(Frame& frame, const Area& area, bool isFront, Style style) {
        const int most = static_cast<int>(text_.size()) - textRows_;
        const int scroll = isFront ? std::clamp(state_.textScroll, 0, most) : 0;
        for (int row = 0; row < textRows_; ++row) {
            const int line = row + scroll;
            Style lineStyle = style;
            lineStyle.isBold = line < titleRows_;
            frame.canvas.putCentered({area.x, area.y + row, area.width, 1},
                                     text_[static_cast<std::size_t>(line)], lineStyle);
        }
        if (!isFront)
            return;
        frame.textScroll = scroll;
        frame.isTextCut = most > 0;
        if (scroll > 0)
            frame.canvas.put(area.right(), area.y, "▲");
        if (scroll < most)
            frame.canvas.put(area.right(), area.y + textRows_ - 1, "▼");
    }

    void drawField(Frame& frame, const Area& row, bool isFront) {
        const TargetId id{TargetId::Kind::textField, "", alert_.id};
        const bool hasFocus = isFront && state_.focus == id;
        const auto& field = *alert_.textField;
        frame.canvas.put(row.x, row.y, "[");
        frame.canvas.put(row.right() - 1, row.y, "]");
        const Area inside = row.inset(1, 0);
        if (hasFocus && state_.fieldText)
            drawDraft(frame, *state_.fieldText, inside, Style::reversed());
        else if (field.text.empty())
            frame.canvas.put(inside.x, row.y, fitted(field.placeholder, inside.width),
                             Style::dim());
        else
            frame.canvas.put(inside.x, row.y, fitted(field.text, inside.width));
        if (isFront)
            frame.targets.push_back({id, row});
    }

    Style buttonStyle(std::size_t index, bool isFront) const {
        Style style;
        style.isDim = !isFront;
        style.isBold = alert_.cancelButtonIndex == index;
        style.isReversed = isFront && state_.focus == button(index);
        if (alert_.destructiveButtonIndex == index)
            style.color = Color::red;
        return style;
    }

    void drawSeparator(Frame& frame, const Area& row, std::string_view glyph, bool isFront) {
        frame.canvas.fill({row.x + 1, row.y, row.width - 2, 1}, glyph,
                          isFront ? Style{} : Style::dim());
    }

    void drawButton(Frame& frame, std::size_t index, const Area& row, bool isFront,
                    std::string_view mark) {
        const auto style = buttonStyle(index, isFront);
        auto& canvas = frame.canvas;
        const int markWidth = mark.empty() ? 0 : static_cast<int>(mark.size()) + 1;
        canvas.fill(row, " ", style);
        canvas.put(row.x, row.y, style.isReversed ? "▸" : " ", style);
        const auto text = mark.empty() && isSideBySide_ ? wholeLabel(index) : label(alert_, index);
        canvas.put(row.x + 1, row.y, fitted(text, std::max(1, row.width - 2 - markWidth)), style);
        canvas.put(row.right() - markWidth, row.y, mark, style);
        if (isFront)
            frame.targets.push_back({button(index), row});
    }

    void drawPair(Frame& frame, const Area& area, bool isFront) {
        drawSeparator(frame, area, "─", isFront);
        const int half = (area.width - 3) / 2;
        const Area left{area.x + 1, area.y + 1, half, 1};
        drawButton(frame, 0, left, isFront, "");
        frame.canvas.put(left.right(), left.y, "│");
        drawButton(frame, 1, {left.right() + 1, left.y, area.width - 3 - half, 1}, isFront, "");
    }

    std::size_t firstShownButton() const {
        const auto shown = static_cast<std::size_t>(buttonRows_);
        const auto focused = state_.focus && state_.focus->kind == TargetId::Kind::button &&
                                     state_.focus->alert == alert_.id
                                 ? state_.focus->index
                                 : 0;
        return focused < shown ? 0 : focused + 1 - shown;
    }

    void drawList(Frame& frame, const Area& area, bool isFront) {
        const auto first = firstShownButton();
        int row = area.y;
        for (std::size_t index = 0; index < alert_.buttons.size(); ++index) {
            const bool isShown =
                index >= first && index < first + static_cast<std::size_t>(buttonRows_);
            if (!isShown) {
                if (isFront)
                    frame.targets.push_back({button(index), {}});
                continue;
            }
            const bool isApart = alert_.isSheet() && alert_.cancelButtonIndex == index;
            if (index == first || areSpaced_)
                drawSeparator(frame, {area.x, row++, area.width, 1}, isApart ? "═" : "─", isFront);
            drawButton(frame, index, {area.x + 1, row++, area.width - 2, 1}, isFront,
                       markOf(alert_, index));
        }
        if (first > 0)
            frame.canvas.put(area.right() - 1, area.y + 1, "▲");
        if (first + static_cast<std::size_t>(buttonRows_) < alert_.buttons.size())
            frame.canvas.put(area.right() - 1, row - 1, "▼");
    }

    const ShownAlert& alert_;
    const InterfaceState& state_;
    int width_;
    int height_ = 0;
    std::vector<GlyphLine> text_;
    int titleRows_ = 0;
    int textRows_ = 0;
    int buttonRows_ = 0;
    bool isSideBySide_ = false;
    bool areSpaced_ = false;
};

/// A point of the device's screen as a cell of the area that stands for it.
CursorPosition cellAt(const platform::CGRect& rect, const PhoneScreen& screen, const Area& area) {
    const double width = isPad(screen) ? 768 : 320;
    const double height = isPad(screen) ? 1024 : 480;
    const auto place = [](double value, double whole, int cells) {
        const double part = std::isfinite(value) ? std::clamp(value / whole, 0.0, 1.0) : 0.5;
        return std::min(cells - 1, static_cast<int>(part * cells));
    };
    return {area.x + place(static_cast<double>(rect.x + rect.width / 2), width, area.width),
            area.y + place(static_cast<double>(rect.y + rect.height / 2), height, area.height)};
}

/// What a popover points at, in words.
std::string anchorText(const ShownAnchor& anchor) {
    const auto& kind = anchor.kind;
    const std::string name = kind == "barButtonItem" ? "bar button item"
                             : kind == "tabBar"      ? "tab bar"
                                                     : kind;
    return " at a " + name + (anchor.rect ? ", rectangle" : "");
}

/// Places a popover beside what it points at, and draws its arrow on its edge.
void drawPopover(Frame& frame, const ShownAlert& alert, AlertView& view, const PhoneScreen& screen,
                 const Area& area, const std::string& title, bool isFront) {
    const bool isBarButton = alert.anchor && alert.anchor->kind != "view" && !alert.anchor->rect;
    CursorPosition anchor{area.x + area.width / 2, area.y + area.height / 2};
    if (alert.anchor && alert.anchor->rect)
        anchor = cellAt(*alert.anchor->rect, screen, area);
    else if (isBarButton)
        anchor = {area.right() - 4, area.y};
    const bool isBelow = anchor.row + 1 + view.height() <= area.bottom();
    const int top = isBelow ? anchor.row + 1 : std::max(area.y, anchor.row - view.height());
    const int left =
        std::clamp(anchor.column - view.width() / 2, area.x, area.right() - view.width());
    const Area box{left, std::min(top, area.bottom() - view.height()), view.width(), view.height()};
    view.draw(frame, box, "", isFront);
    if (isBarButton)
        frame.canvas.put(anchor.column - 2, anchor.row, "[•••]", Style::bold());
    // The title stands on the other edge than the arrow.
    const bool isBeside = anchor.row < box.y || anchor.row >= box.bottom();
    const bool hasArrowBelow = isBeside && !isBelow;
    const Style style = isFront ? Style{} : Style::dim();
    const auto words = title + (alert.anchor ? anchorText(*alert.anchor) : "");
    frame.canvas.put(box.x + 2, hasArrowBelow ? box.y : box.bottom() - 1,
                     fitted(" " + words + " ", box.width - 4), style);
    if (isBeside)
        frame.canvas.put(std::clamp(anchor.column, box.x + 1, box.right() - 2),
                         hasArrowBelow ? box.bottom() - 1 : box.y, hasArrowBelow ? "▼" : "▲",
                         style);
}

Room roomFor(const ShownAlert& alert, const PhoneScreen& screen, const Area& area) {
    constexpr int widestAlert = 46;
    constexpr int widestPopover = 40;
    if (!alert.isSheet())
        return {area, std::min(widestAlert, area.width - 2), false};
    return isPad(screen) ? Room{area, std::min(widestPopover, area.width - 4), true}
                         : Room{area, area.width, false};
}

} // namespace

void drawAlerts(Frame& frame, const PhoneScreen& screen, const InterfaceState& state,
                const Area& area) {
    const auto count = screen.alerts.size();
    // Those behind look out above the ones in front of them.
    constexpr std::size_t mostBehind = 3;
    for (auto behind = std::min(count, mostBehind + 1); behind-- > 0;) {
        const auto& alert = screen.alerts[behind];
        const bool isFront = behind == 0;
        const auto room = roomFor(alert, screen, area);
        AlertView view(alert, state, room);
        const auto title =
            alert.control +
            (count > 1 ? ", " + std::to_string(behind + 1) + " of " + std::to_string(count) : "");
        if (room.isPopover) {
            drawPopover(frame, alert, view, screen, area, title, isFront);
            continue;
        }
        const int middle = alert.isSheet() ? area.bottom() - view.height()
                                           : area.y + (area.height - view.height()) / 2;
        const int top = std::max(area.y, middle - 2 * static_cast<int>(behind));
        const int left = area.x + (area.width - view.width()) / 2;
        view.draw(frame, {left, top, view.width(), view.height()}, title, isFront);
    }
}

} // namespace simulator
