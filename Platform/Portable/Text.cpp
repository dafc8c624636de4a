#include "Platform/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace platform {
namespace {

constexpr unsigned char byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

/// Goes over whole words in which every byte lies between `lowest` and 0x7F. What is left begins
/// with less than a word or with a word that holds something else.
std::size_t skipPlainWords(std::string_view bytes, std::size_t index, unsigned char lowest) {
    constexpr std::uint64_t everyByte = 0x0101010101010101U;
    std::uint64_t word = 0;
    while (bytes.size() - index >= sizeof word) {
        std::memcpy(&word, bytes.data() + index, sizeof word);
        // Taking away `lowest` sets the high bit of the last byte that is below it.
        if (((word | (word - everyByte * lowest)) & (everyByte * 0x80)) != 0)
            break;
        index += sizeof word;
    }
    return index;
}

/// The length of the well-formed sequence at the start of the bytes, or 0 when there is none.
std::size_t lengthOfSequence(std::string_view bytes) {
    const unsigned char lead = byteAt(bytes, 0);
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4) {
        return 0; // a continuation, an overlong pair, or above U+10FFFF
    }
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (bytes.size() < length)
        return 0;
    // The second byte alone decides whether a longer form is overlong, a surrogate or too large.
    const unsigned char lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byteAt(bytes, 1) < lowest || byteAt(bytes, 1) > highest)
        return 0;
    const bool continues =
        std::all_of(bytes.begin() + 2, bytes.begin() + static_cast<std::ptrdiff_t>(length),
                    [](char byte) { return (byte & 0xC0) == 0x80; });
    return continues ? length : 0;
}

/// The length of the newline character at the start of the bytes, or 0 when it is another one.
std::size_t lengthOfNewline(std::string_view text) {
    const unsigned char lead = byteAt(text, 0);
    if (lead >= 0x0A && lead <= 0x0D)
        return 1;
    if (lead == 0xC2) {
        return text.substr(0, 2) == "\xC2\x85" ? 2 : 0;
    }
    if (lead == 0xE2) {
        const std::string_view character = text.substr(0, 3);
        return character == "\xE2\x80\xA8" || character == "\xE2\x80\xA9" ? 3 : 0;
    }
    return 0;
}

/// The length of the white space or newline character at the start of the bytes, or 0 when it is
/// another one.
std::size_t lengthOfBlank(std::string_view text) {
    constexpr std::string_view others[] = {"\t",           " ",
                                           "\xC2\xA0",     "\xE1\x9A\x80",
                                           "\xE2\x80\x80", "\xE2\x80\x81",
                                           "\xE2\x80\x82", "\xE2\x80\x83",
                                           "\xE2\x80\x84", "\xE2\x80\x85",
                                           "\xE2\x80\x86", "\xE2\x80\x87",
                                           "\xE2\x80\x88", "\xE2\x80\x89",
                                           "\xE2\x80\x8A", "\xE2\x80\xAF",
                                           "\xE2\x81\x9F", "\xE3\x80\x80"};
    for (const std::string_view other : others) {
        if (text.substr(0, other.size()) == other)
            return other.size();
    }
    return lengthOfNewline(text);
}

void skipBlanks(std::string_view& text) {
    while (!text.empty()) {
        const std::size_t length = lengthOfBlank(text);
        if (length == 0)
            return;
        text.remove_prefix(length);
    }
}

} // namespace

bool isValidUTF8(std::string_view bytes) {
    std::size_t index = skipPlainWords(bytes, 0, 0);
    while (index < bytes.size()) {
        const std::size_t length = lengthOfSequence(bytes.substr(index));
        if (length == 0)
            return false;
        index += length;
        // In a text of longer characters a try after each of them would cost more than it saves.
        if (length == 1)
            index = skipPlainWords(bytes, index, 0);
    }
    return true;
}

void appendUTF8(std::string& to, char32_t scalar) {
    const auto append = [&to](char32_t byte) {
        to.push_back(static_cast<char>(byte));
    };
    const auto appendContinuation = [&append, scalar](unsigned shift) {
        append(0x80 | ((scalar >> shift) & 0x3F));
    };
    if (scalar < 0x80) {
        append(scalar);
        return;
    }
    if (scalar < 0x800) {
        append(0xC0 | (scalar >> 6));
    } else if (scalar < 0x10000) {
        append(0xE0 | (scalar >> 12));
        appendContinuation(6);
    } else {
        append(0xF0 | (scalar >> 18));
        appendContinuation(12);
        appendContinuation(6);
    }
    appendContinuation(0);
}

std::string_view takeLine(std::string_view& rest) {
    std::size_t index = 0;
    while ((index = skipPlainWords(rest, index, 0x0E)) < rest.size()) {
        const std::size_t length = lengthOfNewline(rest.substr(index));
        if (length > 0) {
            const std::string_view line = rest.substr(0, index);
            rest.remove_prefix(index + length);
            return line;
        }
        ++index;
    }
    return std::exchange(rest, {});
}

std::intptr_t integerValue(std::string_view text) {
    skipBlanks(text);
    const bool isNegative = !text.empty() && text.front() == '-';
    if (isNegative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    constexpr auto largest = static_cast<std::uintptr_t>(INTPTR_MAX);
    const std::uintptr_t limit = isNegative ? largest + 1 : largest;
    std::uintptr_t magnitude = 0;
    for (const char character : text) {
        if (character < '0' || character > '9')
            break;
        const auto digit = static_cast<std::uintptr_t>(character - '0');
        if (magnitude > (limit - digit) / 10) {
            magnitude = limit;
            break;
        }
        magnitude = magnitude * 10 + digit;
    }
    return static_cast<std::intptr_t>(isNegative ? 0 - magnitude : magnitude);
}

LocalizedText LocalizedText::nullMarker() {
    LocalizedText marker;
    marker.state_ = State::nullMarker;
    return marker;
}

std::optional<std::string> LocalizedText::displayed() const {
    switch (state_) {
    case State::absent:
        return std::nullopt;
    case State::nullMarker:
        return "<null>";
    case State::text:
        return text_;
    }
    return std::nullopt;
}

std::string LocalizedText::formatted() const {
    return platform::formatted(displayed());
}

std::string formatted(const std::optional<std::string>& text) {
    return text ? *text : "(null)";
}

} // namespace platform
