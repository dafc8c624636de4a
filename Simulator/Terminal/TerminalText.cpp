#include "Simulator/Terminal/TerminalText.h"

#include "Simulator/Picture/Characters.h"

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <iterator>
#include <utility>

namespace simulator {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr std::size_t mostCharacters = 4; // of a glyph; terminals store few

/// The system's table of widths, whatever the locale of the process is.
int systemWidth(char32_t character) {
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const locale_t before = uselocale(unicode);
    const int width = wcwidth(static_cast<wchar_t>(character));
    uselocale(before);
    return width;
}

bool isIn(char32_t character, char32_t first, char32_t last) {
    return character >= first && character <= last;
}

/// What changes the width or the direction of its neighbours, each terminal in its own way.
bool isDisputed(char32_t character) {
    return isIn(character, 0x200B, 0x200F) || isIn(character, 0x2028, 0x202E) ||
           isIn(character, 0x2060, 0x206F) || isIn(character, 0xFE00, 0xFE0F) ||
           isIn(character, 0x1F3FB, 0x1F3FF) || isIn(character, 0xE0000, 0xE0FFF) ||
           character == 0xFEFF || character == 0x00AD || character == 0x061C;
}

/// A regional indicator as the letter that it stands for: two of them are a flag here, not there.
char32_t withoutFlags(char32_t character) {
    return isIn(character, 0x1F1E6, 0x1F1FF) ? U'A' + (character - 0x1F1E6) : character;
}

/// Control characters as their pictures; ends of lines and tabs stay.
std::string withPictures(std::string_view text) {
    std::string result;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte == 0x7F)
            result += "␡";
        else if (byte < 0x20 && character != '\n' && character != '\r' && character != '\t')
            result.append("\xE2\x90").push_back(static_cast<char>(0x80 + byte));
        else
            result += character;
    }
    return result;
}

void append(GlyphLine& line, char32_t character) {
    character = withoutFlags(character);
    if (isDisputed(character))
        return;
    const int width = systemWidth(character);
    const bool isMark = width == 0 && !line.empty() && !line.back().isSpace;
    if (isMark && line.back().characters.size() < mostCharacters)
        line.back().characters.push_back(character);
    if (width != 0)
        line.push_back({std::u32string(1, width > 0 ? character : replacement), width == 2 ? 2 : 1,
                        false, false});
}

GlyphLine glyphsOf(const std::vector<Cluster>& all) {
    GlyphLine line;
    for (std::size_t index = 0; index < all.size(); ++index) {
        const auto before = line.size();
        for (const char32_t character : all[index].characters)
            append(line, character);
        if (line.size() == before)
            continue;
        line.back().isSpace = all[index].isSpace();
        line.back().mayBreakAfter =
            index + 1 < all.size() && all[index].mayBreakBefore(all[index + 1]);
    }
    return line;
}

std::size_t endOfLine(const GlyphLine& text, std::size_t begin, int columns) {
    std::size_t end = begin;
    std::size_t lastBreak = begin;
    for (int used = 0; end < text.size(); ++end) {
        used += text[end].columns;
        // Spaces may hang over the edge, where nobody sees them.
        if (used > columns && !text[end].isSpace)
            return lastBreak > begin ? lastBreak : std::max(end, begin + 1);
        if (text[end].mayBreakAfter)
            lastBreak = end + 1;
    }
    return end;
}

void wrapInto(std::vector<GlyphLine>& lines, const GlyphLine& text, int columns) {
    std::size_t begin = 0;
    do {
        const auto end = endOfLine(text, begin, columns);
        auto last = end;
        while (last > begin && text[last - 1].isSpace)
            --last;
        const auto at = [&text](std::size_t index) {
            return std::next(text.begin(), static_cast<std::ptrdiff_t>(index));
        };
        lines.emplace_back(at(begin), at(last));
        begin = end;
    } while (begin < text.size());
}

} // namespace

std::vector<GlyphLine> glyphLines(std::string_view text) {
    std::vector<GlyphLine> lines;
    const auto characters = decoded(withPictures(text));
    std::u32string line;
    const auto endLine = [&lines, &line] {
        lines.push_back(glyphsOf(clusters(std::exchange(line, {}))));
    };
    for (std::size_t index = 0; index < characters.size(); ++index) {
        const bool isSecondOfTwo =
            characters[index] == U'\n' && index > 0 && characters[index - 1] == U'\r';
        if (!isLineEnd(characters[index]))
            line += characters[index];
        else if (!isSecondOfTwo)
            endLine();
    }
    endLine();
    return lines;
}

std::vector<GlyphLine> wrapped(std::string_view text, int columns) {
    std::vector<GlyphLine> lines;
    for (const auto& line : glyphLines(text))
        wrapInto(lines, line, columns);
    return lines;
}

GlyphLine fitted(std::string_view text, int columns) {
    GlyphLine all;
    for (const auto& line : glyphLines(text)) {
        if (!all.empty())
            all.push_back({U" ", 1, true, true});
        all.insert(all.end(), line.begin(), line.end());
    }
    if (columnsOf(all) <= columns)
        return all;
    while (!all.empty() && columnsOf(all) > columns - 1)
        all.pop_back();
    all.push_back({U"…", 1, false, false});
    return all;
}

int columnsOf(const GlyphLine& line) {
    int columns = 0;
    for (const auto& glyph : line)
        columns += glyph.columns;
    return columns;
}

int columnsOf(std::string_view text) {
    return columnsOf(fitted(text, 1 << 20));
}

} // namespace simulator
