#include "Simulator/Picture/Typesetting.h"

#include "Simulator/Picture/Characters.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace simulator {
namespace {

using Clusters = std::span<const Cluster>;

constexpr const char* ellipsis = "…";

/// How much wider a bold face is than the regular one.
double widthScale(TextStyle style) {
    return style.size * (style.isBold ? 1.18 : 1);
}

double widthOf(Clusters clusters) {
    double width = 0;
    for (const Cluster& cluster : clusters)
        width += cluster.width;
    return width;
}

std::string textOf(Clusters clusters) {
    std::u32string characters;
    for (const Cluster& cluster : clusters)
        characters += cluster.characters;
    return encoded(characters);
}

Clusters withoutSpacesAtTheEnd(Clusters line) {
    while (!line.empty() && line.back().isSpace())
        line = line.first(line.size() - 1);
    return line;
}

/// How many clusters make up the first line: as many as fit, back to the last place where the line
/// may end, if there is one. Spaces at the end of a line need no room.
std::size_t lengthOfLine(Clusters text, double limit) {
    std::size_t lastBreak = 0;
    double width = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (index > 0 && text[index - 1].mayBreakBefore(text[index]))
            lastBreak = index;
        width += text[index].width;
        if (width > limit && index > 0 && !text[index].isSpace())
            return lastBreak > 0 ? lastBreak : index;
    }
    return text.size();
}

/// The beginning of a text with an ellipsis behind it, not wider than the limit.
std::string cutText(Clusters text, double limit) {
    const double room = limit - textWidth(ellipsis, {1, false});
    double width = 0;
    std::size_t count = 0;
    while (count < text.size() && width + text[count].width <= room)
        width += text[count++].width;
    return textOf(withoutSpacesAtTheEnd(text.first(count))) + ellipsis;
}

/// More characters than anybody can see of a text in this room, so that no time goes into the rest
/// of a very long one. A text of nothing but narrow letters with marks comes closest.
std::size_t moreThanFit(double width, double lines) {
    constexpr double narrowest = 0.25;
    constexpr double charactersOfCluster = 3;
    const double charactersOfLine = (width / narrowest + 2) * charactersOfCluster;
    return static_cast<std::size_t>(std::min(1e6, charactersOfLine * lines));
}

/// A text's paragraphs; a carriage return with a line feed behind it ends only one.
std::vector<std::u32string> paragraphs(const std::u32string& text) {
    std::vector<std::u32string> result(1);
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '\n' && index > 0 && text[index - 1] == '\r')
            continue;
        if (isLineEnd(text[index]))
            result.emplace_back();
        else
            result.back().push_back(text[index]);
    }
    return result;
}

/// Puts lines into a box, from its upper edge on.
class Composer {
public:
    Composer(TextStyle style, Box box, Alignment alignment) {
        block_.style = style;
        block_.alignment = alignment;
        block_.box = {box.x, box.y, box.width, 0};
        lineLimit_ = std::max(1.0, std::floor(box.height / style.lineHeight() + 0.001));
        widthLimit_ = box.width / widthScale(style);
    }

    /// Sets as much of the text as there is room for.
    void add(std::string_view text) {
        const std::size_t most = moreThanFit(widthLimit_, lineLimit_);
        const std::u32string characters = decoded(text, most);
        isWhole_ = characters.size() < most;
        const auto all = paragraphs(characters);
        for (std::size_t index = 0; index < all.size() && !isFull(); ++index)
            addParagraph(all[index], index + 1 == all.size());
        if (!isWhole_ && !isFull())
            addLine(ellipsis, false);
    }

    TextBlock block() const { return block_; }

private:
    bool isFull() const { return static_cast<double>(block_.lines.size()) >= lineLimit_; }

    void addParagraph(const std::u32string& paragraph, bool isLast) {
        const std::vector<Cluster> all = clusters(paragraph);
        const bool isRightToLeft = runsRightToLeft(paragraph);
        Clusters rest = all;
        do {
            const std::size_t length = lengthOfLine(rest, widthLimit_);
            const bool isCut = isOnLastLine() && (length < rest.size() || !isLast || !isWhole_);
            const Clusters line = withoutSpacesAtTheEnd(rest.first(length));
            addLine(isCut ? cutText(rest.first(length), widthLimit_) : textOf(line), isRightToLeft);
            rest = rest.subspan(length);
        } while (!rest.empty() && !isFull());
    }

    bool isOnLastLine() const { return static_cast<double>(block_.lines.size()) + 1 >= lineLimit_; }

    void addLine(std::string text, bool isRightToLeft) {
        const double room = block_.box.width;
        // A single character may be wider than any line. It is clipped when it is drawn.
        const double width = std::min(room, textWidth(text, block_.style));
        const double free = room - width;
        const double indent = block_.alignment == Alignment::center ? free / 2
                              : isRightToLeft                       ? free
                                                                    : 0;
        const double height = block_.style.lineHeight();
        block_.lines.push_back({{block_.box.x + indent, block_.box.bottom(), width, height},
                                std::move(text),
                                isRightToLeft});
        block_.box.height += height;
    }

    TextBlock block_;
    double lineLimit_ = 1;
    double widthLimit_ = 0;
    bool isWhole_ = true; // whether the text is known to its end
};

} // namespace

double textWidth(std::string_view text, TextStyle style) {
    return widthOf(clusters(decoded(text))) * widthScale(style);
}

TextBlock wrappedText(std::string_view text, TextStyle style, Box box, Alignment alignment) {
    Composer composer(style, box, alignment);
    if (!text.empty())
        composer.add(text);
    return composer.block();
}

TextBlock fittedText(std::string_view text, TextStyle style, Box box, Alignment alignment,
                     double smallestScale) {
    const double narrowest = style.size * smallestScale;
    std::u32string characters = decoded(text, moreThanFit(box.width / narrowest, 1));
    std::replace_if(characters.begin(), characters.end(), isLineEnd, U' ');
    const std::string line = encoded(characters);
    const double width = textWidth(line, style);
    if (width > box.width)
        style.size *= std::max(smallestScale, box.width / width * 0.999);
    const double height = std::min(box.height, style.lineHeight());
    const Box middle{box.x, box.centerY() - height / 2, box.width, height};
    // One word more than fits would be lost with the break before it, so it is cut by characters.
    const auto all = clusters(characters);
    const double limit = box.width / widthScale(style);
    const std::string fitting = widthOf(all) > limit ? cutText(all, limit) : line;
    return wrappedText(fitting, style, middle, alignment);
}

} // namespace simulator
