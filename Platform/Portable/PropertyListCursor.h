#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace platform {

/// A place in a text of a property list, moving forward only: what keeps its readers linear.
///
/// Ownership: refers to the text, as do the pieces it hands out.
class PropertyListCursor {
public:
    explicit PropertyListCursor(std::string_view text) : rest_(text) {}

    std::string_view rest() const { return rest_; }
    bool isAtEnd() const { return rest_.empty(); }
    bool isAt(char character) const { return !rest_.empty() && rest_.front() == character; }
    bool isAt(std::string_view text) const { return rest_.substr(0, text.size()) == text; }
    bool isAt(bool (*accepts)(char)) const { return !rest_.empty() && accepts(rest_.front()); }

    /// Requires: not at the end.
    char take() {
        const char character = rest_.front();
        rest_.remove_prefix(1);
        return character;
    }

    /// Moves behind the given text if it stands here.
    bool consume(char character) { return isAt(character) && skip(1); }
    bool consume(std::string_view text) { return isAt(text) && skip(text.size()); }

    /// Takes the longest run of accepted characters, which may be empty.
    std::string_view takeWhile(bool (*accepts)(char)) {
        std::size_t length = 0;
        while (length < rest_.size() && accepts(rest_[length]))
            ++length;
        return takePrefix(length);
    }

    /// Takes what stands before a mark, and moves behind the mark. When there is none, the result
    /// is nothing and the rest of the text is gone, so that nobody searches it once more.
    std::optional<std::string_view> takeUntil(std::string_view mark) {
        const std::size_t length = rest_.find(mark);
        if (length == std::string_view::npos) {
            rest_ = {};
            return std::nullopt;
        }
        const std::string_view taken = takePrefix(length);
        skip(mark.size());
        return taken;
    }

private:
    bool skip(std::size_t count) {
        rest_.remove_prefix(count);
        return true;
    }

    std::string_view takePrefix(std::size_t length) {
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return taken;
    }

    std::string_view rest_;
};

// The characters of ASCII, whatever the locale of the process.

constexpr bool isDecimalDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

constexpr bool isXMLSpace(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

/// Whether a text is a word given in lower case, in whatever case it stands.
constexpr bool isEqualIgnoringCase(std::string_view text, std::string_view lowerCase) {
    if (text.size() != lowerCase.size())
        return false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = isLetter(text[at]) ? static_cast<char>(text[at] | 0x20) : text[at];
        if (character != lowerCase[at])
            return false;
    }
    return true;
}

/// The value of a hexadecimal digit, or -1.
constexpr int hexadecimalDigit(char character) {
    if (isDecimalDigit(character))
        return character - '0';
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    if (character >= 'A' && character <= 'F')
        return character - 'A' + 10;
    return -1;
}

} // namespace platform
