#include "Simulator/Picture/Characters.h"

#include "Platform/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace simulator {
namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t joiner = 0x200D;

/// The widths of U+0020 to U+007E, in hundredths of the font's size.
constexpr std::array<std::uint8_t, 95> basicWidths = {
    32,  40, 46, 84, 64, 95, 78, 28, 39, 39, 50, 84, 32, 36, 32, 36, //
    64,  64, 64, 64, 64, 64, 64, 64, 64, 64, 34, 34, 84, 84, 84, 53, //
    100, 68, 69, 70, 77, 63, 58, 78, 75, 30, 30, 66, 56, 87, 75, 79,
    60,  79, 70, 64, 61, 73, 68, 99, 69, 61, 69, 39, 36, 39, 84, 50, //
    50,  61, 64, 55, 64, 62, 36, 64, 63, 28, 28, 58, 28, 97, 63, 61,
    64,  64, 41, 52, 39, 63, 59, 82, 59, 59, 52, 64, 34, 64, 84};

struct Range {
    char32_t first;
    char32_t last;
    double width;
};

/// The widths of the other characters. A range that stands earlier goes before a wider one that
/// holds it.
constexpr Range widths[] = {
    {0x00A0, 0x00A0, 0.32},   {0x00A9, 0x00A9, 1.00},   {0x00AE, 0x00AE, 1.00},
    {0x00BC, 0x00BE, 0.98},   {0x00C6, 0x00C6, 0.98},   {0x00E6, 0x00E6, 0.98},
    {0x00EC, 0x00EF, 0.34},   {0x00A1, 0x00BF, 0.65},   {0x00C0, 0x00DE, 0.79},
    {0x00DF, 0x00FF, 0.64},   {0x0152, 0x0153, 1.07},   {0x0174, 0x0174, 0.99},
    {0x01C4, 0x01CC, 1.42},   {0x01F1, 0x01F3, 1.42},   {0x0100, 0x024F, 0.78},
    {0x02A3, 0x02A5, 1.06},   {0x0250, 0x02FF, 0.80},   {0x0370, 0x03AB, 0.86},
    {0x03C9, 0x03C9, 0.84},   {0x03AC, 0x03CD, 0.67},   {0x03CE, 0x03FF, 0.93},
    {0x0409, 0x040A, 1.09},   {0x0416, 0x0416, 1.08},   {0x0428, 0x0429, 1.10},
    {0x042B, 0x042B, 0.90},   {0x042E, 0x042E, 1.10},   {0x0400, 0x042F, 0.87},
    {0x0436, 0x0436, 0.92},   {0x0444, 0x0444, 0.86},   {0x0448, 0x0449, 0.95},
    {0x044B, 0x044B, 0.80},   {0x044E, 0x044E, 0.86},   {0x0459, 0x045A, 0.95},
    {0x0430, 0x045F, 0.72},   {0x0460, 0x052F, 1.15},   {0x0530, 0x058F, 0.90},
    {0x0590, 0x05FF, 0.73},   {0x0627, 0x0627, 0.30},   {0x062F, 0x0632, 0.52},
    {0x0648, 0x0648, 0.52},   {0x0633, 0x0636, 1.22},   {0x069A, 0x069E, 1.25},
    {0x06F0, 0x06F9, 0.60},   {0x0600, 0x0605, 2.10},   {0x0606, 0x06FF, 0.97},
    {0x0700, 0x08FF, 1.10},   {0x0900, 0x097F, 0.90},   {0x0980, 0x0B7F, 1.00},
    {0x0B80, 0x0BFF, 1.50},   {0x0C00, 0x0CFF, 1.20},   {0x0D00, 0x0D7F, 1.60},
    {0x0D80, 0x0DFF, 1.30},   {0x0E00, 0x0EFF, 0.80},   {0x0F00, 0x0FFF, 0.90},
    {0x1000, 0x109F, 1.15},   {0x10A0, 0x10FF, 0.95},   {0x1100, 0x13FF, 1.05},
    {0x1400, 0x167F, 1.15},   {0x1E00, 0x1EFF, 0.85},   {0x1F00, 0x1FFF, 1.00},
    {0x2000, 0x2003, 1.00},   {0x2004, 0x200A, 0.35},   {0x2010, 0x2013, 0.50},
    {0x2018, 0x2019, 0.32},   {0x201C, 0x201D, 0.52},   {0x2020, 0x2024, 0.60},
    {0x2030, 0x2031, 1.75},   {0x2014, 0x206F, 1.00},   {0x2070, 0x20A5, 0.80},
    {0x20A7, 0x20A8, 1.30},   {0x20A6, 0x20CF, 1.00},   {0x2100, 0x218F, 1.30},
    {0x2190, 0x22FF, 1.00},   {0x2500, 0x25FF, 1.00},   {0x2300, 0x2BFF, 1.30},
    {0x2E3A, 0x2E3A, 2.00},   {0x2E3B, 0x2E3B, 3.00},   {0x2C00, 0xA4CF, 1.00},
    {0xAC00, 0xD7FF, 1.00},   {0xF900, 0xFB4F, 1.00},   {0xFDFD, 0xFDFD, 7.30},
    {0xFB50, 0xFDFF, 1.90},   {0xFE10, 0xFE6F, 1.00},   {0xFF61, 0xFFDF, 0.55},
    {0xFF00, 0xFFEF, 1.00},   {0xFFFD, 0xFFFD, 1.05},   {0x12000, 0x1254F, 3.50},
    {0x1B000, 0x1B16F, 1.00}, {0x1D400, 0x1D7FF, 1.10}, {0x20000, 0x3FFFF, 1.00}};

/// For the scripts of which nothing is known here, and for pictures.
constexpr double unknownWidth = 1.3;

/// Marks and formatting characters without a width of their own, in ascending order.
constexpr Range marks[] = {
    {0x00AD, 0x00AD, 0},   {0x0300, 0x036F, 0},   {0x0483, 0x0489, 0}, {0x0591, 0x05BD, 0},
    {0x05BF, 0x05BF, 0},   {0x05C1, 0x05C2, 0},   {0x05C4, 0x05C5, 0}, {0x05C7, 0x05C7, 0},
    {0x0610, 0x061A, 0},   {0x061C, 0x061C, 0},   {0x064B, 0x065F, 0}, {0x0670, 0x0670, 0},
    {0x06D6, 0x06DC, 0},   {0x06DF, 0x06E4, 0},   {0x06E7, 0x06E8, 0}, {0x06EA, 0x06ED, 0},
    {0x0711, 0x0711, 0},   {0x0730, 0x074A, 0},   {0x07A6, 0x07B0, 0}, {0x07EB, 0x07F3, 0},
    {0x0816, 0x082D, 0},   {0x0859, 0x085B, 0},   {0x08D3, 0x08E1, 0}, {0x08E3, 0x08FF, 0},
    {0x0E31, 0x0E31, 0},   {0x0E34, 0x0E3A, 0},   {0x0E47, 0x0E4E, 0}, {0x0EB1, 0x0EB1, 0},
    {0x0EB4, 0x0EBC, 0},   {0x0EC8, 0x0ECE, 0},   {0x0F18, 0x0F19, 0}, {0x0F35, 0x0F35, 0},
    {0x0F37, 0x0F37, 0},   {0x0F39, 0x0F39, 0},   {0x0F71, 0x0F84, 0}, {0x0F86, 0x0F87, 0},
    {0x0F8D, 0x0FBC, 0},   {0x102D, 0x1030, 0},   {0x1032, 0x103A, 0}, {0x103D, 0x103E, 0},
    {0x1058, 0x1059, 0},   {0x1160, 0x11FF, 0},   {0x135D, 0x135F, 0}, {0x17B4, 0x17B5, 0},
    {0x17B7, 0x17BD, 0},   {0x17C6, 0x17C6, 0},   {0x17C9, 0x17D3, 0}, {0x180B, 0x180E, 0},
    {0x1AB0, 0x1AFF, 0},   {0x1DC0, 0x1DFF, 0},   {0x200B, 0x200F, 0}, {0x202A, 0x202E, 0},
    {0x2060, 0x206F, 0},   {0x20D0, 0x20FF, 0},   {0x302A, 0x302D, 0}, {0x3099, 0x309A, 0},
    {0xA66F, 0xA67D, 0},   {0xFE00, 0xFE0F, 0},   {0xFE20, 0xFE2F, 0}, {0xFEFF, 0xFEFF, 0},
    {0x1F3FB, 0x1F3FF, 0}, {0xE0000, 0xE0FFF, 0},
};

bool isMark(char32_t character) {
    const Range* above =
        std::upper_bound(std::begin(marks), std::end(marks), character,
                         [](char32_t value, const Range& range) { return value < range.first; });
    return above != std::begin(marks) && character <= std::prev(above)->last;
}

/// The scripts of India share one plan for their blocks, in which the signs that hang on a letter
/// have fixed places. Most of them are a part of a letter wide.
bool isIndic(char32_t character) {
    return character >= 0x0900 && character < 0x0E00;
}
bool isIndicVirama(char32_t character) {
    return isIndic(character) && character % 0x80 == 0x4D;
}
bool isIndicSign(char32_t character) {
    const char32_t place = character % 0x80;
    return isIndic(character) &&
           (place <= 0x03 || (place >= 0x3C && place <= 0x4D && place != 0x3D) ||
            (place >= 0x51 && place <= 0x57) || place == 0x62 || place == 0x63);
}

bool isRegionalIndicator(char32_t character) {
    return character >= 0x1F1E6 && character <= 0x1F1FF;
}

double widthOf(char32_t character) {
    if (character >= 0x20 && character < 0x7F)
        return basicWidths[character - 0x20] / 100.0;
    if (isMark(character) || isIndicVirama(character))
        return 0;
    const Range* range =
        std::find_if(std::begin(widths), std::end(widths), [character](const Range& each) {
            return character >= each.first && character <= each.last;
        });
    const double width = range == std::end(widths) ? unknownWidth : range->width;
    return isIndicSign(character) ? width * 0.6 : width;
}

/// Scripts that are written without spaces, in which a line may end nearly everywhere.
bool isIdeographic(char32_t character) {
    return (character >= 0x2E80 && character <= 0xA4CF) ||
           (character >= 0xF900 && character <= 0xFAFF) ||
           (character >= 0xFE30 && character <= 0xFE4F) ||
           (character >= 0xFF00 && character <= 0xFFEF) ||
           (character >= 0x1F300 && character <= 0x1FAFF) ||
           (character >= 0x20000 && character <= 0x3FFFF);
}

bool isOneOf(char32_t character, std::u32string_view characters) {
    return characters.find(character) != std::u32string_view::npos;
}

/// What may not begin a line.
bool isClosing(char32_t character) {
    return isOneOf(
        character,
        U"、。，．・：；？！」』）】〕〉》〗〙｝］ーぁぃぅぇぉっゃゅょゎァィゥェォッャュョヮ"
        U"々〜…‥％｡､｣ﾞﾟ,.!?;:)]}%”’»");
}

/// What may not end a line.
bool isOpening(char32_t character) {
    return isOneOf(character, U"「『（【〔〈《〖〘｛［｢([{“‘«");
}

bool isGlue(char32_t character) {
    return isOneOf(character, U"\u00A0\u2007\u202F\u2060\uFEFF");
}

/// Whether a document may hold the character and something is to be seen of it.
bool isAllowed(char32_t character) {
    const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
    return !(isControl && !isLineEnd(character)) && character < 0x110000 &&
           (character < 0xD800 || character > 0xDFFF) && character != 0xFFFE && character != 0xFFFF;
}

/// The length of a UTF-8 sequence by its first byte; 1 also for a byte that begins none.
std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0xC2 || lead > 0xF4)
        return 1;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

char32_t decodedSequence(std::string_view bytes) {
    if (!platform::isValidUTF8(bytes))
        return replacement;
    const auto lead = static_cast<unsigned char>(bytes.front());
    if (bytes.size() == 1)
        return lead;
    char32_t character = lead & (0xFFU >> (bytes.size() + 1));
    for (const char byte : bytes.substr(1))
        character = (character << 6) | (static_cast<unsigned char>(byte) & 0x3FU);
    return character;
}

/// Whether a character belongs to the cluster before it.
bool joins(const std::u32string& cluster, char32_t character) {
    const char32_t last = cluster.back();
    if (isMark(character) || isIndicSign(character) || last == joiner)
        return true;
    if (isIndicVirama(last) && isIndic(character))
        return true;
    return cluster.size() == 1 && isRegionalIndicator(last) && isRegionalIndicator(character);
}

} // namespace

bool Cluster::isSpace() const {
    const char32_t character = characters.front();
    return character == ' ' ||
           (character >= 0x2000 && character <= 0x200A && character != 0x2007) ||
           character == 0x205F || character == 0x3000;
}

bool Cluster::mayBreakBefore(const Cluster& next) const {
    const char32_t last = characters.back();
    const char32_t first = next.characters.front();
    if (next.isSpace() || isGlue(last) || isGlue(first))
        return false;
    if (isSpace() || last == 0x200B)
        return true;
    if (isClosing(first) || isOpening(characters.front()))
        return false;
    if (isIdeographic(characters.front()) || isIdeographic(first))
        return true;
    return isOneOf(last, U"-/?=&\u2010\u2013\u2014") && first != last;
}

std::u32string decoded(std::string_view text, std::size_t most) {
    std::u32string characters;
    while (!text.empty() && characters.size() < most) {
        std::size_t length = sequenceLength(static_cast<unsigned char>(text.front()));
        char32_t character = decodedSequence(text.substr(0, length));
        // Only the first byte is known to be wrong: another character may begin behind it.
        if (character == replacement && length > 1 && text.substr(0, length) != "\uFFFD")
            length = 1;
        if (character == '\t')
            character = ' ';
        else if (!isAllowed(character))
            character = replacement;
        characters.push_back(character);
        text.remove_prefix(length);
    }
    return characters;
}

std::string encoded(std::u32string_view characters) {
    std::string text;
    for (const char32_t character : characters)
        platform::appendUTF8(text, character);
    return text;
}

std::vector<Cluster> clusters(std::u32string_view text) {
    constexpr std::size_t mostCharacters = 12;
    constexpr std::ptrdiff_t mostMarks = 4;
    std::vector<Cluster> result;
    for (const char32_t character : text) {
        const bool isJoined = !result.empty() && !result.back().isSpace() &&
                              result.back().characters.size() < mostCharacters &&
                              joins(result.back().characters, character);
        if (!isJoined && isMark(character) && !result.empty() && !result.back().isSpace())
            continue;
        if (!isJoined) {
            result.push_back({std::u32string(1, character), widthOf(character)});
            continue;
        }
        Cluster& cluster = result.back();
        const auto markCount =
            std::count_if(cluster.characters.begin(), cluster.characters.end(), isMark);
        if (markCount >= mostMarks && isMark(character) && character != joiner)
            continue;
        cluster.characters.push_back(character);
        cluster.width += widthOf(character);
    }
    return result;
}

bool isLineEnd(char32_t character) {
    return (character >= 0x0A && character <= 0x0D) || character == 0x85 || character == 0x2028 ||
           character == 0x2029;
}

bool runsRightToLeft(std::u32string_view text) {
    for (const char32_t character : text) {
        const bool isRightToLeft = (character >= 0x0590 && character <= 0x08FF) ||
                                   (character >= 0xFB1D && character <= 0xFDFF) ||
                                   (character >= 0xFE70 && character <= 0xFEFC) ||
                                   (character >= 0x10800 && character <= 0x10FFF) ||
                                   (character >= 0x1E800 && character <= 0x1EFFF) ||
                                   character == 0x200F;
        if (isRightToLeft)
            return true;
        const bool isLetter = (character >= 'A' && character <= 'Z') ||
                              (character >= 'a' && character <= 'z') ||
                              (character >= 0xC0 && (character < 0x2000 || character > 0x2BFF));
        if (isLetter)
            return false;
    }
    return false;
}

} // namespace simulator
