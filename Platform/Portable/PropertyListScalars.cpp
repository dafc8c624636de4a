#include "Platform/Portable/PropertyListScalars.h"

#include "Platform/Portable/PropertyListCursor.h"
#include "Platform/Portable/PropertyListForms.h"

#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <locale>
#include <optional>
#include <sstream>

namespace platform {

namespace {

/// Consumes a sign, which may be missing; true for a minus.
bool consumeSign(PropertyListCursor& cursor) {
    const bool isNegative = cursor.consume('-');
    if (!isNegative)
        cursor.consume('+');
    return isNegative;
}

/// Takes digits to the end of the text. Nothing when there are none, when something else follows
/// or when 64 bits do not hold the number.
std::optional<std::uint64_t> takeMagnitude(PropertyListCursor& cursor) {
    const bool isHexadecimal = cursor.consume("0x") || cursor.consume("0X");
    const std::uint64_t base = isHexadecimal ? 16 : 10;
    if (cursor.isAtEnd())
        return std::nullopt;
    std::uint64_t magnitude = 0;
    while (!cursor.isAtEnd()) {
        const int value = hexadecimalDigit(cursor.take());
        if (value < 0 || static_cast<std::uint64_t>(value) >= base)
            return std::nullopt;
        const auto digit = static_cast<std::uint64_t>(value);
        if (magnitude > (std::numeric_limits<std::uint64_t>::max() - digit) / base)
            return std::nullopt;
        magnitude = magnitude * base + digit;
    }
    return magnitude;
}

/// The phone's integers reach from the smallest signed to the largest unsigned one of 64 bits; the
/// upper half of the unsigned ones becomes the largest that a value holds.
std::optional<std::int64_t> parseInteger(std::string_view text) {
    PropertyListCursor cursor(text);
    cursor.takeWhile(isXMLSpace);
    const bool isNegative = consumeSign(cursor);
    cursor.takeWhile(isXMLSpace);
    const std::optional<std::uint64_t> magnitude = takeMagnitude(cursor);
    if (!magnitude)
        return std::nullopt;
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    constexpr auto limit = static_cast<std::uint64_t>(largest);
    if (!isNegative)
        return *magnitude > limit ? largest : static_cast<std::int64_t>(*magnitude);
    if (*magnitude > limit + 1)
        return std::nullopt;
    return static_cast<std::int64_t>(-*magnitude);
}

std::optional<double> parseSpecialReal(std::string_view text) {
    if (isEqualIgnoringCase(text, "nan"))
        return std::numeric_limits<double>::quiet_NaN();
    PropertyListCursor cursor(text);
    const bool isNegative = consumeSign(cursor);
    const std::string_view name = cursor.takeWhile(isLetter);
    if (!cursor.isAtEnd() ||
        !(isEqualIgnoringCase(name, "inf") || isEqualIgnoringCase(name, "infinity")))
        return std::nullopt;
    const double infinity = std::numeric_limits<double>::infinity();
    return isNegative ? -infinity : infinity;
}

bool isDecimalReal(std::string_view text) {
    PropertyListCursor cursor(text);
    consumeSign(cursor);
    std::size_t digits = cursor.takeWhile(isDecimalDigit).size();
    if (cursor.consume('.'))
        digits += cursor.takeWhile(isDecimalDigit).size();
    if (digits == 0)
        return false;
    if (cursor.consume('e') || cursor.consume('E')) {
        consumeSign(cursor);
        if (cursor.takeWhile(isDecimalDigit).empty())
            return false;
    }
    return cursor.isAtEnd();
}

std::optional<double> parseReal(std::string_view text) {
    PropertyListCursor cursor(text);
    cursor.takeWhile(isXMLSpace);
    text = cursor.rest();
    if (!isDecimalReal(text))
        return parseSpecialReal(text);
    // A stream, because strtod reads what the locale of the process calls a number.
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    // Runtimes disagree about what they store for a number that is too large.
    if (stream.fail() && std::abs(value) >= std::numeric_limits<double>::max())
        return std::copysign(std::numeric_limits<double>::infinity(), value);
    return value;
}

/// Takes a number of exactly so many digits, or nothing.
std::optional<unsigned> takeNumber(PropertyListCursor& cursor, int digits) {
    unsigned number = 0;
    for (; digits > 0; --digits) {
        if (!cursor.isAt(isDecimalDigit))
            return std::nullopt;
        number = number * 10 + static_cast<unsigned>(cursor.take() - '0');
    }
    return number;
}

/// Parses YYYY-MM-DDTHH:MM:SSZ.
std::optional<PropertyListDate> parseDate(std::string_view text) {
    struct Field {
        int digits;
        char end;
    };
    constexpr std::array<Field, 6> fields = {
        {{4, '-'}, {2, '-'}, {2, 'T'}, {2, ':'}, {2, ':'}, {2, 'Z'}}};
    std::array<unsigned, 6> numbers{};
    PropertyListCursor cursor(text);
    for (std::size_t at = 0; at < fields.size(); ++at) {
        const std::optional<unsigned> number = takeNumber(cursor, fields[at].digits);
        if (!number || !cursor.consume(fields[at].end))
            return std::nullopt;
        numbers[at] = *number;
    }
    const auto [year, month, day, hour, minute, second] = numbers;
    using namespace std::chrono;
    const year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                              std::chrono::day(day)};
    if (!cursor.isAtEnd() || !date.ok() || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    const auto days = sys_days(date) - sys_days(2001y / January / 1);
    const auto time = hours(hour) + minutes(minute) + seconds(second);
    return PropertyListDate{static_cast<double>((days + time) / 1s)};
}

int base64Digit(char character) {
    if (character >= 'A' && character <= 'Z')
        return character - 'A';
    if (character >= 'a' && character <= 'z')
        return character - 'a' + 26;
    if (isDecimalDigit(character))
        return character - '0' + 52;
    return character == '+' ? 62 : character == '/' ? 63 : -1;
}

/// Parses base64 with white space anywhere in it and all of its padding.
std::optional<PropertyListData> parseData(std::string_view text) {
    PropertyListData bytes;
    unsigned bits = 0;
    std::size_t digits = 0;
    std::size_t padding = 0;
    for (const char character : text) {
        if (isXMLSpace(character))
            continue;
        if (character == '=') {
            ++padding;
            continue;
        }
        const int digit = base64Digit(character);
        if (digit < 0 || padding > 0)
            return std::nullopt;
        bits = (bits << 6 | static_cast<unsigned>(digit)) & 0xFFFFFF;
        // Four digits are three bytes: each digit but the first of four completes one.
        if (digits % 4 != 0)
            bytes.push_back(static_cast<std::uint8_t>(bits >> (6 - 2 * (digits % 4))));
        ++digits;
    }
    if (padding > 2 || (digits + padding) % 4 != 0)
        return std::nullopt;
    return bytes;
}

template <typename Value>
PropertyListPointer wrap(std::optional<Value> value) {
    return value ? makePropertyList(std::move(*value)) : nullptr;
}

} // namespace

PropertyListPointer parsePropertyListScalar(std::string_view element, std::string_view text) {
    if (element == "integer")
        return wrap(parseInteger(text));
    if (element == "real")
        return wrap(parseReal(text));
    if (element == "date")
        return wrap(parseDate(text));
    if (element == "data")
        return wrap(parseData(text));
    if ((element == "true" || element == "false") && text.empty())
        return makePropertyList(element == "true");
    return nullptr;
}

} // namespace platform
