#include "Simulator/Picture/AlertLayout.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace simulator {
namespace {

/// The measures of an alert in one look and place.
struct Metrics {
    double width;
    double textInset; // from the sides
    double top;       // above the texts
    double textGap;   // between them
    double bottom;    // below the texts and the text field
    TextStyle title;
    TextStyle message;
    double buttonInset; // from the sides, and from the lower edge
    double buttonGap;
    double buttonHeight;
    double buttonTextSize;
    double apartGap; // above a button that is set apart
    double fieldHeight;
};

constexpr Metrics glossyView{284, 14, 14, 6, 12, {17, true}, {15}, 10, 7, 42, 17, 0, 31};
constexpr Metrics glossySheet{320, 18, 12, 5, 12, {14}, {14}, 18, 8, 42, 18, 16, 31};
constexpr Metrics glossyPopover{292, 18, 16, 5, 12, {14}, {14}, 14, 7, 42, 17, 0, 31};
constexpr Metrics flatView{270, 16, 19, 4, 18, {17, true}, {13.5}, 0, 0, 44, 17, 0, 26};
constexpr Metrics flatSheet{304, 16, 14, 6, 14, {13}, {13}, 0, 0, 48, 19, 8, 26};
constexpr Metrics flatPopover{292, 16, 14, 6, 14, {13}, {13}, 0, 0, 46, 18, 0, 26};

const Metrics& metricsOf(Look look, AlertPlace place) {
    const bool isGlossy = look == Look::glossy;
    switch (place) {
    case AlertPlace::lowerEdge:
        return isGlossy ? glossySheet : flatSheet;
    case AlertPlace::popover:
        return isGlossy ? glossyPopover : flatPopover;
    case AlertPlace::middle:
        break;
    }
    return isGlossy ? glossyView : flatView;
}

constexpr double lowestAlert = 40; // of one that holds nothing
constexpr double lowestButton = 26;
constexpr double narrowestButton = 60;

/// How buttons share a space: row by row, all of one size.
struct Grid {
    std::size_t columns = 1;
    std::size_t rows = 0;
    std::size_t shown = 0;
    double cellHeight = 0;
    double gap = 0;

    double height() const {
        return rows == 0 ? 0 : static_cast<double>(rows) * (cellHeight + gap) - gap;
    }
};

std::size_t rowsFor(std::size_t count, std::size_t columns) {
    return (count + columns - 1) / columns;
}

Grid grid(std::size_t count, const Metrics& metrics, double width, double height) {
    const double gap = metrics.buttonGap;
    const auto mostRows =
        static_cast<std::size_t>(std::max(1.0, std::floor((height + gap) / (lowestButton + gap))));
    const auto mostColumns = static_cast<std::size_t>(
        std::max(1.0, std::floor((width + gap) / (narrowestButton + gap))));
    std::size_t columns = 1;
    while (columns < mostColumns && rowsFor(count, columns) > mostRows)
        ++columns;
    const std::size_t rows = std::min(mostRows, rowsFor(count, columns));
    if (rows == 0)
        return {};
    const double room = (height + gap) / static_cast<double>(rows) - gap;
    return {columns, rows, std::min(count, rows * columns),
            std::clamp(room, lowestButton, metrics.buttonHeight), gap};
}

class Composer {
public:
    Composer(const ShownAlert& alert, Look look, AlertPlace place, double screenWidth,
             double maximumHeight)
        : alert_(alert), metrics_(metricsOf(look, place)), maximumHeight_(maximumHeight),
          width_(std::min(metrics_.width, screenWidth)) {
        layout_.place = place;
    }

    AlertLayout composed() {
        planButtons();
        addTexts();
        addTextField();
        addButtons();
        layout_.box = {0, 0, width_, std::max(y_, lowestAlert)};
        if (layout_.panels.empty())
            layout_.panels.push_back(layout_.box);
        return std::move(layout_);
    }

private:
    bool hasTextAbove() const { return hasTitle() || hasMessage() || alert_.textField; }
    bool hasTitle() const { return alert_.title && !alert_.title->empty(); }
    bool hasMessage() const { return alert_.message && !alert_.message->empty(); }

    double textWidth() const { return width_ - 2 * metrics_.textInset; }
    double buttonsWidth() const { return width_ - 2 * metrics_.buttonInset; }

    /// What lies around the texts and the buttons.
    double frameHeight() const {
        double height = hasTextAbove() ? metrics_.top + metrics_.bottom : metrics_.buttonInset;
        if (hasTitle() && hasMessage())
            height += metrics_.textGap;
        if (alert_.textField)
            height += metrics_.fieldHeight + metrics_.textGap;
        return height + (alert_.buttons.empty() ? 0 : metrics_.buttonInset);
    }

    TextBlock wrapped(const std::string& text, TextStyle style, double height) const {
        return wrappedText(text, style, {metrics_.textInset, y_, textWidth(), height});
    }

    double heightOf(bool isThere, const std::optional<std::string>& text, TextStyle style) const {
        return isThere && text ? wrapped(*text, style, maximumHeight_).box.height : 0;
    }

    /// The last button of a sheet on a phone stands apart when it is the one that cancels.
    bool isLastApart() const {
        return layout_.place == AlertPlace::lowerEdge && alert_.buttons.size() > 1 &&
               alert_.cancelButtonIndex == alert_.buttons.size() - 1;
    }

    void planButtons() {
        titleHeight_ = heightOf(hasTitle(), alert_.title, metrics_.title);
        messageHeight_ = heightOf(hasMessage(), alert_.message, metrics_.message);
        const double reserve =
            std::min(titleHeight_ + messageHeight_,
                     2 * metrics_.title.lineHeight() + 2 * metrics_.message.lineHeight());
        isLastApart_ = isLastApart();
        const double apart = isLastApart_ ? metrics_.buttonHeight + metrics_.apartGap : 0;
        const double height = maximumHeight_ - frameHeight() - apart - reserve;
        const std::size_t count = alert_.buttons.size() - (isLastApart_ ? 1 : 0);
        if (layout_.place == AlertPlace::middle && count == 2)
            grid_ = {2, 1, 2, metrics_.buttonHeight, metrics_.buttonGap};
        else
            grid_ = grid(count, metrics_, buttonsWidth(), height);
        textHeight_ = maximumHeight_ - frameHeight() - apart - grid_.height();
    }

    void addTexts() {
        if (!hasTextAbove())
            return;
        y_ = metrics_.top;
        if (hasTitle()) {
            const double others =
                std::min(messageHeight_, std::max(textHeight_ / 2, textHeight_ - titleHeight_));
            addText(*alert_.title, metrics_.title, textHeight_ - others);
        }
        if (hasTitle() && hasMessage())
            y_ += metrics_.textGap;
        if (hasMessage())
            addText(*alert_.message, metrics_.message, textHeight_);
    }

    void addText(const std::string& text, TextStyle style, double height) {
        layout_.texts.push_back(wrapped(text, style, height));
        const double used = layout_.texts.back().box.height;
        y_ += used;
        textHeight_ -= used;
    }

    void addTextField() {
        if (alert_.textField) {
            if (hasTitle() || hasMessage())
                y_ += metrics_.textGap;
            const Box box{metrics_.textInset, y_, textWidth(), metrics_.fieldHeight};
            const auto& [text, placeholder] = *alert_.textField;
            const bool isPlaceholder = text.empty();
            layout_.textField = AlertTextField{box,
                                               fittedText(isPlaceholder ? placeholder : text, {14},
                                                          box.inset(7, 2), Alignment::leading, 1),
                                               isPlaceholder};
            y_ += metrics_.fieldHeight;
        }
        y_ += hasTextAbove() ? metrics_.bottom : metrics_.buttonInset;
    }

    void addButtons() {
        if (alert_.buttons.empty())
            return;
        const double cellWidth =
            (buttonsWidth() + grid_.gap) / static_cast<double>(grid_.columns) - grid_.gap;
        for (std::size_t index = 0; index < grid_.shown; ++index) {
            const std::size_t rowIndex = index / grid_.columns;
            const auto row = static_cast<double>(rowIndex);
            const auto column = static_cast<double>(index % grid_.columns);
            addButton(index,
                      {metrics_.buttonInset + column * (cellWidth + grid_.gap),
                       y_ + row * (grid_.cellHeight + grid_.gap), cellWidth, grid_.cellHeight});
        }
        if (grid_.shown + (isLastApart_ ? 1 : 0) < alert_.buttons.size())
            layout_.buttons.back() = {AlertButton::Kind::plain, layout_.buttons.back().box,
                                      buttonTitle("…", layout_.buttons.back().box, false)};
        y_ += grid_.height();
        if (isLastApart_)
            addButtonApart();
        y_ += metrics_.buttonInset;
    }

    /// Flat buttons have no room around them, so one that stands apart needs a panel of its own.
    void addButtonApart() {
        const bool hasOwnPanel = metrics_.buttonInset == 0;
        if (hasOwnPanel)
            layout_.panels.push_back({0, 0, width_, y_});
        y_ += metrics_.apartGap;
        const Box box{metrics_.buttonInset, y_, buttonsWidth(), metrics_.buttonHeight};
        if (hasOwnPanel)
            layout_.panels.push_back(box);
        addButton(alert_.buttons.size() - 1, box);
        y_ += metrics_.buttonHeight;
    }

    void addButton(std::size_t index, Box box) {
        auto kind = AlertButton::Kind::plain;
        if (alert_.cancelButtonIndex == index)
            kind = AlertButton::Kind::cancel;
        else if (alert_.destructiveButtonIndex == index)
            kind = AlertButton::Kind::destructive;
        layout_.buttons.push_back({kind, box,
                                   buttonTitle(alert_.buttons[index].value_or(""), box,
                                               kind == AlertButton::Kind::cancel)});
    }

    TextBlock buttonTitle(const std::string& title, Box box, bool isCancel) const {
        // Glossy buttons are all bold; flat ones only where they cancel.
        const bool isBold = metrics_.buttonInset > 0 || isCancel;
        const TextStyle style{std::min(metrics_.buttonTextSize, box.height * 0.55), isBold};
        return fittedText(title, style, box.inset(6, 2), Alignment::center, 0.7);
    }

    const ShownAlert& alert_;
    const Metrics& metrics_;
    double maximumHeight_;
    double width_;
    AlertLayout layout_;
    Grid grid_;
    bool isLastApart_ = false;
    double titleHeight_ = 0;
    double messageHeight_ = 0;
    double textHeight_ = 0; // that is left for the texts
    double y_ = 0;
};

void move(Box& box, double right, double down) {
    box = box.movedBy(right, down);
}

void move(TextBlock& block, double right, double down) {
    move(block.box, right, down);
    for (TextLine& line : block.lines)
        move(line.box, right, down);
}

} // namespace

Look lookOf(const platform::SystemVersion& system) {
    return system.major < 7 ? Look::glossy : Look::flat;
}

void AlertLayout::moveBy(double right, double down) {
    move(box, right, down);
    for (Box& panel : panels)
        move(panel, right, down);
    for (TextBlock& text : texts)
        move(text, right, down);
    if (textField) {
        move(textField->box, right, down);
        move(textField->text, right, down);
    }
    for (AlertButton& button : buttons) {
        move(button.box, right, down);
        move(button.title, right, down);
    }
    if (arrow)
        move(arrow->box, right, down);
}

AlertLayout alertLayout(const ShownAlert& alert, Look look, AlertPlace place, double screenWidth,
                        double maximumHeight) {
    return Composer(alert, look, place, screenWidth, maximumHeight).composed();
}

} // namespace simulator
