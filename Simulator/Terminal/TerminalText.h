#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// A character as a terminal shows it: a letter with its marks, one or two columns wide.
struct Glyph {
    std::u32string characters;
    int columns = 1;
    bool isSpace = false;
    /// Whether a line may end behind it.
    bool mayBreakAfter = false;
};

using GlyphLine = std::vector<Glyph>;

/// The lines of a text as a terminal can show them, none of which can command the terminal or
/// take other columns than its glyphs say: control characters become their pictures, and what
/// terminals disagree about (joiners, variation selectors, directions, flags) is left out or
/// replaced.
std::vector<GlyphLine> glyphLines(std::string_view text);

/// Breaks a text into lines of at most that many columns. Requires: at least two columns.
std::vector<GlyphLine> wrapped(std::string_view text, int columns);

/// A text on one line, cut with "…" where it is too long. Ends of lines become spaces.
GlyphLine fitted(std::string_view text, int columns);

int columnsOf(const GlyphLine& line);

/// How many columns a text takes that is on one line.
int columnsOf(std::string_view text);

} // namespace simulator
