#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

/// Whether the bytes are valid UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValidUTF8(std::string_view bytes);

/// Appends one Unicode scalar value as UTF-8.
///
/// Requires: a scalar value, so neither a surrogate nor above U+10FFFF.
void appendUTF8(std::string& to, char32_t scalar);

/// Takes the first line off `rest`, which must not be empty, together with the character that ends
/// it: one of the newline set, U+000A to U+000D, U+0085, U+2028 and U+2029. A carriage return with
/// a line feed behind it therefore makes an empty line. The end of the text ends its last line too.
///
/// Ownership: the line refers to the bytes of `rest`.
std::string_view takeLine(std::string_view& rest);

/// Reads the integer at the start of valid UTF-8: Unicode white space and newlines, which are
/// skipped, an optional sign, decimal digits from 0 to 9.
///
/// The result is 0 when there are no digits, and the nearest value of the type when it is too
/// small for the number.
std::intptr_t integerValue(std::string_view text);

/// A text looked up by key, in one of three states.
///
/// A key that is known but stands in no file has the null marker, a value that is present but no
/// text; a key that is not known, or that was looked up without any file, is absent.
class LocalizedText {
public:
    /// An absent text.
    LocalizedText() = default;
    LocalizedText(std::string text) : state_(State::text), text_(std::move(text)) {}
    static LocalizedText nullMarker();

    bool isAbsent() const { return state_ == State::absent; }
    bool isNullMarker() const { return state_ == State::nullMarker; }

    /// The text as a control holds it: missing when absent; the null marker shows as "<null>".
    std::optional<std::string> displayed() const;

    /// The text as the formatter prints it into a message: "(null)" when absent, "<null>" for the
    /// null marker.
    std::string formatted() const;

    bool operator==(const LocalizedText&) const = default;

private:
    enum class State { absent, nullMarker, text };
    State state_ = State::absent;
    std::string text_;
};

/// A text that may be missing, as the formatter prints it: "(null)" when it is.
std::string formatted(const std::optional<std::string>& text);

} // namespace platform
