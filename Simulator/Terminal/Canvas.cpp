#include "Simulator/Terminal/Canvas.h"

#include "Simulator/Picture/Characters.h"

#include <algorithm>

namespace simulator {

namespace {

struct BorderGlyphs {
    std::string_view horizontal, vertical, upperLeft, upperRight, lowerLeft, lowerRight;
};

BorderGlyphs glyphsOf(Border border) {
    switch (border) {
    case Border::heavy:
        return {"━", "┃", "┏", "┓", "┗", "┛"};
    case Border::doubled:
        return {"═", "║", "╔", "╗", "╚", "╝"};
    case Border::dashed:
        return {"┄", "┆", "┌", "┐", "└", "┘"};
    case Border::light:
        break;
    }
    return {"─", "│", "╭", "╮", "╰", "╯"};
}

} // namespace

Area Area::within(const Area& other) const {
    const int left = std::max(x, other.x);
    const int top = std::max(y, other.y);
    return {left, top, std::max(0, std::min(right(), other.right()) - left),
            std::max(0, std::min(bottom(), other.bottom()) - top)};
}

Canvas::Canvas(Size size)
    : size_{std::max(0, size.columns), std::max(0, size.rows)}, clip_{0, 0, size_.columns,
                                                                      size_.rows},
      cells_(index(0, size_.rows)) {}

void Canvas::blankHalves(int column, int row) {
    auto& cell = cells_[index(column, row)];
    if (cell.characters.empty() && column > 0)
        cells_[index(column - 1, row)].characters = U" ";
    if (column + 1 < size_.columns && cells_[index(column + 1, row)].characters.empty())
        cells_[index(column + 1, row)].characters = U" ";
    cell.characters = U" ";
}

void Canvas::set(int column, int row, const std::u32string& characters, int columns, Style style) {
    if (!clip_.contains(column, row) || !clip_.contains(column + columns - 1, row))
        return;
    for (int part = 0; part < columns; ++part)
        blankHalves(column + part, row);
    cells_[index(column, row)] = {characters, style};
    if (columns == 2)
        cells_[index(column + 1, row)] = {U"", style};
}

void Canvas::put(int column, int row, const GlyphLine& line, Style style) {
    for (const auto& glyph : line) {
        set(column, row, glyph.characters, glyph.columns, style);
        column += glyph.columns;
    }
}

void Canvas::put(int column, int row, std::string_view text, Style style) {
    for (const auto& line : glyphLines(text))
        put(column, row++, line, style);
}

void Canvas::putCentered(const Area& row, const GlyphLine& line, Style style) {
    put(row.x + std::max(0, (row.width - columnsOf(line)) / 2), row.y, line, style);
}

void Canvas::fill(const Area& area, std::string_view glyph, Style style) {
    const auto characters = decoded(glyph);
    const auto visible = area.within(clip_);
    for (int row = visible.y; row < visible.bottom(); ++row)
        for (int column = visible.x; column < visible.right(); ++column)
            set(column, row, characters, 1, style);
}

void Canvas::frame(const Area& area, Border border, Style style, std::string_view title) {
    const auto glyphs = glyphsOf(border);
    fill({area.x, area.y, area.width, 1}, glyphs.horizontal, style);
    fill({area.x, area.bottom() - 1, area.width, 1}, glyphs.horizontal, style);
    fill({area.x, area.y, 1, area.height}, glyphs.vertical, style);
    fill({area.right() - 1, area.y, 1, area.height}, glyphs.vertical, style);
    put(area.x, area.y, glyphs.upperLeft, style);
    put(area.right() - 1, area.y, glyphs.upperRight, style);
    put(area.x, area.bottom() - 1, glyphs.lowerLeft, style);
    put(area.right() - 1, area.bottom() - 1, glyphs.lowerRight, style);
    if (!title.empty() && area.width > 6)
        put(area.x + 2, area.y, fitted(" " + std::string(title) + " ", area.width - 4), style);
}

void Canvas::restyle(const Area& area, Style style) {
    const auto visible = area.within(clip_);
    for (int row = visible.y; row < visible.bottom(); ++row)
        for (int column = visible.x; column < visible.right(); ++column)
            cells_[index(column, row)].style = style;
}

void Canvas::copy(const Canvas& other, int firstRow, const Area& area) {
    for (int row = 0; row < area.height && firstRow + row < other.size_.rows; ++row)
        for (int column = 0; column < std::min(area.width, other.size_.columns); ++column) {
            const auto& cell = other.cell(column, firstRow + row);
            const bool isWide = column + 1 < other.size_.columns &&
                                other.cell(column + 1, firstRow + row).characters.empty();
            if (!cell.characters.empty())
                set(area.x + column, area.y + row, cell.characters, isWide ? 2 : 1, cell.style);
        }
}

std::vector<std::string> Canvas::lines() const {
    std::vector<std::string> lines;
    for (int row = 0; row < size_.rows; ++row) {
        std::u32string line;
        for (int column = 0; column < size_.columns; ++column)
            line += cell(column, row).characters;
        lines.push_back(encoded(line));
    }
    return lines;
}

} // namespace simulator
