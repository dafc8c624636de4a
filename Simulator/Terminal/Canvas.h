#pragma once

#include "Simulator/Terminal/TerminalText.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct Size {
    int columns = 0;
    int rows = 0;

    bool operator==(const Size&) const = default;
};

/// A rectangle of a terminal's cells.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    bool contains(int column, int row) const {
        return column >= x && column < right() && row >= y && row < bottom();
    }
    /// What is left when that much goes on each side.
    Area inset(int horizontally, int vertically) const {
        return {x + horizontally, y + vertically, width - 2 * horizontally,
                height - 2 * vertically};
    }
    /// The part that both have.
    Area within(const Area& other) const;
};

enum class Color : std::uint8_t { plain, red, green, yellow, blue, cyan };

/// How a cell looks.
struct Style {
    bool isBold = false;
    bool isDim = false;
    bool isReversed = false;
    Color color = Color::plain;

    bool operator==(const Style&) const = default;

    static constexpr Style bold() { return {true, false, false, Color::plain}; }
    static constexpr Style dim() { return {false, true, false, Color::plain}; }
    static constexpr Style reversed() { return {false, false, true, Color::plain}; }
    static constexpr Style colored(Color color) { return {false, false, false, color}; }
};

struct Cell {
    /// Empty for the right half of the wide glyph in the cell before.
    std::u32string characters = U" ";
    Style style;
};

enum class Border { light, heavy, doubled, dashed };

/// A picture made of a terminal's cells.
///
/// What is drawn beyond its edges, or those of the present clip, is not drawn. A wide glyph is
/// drawn whole or not at all, and where half of one would be left a blank takes its place.
class Canvas {
public:
    explicit Canvas(Size size);

    Size size() const { return size_; }
    const Cell& cell(int column, int row) const { return cells_[index(column, row)]; }

    /// Draws only inside of this area from now on.
    void setClip(const Area& clip) { clip_ = clip.within({0, 0, size_.columns, size_.rows}); }
    void clearClip() { setClip({0, 0, size_.columns, size_.rows}); }

    void put(int column, int row, const GlyphLine& line, Style style = {});
    void put(int column, int row, std::string_view text, Style style = {});
    void putCentered(const Area& row, const GlyphLine& line, Style style = {});

    void fill(const Area& area, std::string_view glyph = " ", Style style = {});

    /// Draws the outline of an area, with a title in its upper edge.
    void frame(const Area& area, Border border, Style style = {}, std::string_view title = {});

    /// Gives all that is in an area another style.
    void restyle(const Area& area, Style style);

    /// Copies rows of another canvas, from `firstRow` on, into an area.
    void copy(const Canvas& other, int firstRow, const Area& area);

    /// The lines as plain text.
    std::vector<std::string> lines() const;

private:
    std::size_t index(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(size_.columns) +
               static_cast<std::size_t>(column);
    }
    void set(int column, int row, const std::u32string& characters, int columns, Style style);
    void blankHalves(int column, int row);

    Size size_;
    Area clip_;
    std::vector<Cell> cells_;
};

} // namespace simulator
