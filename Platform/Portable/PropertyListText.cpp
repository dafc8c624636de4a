#include "Platform/Portable/PropertyListCursor.h"
#include "Platform/Portable/PropertyListForms.h"
#include "Platform/Text.h"

#include <unordered_map>

namespace platform {

namespace {

using Pairs = std::vector<PropertyListDictionary::Entry>;

/// The NEXTSTEP character set above \177, in which octal escapes are meant.
constexpr char16_t nextstepCharacters[128] = {
    0x00A0, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C7, // \200
    0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD, 0x00CE, 0x00CF, // \210
    0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D9, // \220
    0x00DA, 0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00B5, 0x00D7, 0x00F7, // \230
    0x00A9, 0x00A1, 0x00A2, 0x00A3, 0x2044, 0x00A5, 0x0192, 0x00A7, // \240
    0x00A4, 0x2019, 0x201C, 0x00AB, 0x2039, 0x203A, 0xFB01, 0xFB02, // \250
    0x00AE, 0x2013, 0x2020, 0x2021, 0x00B7, 0x00A6, 0x00B6, 0x2022, // \260
    0x201A, 0x201E, 0x201D, 0x00BB, 0x2026, 0x2030, 0x00AC, 0x00BF, // \270
    0x00B9, 0x02CB, 0x00B4, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, // \300
    0x00A8, 0x00B2, 0x02DA, 0x00B8, 0x00B3, 0x02DD, 0x02DB, 0x02C7, // \310
    0x2014, 0x00B1, 0x00BC, 0x00BD, 0x00BE, 0x00E0, 0x00E1, 0x00E2, // \320
    0x00E3, 0x00E4, 0x00E5, 0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB, // \330
    0x00EC, 0x00C6, 0x00ED, 0x00AA, 0x00EE, 0x00EF, 0x00F0, 0x00F1, // \340
    0x0141, 0x00D8, 0x0152, 0x00BA, 0x00F2, 0x00F3, 0x00F4, 0x00F5, // \350
    0x00F6, 0x00E6, 0x00F9, 0x00FA, 0x00FB, 0x0131, 0x00FC, 0x00FD, // \360
    0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x00FF, 0xFFFD, 0xFFFD, // \370
};

constexpr std::string_view lineSeparator = "\xE2\x80\xA8";
constexpr std::string_view paragraphSeparator = "\xE2\x80\xA9";

bool isASCIISpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

bool isLineEnd(char character) {
    return character == '\n' || character == '\r';
}

bool isWordCharacter(char character) {
    return isLetter(character) || isDecimalDigit(character) ||
           std::string_view("_$/:.-").find(character) != std::string_view::npos;
}

bool isQuote(char character) {
    return character == '"' || character == '\'';
}

bool isOctalDigit(char character) {
    return character >= '0' && character <= '7';
}

bool isHexadecimalDigit(char character) {
    return hexadecimalDigit(character) >= 0;
}

/// Reads old-style text by recursive descent. A null pointer refuses the file at every level.
class TextReader {
public:
    explicit TextReader(std::string_view text) : cursor_(text) {}

    PropertyListPointer readRoot();

private:
    PropertyListPointer readBracelessRoot();
    PropertyListPointer readValue(int nesting);
    PropertyListPointer readDictionary(int nesting);
    bool readPairs(Pairs& pairs, int nesting);
    PropertyListPointer readRestOfPair(const PropertyListPointer& key, int nesting);
    PropertyListPointer readArray(int nesting);
    PropertyListPointer readData();

    bool isAtString() const { return cursor_.isAt(isWordCharacter) || cursor_.isAt(isQuote); }
    PropertyListPointer readString();
    PropertyListPointer readQuotedString(char quote);
    PropertyListPointer makeString(std::string text);
    void readEscape(std::string& to, UTF16Appender& units);
    char16_t readHexadecimalUnit();
    char32_t readOctalCharacter(char firstDigit);

    void skipSpace();
    bool consumeSeparator();
    void skipLine();

    PropertyListCursor cursor_;
    std::unordered_map<std::string, PropertyListPointer> shortStrings_;
};

PropertyListPointer TextReader::readRoot() {
    skipSpace();
    if (!cursor_.consume('{'))
        return readBracelessRoot();
    PropertyListPointer root = readDictionary(1);
    skipSpace();
    return cursor_.isAtEnd() ? root : nullptr;
}

PropertyListPointer TextReader::readBracelessRoot() {
    Pairs pairs;
    if (!readPairs(pairs, 1))
        return nullptr;
    // The phone keeps the pairs of a strings file that has something else behind them.
    return cursor_.isAtEnd() || !pairs.empty() ? makeDictionary(std::move(pairs)) : nullptr;
}

PropertyListPointer TextReader::readValue(int nesting) {
    if (cursor_.consume('{'))
        return readDictionary(nesting);
    if (cursor_.consume('('))
        return readArray(nesting);
    if (cursor_.consume('<'))
        return readData();
    return readString();
}

PropertyListPointer TextReader::readDictionary(int nesting) {
    Pairs pairs;
    if (nesting > maximumPropertyListNesting || !readPairs(pairs, nesting))
        return nullptr;
    return cursor_.consume('}') ? makeDictionary(std::move(pairs)) : nullptr;
}

/// Reads pairs up to something that cannot begin a key; false when a pair is broken.
bool TextReader::readPairs(Pairs& pairs, int nesting) {
    for (skipSpace(); isAtString(); skipSpace()) {
        const PropertyListPointer key = readString();
        if (!key)
            return false;
        PropertyListPointer value = readRestOfPair(key, nesting);
        if (!value)
            return false;
        pairs.push_back({textOf(key), std::move(value)});
    }
    return true;
}

PropertyListPointer TextReader::readRestOfPair(const PropertyListPointer& key, int nesting) {
    skipSpace();
    if (cursor_.consume(';'))
        return key;
    if (!cursor_.consume('='))
        return nullptr;
    skipSpace();
    PropertyListPointer value = readValue(nesting + 1);
    skipSpace();
    return cursor_.consume(';') ? value : nullptr;
}

PropertyListPointer TextReader::readArray(int nesting) {
    if (nesting > maximumPropertyListNesting)
        return nullptr;
    PropertyListArray elements;
    skipSpace();
    while (!cursor_.consume(')')) {
        PropertyListPointer element = readValue(nesting + 1);
        if (!element)
            return nullptr;
        elements.push_back(std::move(element));
        skipSpace();
        if (!cursor_.consume(',') && !cursor_.isAt(')'))
            return nullptr;
        skipSpace();
    }
    return makePropertyList(std::move(elements));
}

PropertyListPointer TextReader::readData() {
    PropertyListData bytes;
    while (!cursor_.consume('>')) {
        if (cursor_.isAt(isASCIISpace) || consumeSeparator()) {
            cursor_.takeWhile(isASCIISpace);
            continue;
        }
        if (!cursor_.isAt(isHexadecimalDigit))
            return nullptr;
        const int upper = hexadecimalDigit(cursor_.take());
        if (!cursor_.isAt(isHexadecimalDigit))
            return nullptr;
        bytes.push_back(static_cast<std::uint8_t>(upper << 4 | hexadecimalDigit(cursor_.take())));
    }
    return makePropertyList(std::move(bytes));
}

PropertyListPointer TextReader::readString() {
    if (cursor_.isAt(isQuote))
        return readQuotedString(cursor_.take());
    const std::string_view word = cursor_.takeWhile(isWordCharacter);
    return word.empty() ? nullptr : makeString(std::string(word));
}

PropertyListPointer TextReader::readQuotedString(char quote) {
    std::string text;
    UTF16Appender units(text);
    while (!cursor_.isAtEnd()) {
        const char character = cursor_.take();
        if (character == '\\') {
            readEscape(text, units);
            continue;
        }
        units.finish();
        if (character == quote)
            return makeString(std::move(text));
        text += character;
    }
    return nullptr;
}

/// Shares the shortest strings, as a value takes many times the memory of a word of one letter.
PropertyListPointer TextReader::makeString(std::string text) {
    constexpr std::size_t longestShared = 2;
    if (text.size() > longestShared)
        return makePropertyList(std::move(text));
    PropertyListPointer& shared = shortStrings_[text];
    if (!shared)
        shared = makePropertyList(std::move(text));
    return shared;
}

/// Reads what follows a backslash; at the end of the file nothing does, and the string is refused
/// for its missing quote.
void TextReader::readEscape(std::string& to, UTF16Appender& units) {
    if (cursor_.consume('U')) {
        units.append(readHexadecimalUnit());
        return;
    }
    units.finish();
    if (cursor_.isAtEnd())
        return;
    const char character = cursor_.take();
    if (isOctalDigit(character)) {
        appendUTF8(to, readOctalCharacter(character));
        return;
    }
    constexpr std::string_view letters = "abfnrtv";
    constexpr std::string_view controls = "\a\b\f\n\r\t\v";
    const std::size_t found = letters.find(character);
    // A byte that begins a longer character stands for itself too, and its other bytes follow.
    to += found == std::string_view::npos ? character : controls[found];
}

/// Reads up to four digits. None at all make U+0000, as on the phone.
char16_t TextReader::readHexadecimalUnit() {
    unsigned unit = 0;
    for (int digits = 0; digits < 4 && cursor_.isAt(isHexadecimalDigit); ++digits)
        unit = unit << 4 | static_cast<unsigned>(hexadecimalDigit(cursor_.take()));
    return static_cast<char16_t>(unit);
}

char32_t TextReader::readOctalCharacter(char firstDigit) {
    auto code = static_cast<unsigned>(firstDigit - '0');
    for (int digits = 1; digits < 3 && cursor_.isAt(isOctalDigit); ++digits)
        code = code << 3 | static_cast<unsigned>(cursor_.take() - '0');
    code &= 0xFF;
    return code < 0x80 ? code : nextstepCharacters[code - 0x80];
}

/// Skips white space and comments. A comment that is left open reaches to the end of the file.
void TextReader::skipSpace() {
    for (;;) {
        cursor_.takeWhile(isASCIISpace);
        if (cursor_.consume("//"))
            skipLine();
        else if (cursor_.consume("/*"))
            cursor_.takeUntil("*/");
        else if (!consumeSeparator())
            return;
    }
}

bool TextReader::consumeSeparator() {
    return cursor_.consume(lineSeparator) || cursor_.consume(paragraphSeparator);
}

void TextReader::skipLine() {
    while (!cursor_.isAtEnd() && !cursor_.isAt(isLineEnd) && !cursor_.isAt(lineSeparator) &&
           !cursor_.isAt(paragraphSeparator))
        cursor_.take();
}

} // namespace

PropertyListPointer readTextPropertyList(std::string_view text) {
    return TextReader(text).readRoot();
}

} // namespace platform
