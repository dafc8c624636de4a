#include "Platform/Text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

std::string encoded(char32_t scalar) {
    std::string text;
    platform::appendUTF8(text, scalar);
    return text;
}

std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty())
        lines.push_back(platform::takeLine(text));
    return lines;
}

TEST(Text, EveryScalarValueIsValidAndNoSurrogateIs) {
    for (char32_t value = 0; value <= 0x10FFFF; ++value) {
        const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
        ASSERT_EQ(platform::isValidUTF8(encoded(value)), !isSurrogate) << std::uint32_t{value};
    }
    EXPECT_EQ(encoded(0x24) + encoded(0xA2) + encoded(0x20AC) + encoded(0x10348),
              "\x24\xC2\xA2\xE2\x82\xAC\xF0\x90\x8D\x88");
}

TEST(Text, IllFormedBytesAreFoundWhereverTheyStand) {
    const std::string_view illFormed[] = {"\x80",             // a continuation alone
                                          "\xC0\x80",         // overlong
                                          "\xC1\xBF",         //
                                          "\xE0\x9F\xBF",     //
                                          "\xF0\x8F\xBF\xBF", //
                                          "\xF4\x90\x80\x80", // above the last character
                                          "\xF5\x80\x80\x80", //
                                          "\xFF",             //
                                          "\xC3(",            // cut short by another character
                                          "\xE2\x82(",        //
                                          "\xF0\x90\x8D(",    //
                                          "\xC3",             // cut short by the end
                                          "\xE2\x82",         //
                                          "\xF0\x90\x8D"};
    for (const auto bytes : illFormed) {
        for (std::size_t before = 0; before < 20; ++before) {
            const std::string text = std::string(before, 'a').append(bytes);
            EXPECT_FALSE(platform::isValidUTF8(text)) << text;
            EXPECT_FALSE(platform::isValidUTF8("\u00E9" + text + "abcdefghijklmnop")) << text;
        }
    }
    EXPECT_TRUE(platform::isValidUTF8(std::string_view("abcdefgh\0ijklmnopq\u00E9\u20AC", 23)));
    EXPECT_TRUE(platform::isValidUTF8(""));
}

TEST(Text, LinesEndAtEveryCharacterOfTheNewlineSet) {
    using Lines = std::vector<std::string_view>;
    EXPECT_EQ(lines("a\nb\vc\fd\re\u0085f\u2028g\u2029h"),
              (Lines{"a", "b", "c", "d", "e", "f", "g", "h"}));
    EXPECT_EQ(lines("a\r\nb\n"), (Lines{"a", "", "b"}));
    EXPECT_EQ(lines("\n"), (Lines{""}));
    // Characters that begin with the same bytes, whole and cut short.
    EXPECT_EQ(lines("\u0084\u2027\u202A\t"), (Lines{"\u0084\u2027\u202A\t"}));
    EXPECT_EQ(lines("a\xE2\x80"), (Lines{"a\xE2\x80"}));
    EXPECT_EQ(lines("a\xC2"), (Lines{"a\xC2"}));
}

TEST(Text, IntegersAreReadAsFarAsTheyGo) {
    constexpr auto largest = std::numeric_limits<std::intptr_t>::max();
    constexpr auto least = std::numeric_limits<std::intptr_t>::min();
    const std::pair<std::string, std::intptr_t> cases[] = {
        {"", 0},
        {"42", 42},
        {" \t\r\n\u00A0\u2003\u3000\u0085-17 apples", -17},
        {"+8.9", 8},
        {"007", 7},
        {"apples", 0},
        {"- 5", 0},
        {"--5", 0},
        {"-", 0},
        {"\u0661", 0},
        {std::to_string(largest), largest},
        {std::to_string(least), least},
        {std::to_string(largest) + "0", largest},
        {std::to_string(least) + "0", least},
        {"9223372036854775808", largest},
        {"-9223372036854775809", least},
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(platform::integerValue(text), value) << text;
}

TEST(Text, AMissingTextIsShownAndPrintedAsThePhoneDoes) {
    using platform::LocalizedText;
    EXPECT_EQ(LocalizedText().displayed(), std::nullopt);
    EXPECT_EQ(LocalizedText().formatted(), "(null)");
    EXPECT_EQ(LocalizedText::nullMarker().displayed(), "<null>");
    EXPECT_EQ(LocalizedText::nullMarker().formatted(), "<null>");
    EXPECT_EQ(LocalizedText("<null>").formatted(), "<null>");
    EXPECT_NE(LocalizedText("<null>"), LocalizedText::nullMarker());
    EXPECT_NE(LocalizedText(""), LocalizedText());
}

} // namespace
