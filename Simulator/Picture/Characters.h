#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// What a reader takes for one character: a letter with its marks, a picture with its modifiers.
/// A text is only ever broken between two of them.
struct Cluster {
    std::u32string characters;
    /// The width in a regular sans-serif face, in units of the font's size. Rather too wide than
    /// too narrow, since nobody knows the face that a picture will be drawn with.
    double width = 0;

    bool isSpace() const;
    /// Whether the text may go on in a new line between this and the next one.
    bool mayBreakBefore(const Cluster& next) const;
};

/// The characters of a text. A tab becomes a space; what is not UTF-8, and what no document may
/// hold, becomes U+FFFD. Stops after the given number of characters.
std::u32string decoded(std::string_view text, std::size_t most = std::string_view::npos);

std::string encoded(std::u32string_view characters);

/// Cuts a text into clusters. Marks that would pile up far above or below their letter are left
/// out.
std::vector<Cluster> clusters(std::u32string_view text);

/// Whether the character ends a line.
bool isLineEnd(char32_t character);

/// Whether the first letter of the text belongs to a script that runs from right to left.
bool runsRightToLeft(std::u32string_view text);

} // namespace simulator
