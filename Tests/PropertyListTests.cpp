#include "Platform/Portable/PropertyListReader.h"
#include "Platform/Text.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>

using namespace platform;
using namespace std::string_literals;

namespace {

std::string described(const PropertyListPointer& value);

std::string described(const PropertyListArray& elements) {
    std::string text;
    for (const auto& element : elements)
        text += (text.empty() ? "" : ",") + described(element);
    return text;
}

/// A value on one line, or "refused".
std::string described(const PropertyListPointer& value) {
    std::ostringstream text;
    if (!value)
        return "refused";
    if (const auto* string = value->string())
        return isValidUTF8(*string) ? *string : "not UTF-8";
    if (const auto* integer = value->integer())
        return std::to_string(*integer);
    if (const auto* real = value->real())
        text << "real " << *real;
    else if (const auto* boolean = value->boolean())
        text << (*boolean ? "true" : "false");
    else if (const auto* date = value->date())
        text << "date " << std::fixed << date->seconds;
    else if (const auto* uid = value->uid())
        text << "uid " << uid->number;
    else if (const auto* array = value->array())
        text << "(" << described(*array) << ")";
    else if (const auto* set = value->set())
        text << "set(" << described(set->members) << ")";
    else if (const auto* data = value->data())
        for (const auto byte : *data)
            text << "<" << +byte << ">";
    else if (const auto* dictionary = value->dictionary()) {
        text << "{";
        for (const auto& [key, element] : *dictionary)
            text << *key << "=" << described(element) << ";";
        text << "}";
    }
    return text.str();
}

std::string read(std::string_view bytes) {
    return described(readPropertyList(bytes));
}

struct Case {
    std::string input;
    std::string expected;
};

void check(const std::vector<Case>& cases) {
    for (const auto& [input, expected] : cases)
        EXPECT_EQ(read(input), expected) << testing::PrintToString(input);
}

void checkRefused(const std::vector<std::string>& inputs) {
    for (const auto& input : inputs)
        EXPECT_EQ(read(input), "refused") << testing::PrintToString(input);
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (; count > 0; --count)
        result += text;
    return result;
}

std::string utf16(std::string_view ascii, bool isBigEndian) {
    std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char character : ascii)
        bytes += isBigEndian ? std::string{'\0', character} : std::string{character, '\0'};
    return bytes;
}

std::string xml(std::string_view content) {
    return "<plist version=\"1.0\">" + std::string(content) + "</plist>";
}

std::string bigEndian(std::uint64_t number, std::size_t size) {
    std::string bytes;
    while (size-- > 0)
        bytes += static_cast<char>(size < 8 ? number >> (8 * size) : 0);
    return bytes;
}

std::string asciiObject(std::string_view text) {
    return static_cast<char>(0x50 + text.size()) + std::string(text);
}

/// A binary file made of objects as they are. Offsets and the trailer are right unless said.
struct BinaryFile {
    std::vector<std::string> objects;
    std::size_t offsetSize = 1;
    std::size_t referenceSize = 1;
    std::uint64_t root = 0;
    std::vector<std::uint64_t> offsets = {};
    std::optional<std::uint64_t> count = {};
    std::optional<std::uint64_t> table = {};

    std::string bytes() const {
        std::string file = "bplist00";
        std::vector<std::uint64_t> places = offsets;
        for (const auto& object : objects) {
            if (offsets.empty())
                places.push_back(file.size());
            file += object;
        }
        const std::size_t end = file.size();
        for (const auto place : places)
            file += bigEndian(place, offsetSize);
        return file + std::string(6, '\0') + bigEndian(offsetSize, 1) +
               bigEndian(referenceSize, 1) + bigEndian(count.value_or(places.size()), 8) +
               bigEndian(root, 8) + bigEndian(table.value_or(end), 8);
    }
};

std::string binary(std::vector<std::string> objects) {
    return BinaryFile{std::move(objects)}.bytes();
}

/// Arrays inside each other: every object refers to the next one, `width` times.
std::string binaryChain(std::size_t length, std::size_t width) {
    BinaryFile file{{}, 8, 4};
    for (std::size_t at = 1; at < length; ++at)
        file.objects.push_back(static_cast<char>(0xA0 + width) + repeated(bigEndian(at, 4), width));
    file.objects.emplace_back("\xA0");
    return file.bytes();
}

const std::string xmlSample =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Example//DTD\" \"http://example.com/list.dtd\">\n" +
    xml("<!-- c --><dict><key>a&amp;b</key><array><true/><integer>7</integer></array>"
        "<key>d</key><data>AAEC/w==</data></dict>");
const std::string textSample = "/* c */ 'a' = (\"x\\U00e9\", <0f 1e>, {b = c; d;},); // e\n";
const std::string binarySample =
    binary({"\xD2\1\2\3\4", asciiObject("y"), asciiObject("z"), "\x62\x00\xE9\xD8\x3D"s,
            "\xA4\5\6\7\1", "\x10\x2A", "\x23\x3F\xF8\0\0\0\0\0\0"s, "\x42\1\2"});

TEST(PropertyList, TextTakesPairsInEveryShape) {
    check({
        {R"("NO" = "Non"; YES = Oui;)", "{NO=Non;YES=Oui;}"},
        {"{ a = b; }", "{a=b;}"},
        {"a;'b c'; {", "{a=a;b c=b c;}"},
        {"a = 1; a = 2; b = 3; a = 4;", "{a=4;b=3;}"},
        {"a = { b; c = (1, (2), {},); d = <0fbd 77\n>; e = <>; };",
         "{a={b=b;c=(1,(2),{});d=<15><189><119>;e=;};}"},
        {R"(a = (); "" = ""; _$/:.- = /x//y;)", "{=;_$/:.-=/x//y;a=();}"},
        {"// a\ra /**/ = // b\xE2\x80\xA8/* * / ; */b\v\f\xE2\x80\xA9; /* open", "{a=b;}"},
        {" \t\n", "{}"},
        {"/* nothing */ // at all", "{}"},
        {"{ a = b; } // c\n/* d */ ", "{a=b;}"},
        {"a = \"\0\"; \"b\0\";"s, "{a=\0;b\0=b\0;}"s},
        {"bplist00 = a;", "{bplist00=a;}"},
    });
}

TEST(PropertyList, TextRefusesWhatIsBroken) {
    checkRefused({// roots
                  "", "a", "\"a\"", "(a)", "<00>", ";", "}", "{ a = b; } c", "{ a = b; ", "{ ; }",
                  // pairs
                  "a = b", "a = ;", "= b;", "a b;", "a = b c;", "{ a = b }", "{ a = b; = c; }",
                  "a = b; c", "a = b; c = /* d;", "a+b = c;", "\xC3\xA9 = a;", "a = \xC3\xA9;",
                  "a\0 = b;"s, "a = b/**/;",
                  // arrays, data and strings
                  "a = (b c);", "a = (,);", "a = (b,,c);", "a = (b;", "a = <0>;", "a = <0 f>;",
                  "a = <0g>;", "a = </**/00>;", "a = \"b;", "a = \"b\\", "a = 'b\";",
                  R"(a = "b\";)"});
}

TEST(PropertyList, BracelessTextEndsQuietlyAfterAPair) {
    for (const std::string rest : {";", "}", "= c;", "(", "<", "\xC3\xA9", "; c = d;", "/*", "+c;"})
        EXPECT_EQ(read("a = b;" + rest), "{a=b;}") << rest;
    EXPECT_EQ(read("a = b;\xC3"), "refused");
}

TEST(PropertyList, TextEscapesMeanWhatTheyMeanOnThePhone) {
    check({
        {R"("\a\b\f\n\r\t\v\"\'\\";)", read("'\a\b\f\n\r\t\v\"\\'\\\\';")},
        {"a = \"\\\n\\\r\\q\\u00e9\\\xC3\xA9\";", "{a=\n\rqu00e9\xC3\xA9;}"},
        {R"(a = "\0\1018\478";)", "{a=\0A8'8;}"s},
        {R"(a = "\501";)", "{a=A;}"},
        {R"(a = "\200|\201|\237|\244|\256|\341|\373|\375|\376|\777";)",
         "{a=\u00A0|\u00C0|\u00F7|\u2044|\uFB01|\u00C6|\u00DF|\u00FF|\uFFFD|\uFFFD;}"},
        {R"(a = "\U00e9\Ue9x\U1F600\Ug";)", "{a=\u00E9\u00E9x\u1F60"s + "0\0g;}"s},
        {R"(a = "\UD83D\UDE00|\UDE00|\UD83D|\UD83D\UD83D\UDE00|\UD83D\n\UDE00";)",
         "{a=\U0001F600|\uFFFD|\uFFFD|\uFFFD\U0001F600|\uFFFD\n\uFFFD;}"},
        {R"(a = "\UD83D";)", "{a=\uFFFD;}"},
    });
    // Above \177 stands all of Latin-1 but the soft hyphen and the degree sign.
    std::string characters;
    for (int code = 0200; code <= 0377; ++code)
        characters += read("\"\\" + std::string{"01234567"[code >> 6], "01234567"[code >> 3 & 7],
                                                "01234567"[code & 7], '"', ';'});
    for (char32_t scalar = 0xA0; scalar <= 0xFF; ++scalar) {
        std::string character;
        appendUTF8(character, scalar);
        EXPECT_EQ(characters.find(character) == std::string::npos, scalar == 0xAD || scalar == 0xB0)
            << static_cast<unsigned>(scalar);
    }
}

TEST(PropertyList, EncodingsAreToldByTheirMarks) {
    const std::string expected = read(textSample);
    EXPECT_EQ(expected, "{a=(x\u00E9,<15><30>,{b=c;d=d;});}");
    check({
        {"\xEF\xBB\xBF" + textSample, expected},
        {utf16(textSample, true), expected},
        {utf16(textSample, false), expected},
        {utf16(xmlSample, false), read(xmlSample)},
        {utf16(textSample, false) + " ", "refused"},
        {utf16(textSample, false).substr(2), "refused"},
        {"\xFF\xFE\x3D\xD8\x00\xDE=\0a\0;\0"s, "refused"},
        {"\xFF\xFE\"\0\x3D\xD8\x00\xDE\x3D\xD8\"\0;\0"s, "{\U0001F600\uFFFD=\U0001F600\uFFFD;}"},
        {"\xEF\xBB\xBF", "{}"},
    });
    for (const std::string bad : {"\xC3", "\xC0\x80", "\xED\xA0\xBD", "\xF4\x90\x80\x80", "\x80"}) {
        EXPECT_EQ(read("a = \"" + bad + "\";"), "refused");
        EXPECT_EQ(read("a = b; } " + bad), "refused");
        EXPECT_EQ(read(xml("<dict/>") + bad), "refused");
    }
    const auto declared = [](std::string_view encoding) {
        return "<?xml version='1.0' encoding='" + std::string(encoding) + "'?>" + xml("<dict/>");
    };
    check({{declared("utf-8"), "{}"},
           {declared("UTF-16"), "refused"},
           {declared("ISO-8859-1"), "refused"},
           {utf16(declared("UTF-16"), true), "{}"},
           {utf16(declared("UTF-8"), true), "{}"}});
}

TEST(PropertyList, XMLTakesEveryElement) {
    check({
        {xmlSample, "{a&b=(true,7);d=<0><1><2><255>;}"},
        {" \n<?xml?><!-- - -- --><?pi x?><plist x = 'y>' ><dict/></plist >anything <", "{}"},
        {"<!DOCTYPE plist SYSTEM 'x'><!----><plist><dict></dict><?p?></plist>", "{}"},
        {"<?xml version='1.0'?><array><string/></array>", "()"},
        {xml("<dict><key/><string>a\r\n\0]]></string><key>k</key> <true></true></dict>"s),
         "{=a\r\n\0]]>;k=true;}"s},
        {xml("<dict><key>a</key><false/><key>a</key><true/></dict>"), "{a=true;}"},
        {xml("<string>&lt;&gt;&amp;&quot;&apos;&#65;&#x1F600;&#0000000000065;<![CDATA[<&]]]]>"
             "</string>"),
         "<>&\"'A\U0001F600A<&]]"},
        {xml("<array><integer> -0x1F</integer><integer>+ 7</integer><integer>007</integer>"
             "<integer>-9223372036854775808</integer><integer>18446744073709551615</integer>"
             "</array>"),
         "(-31,7,7,-9223372036854775808,9223372036854775807)"},
        {xml("<array><real>-1.5e2</real><real> .5</real><real>5.</real><real>1e999</real>"
             "<real>-Infinity</real><real>NaN</real></array>"),
         "(real -150,real 0.5,real 5,real inf,real -inf,real nan)"},
        {xml("<array><date>2001-01-01T00:00:01Z</date><date>2000-02-29T23:59:59Z</date></array>"),
         "(date 1.000000,date -26438401.000000)"},
        {xml("<array><data> A A\nEC</data><data>AA==</data><data/><data>AAE=</data></array>"),
         "(<0><1><2>,<0>,,<0><1>)"},
    });
}

TEST(PropertyList, XMLRefusesWhatIsBroken) {
    for (const std::string content :
         {// roots and tags
          "", "x<dict/>", "<dict/><dict/>", "<dict/>x", "<key>a</key>", "<plist><dict/></plist>",
          "<other/>", "<Dict/>", "< dict/>", "<dict/ >", "<dict a/>", "<dict a=b/>", "<dicta='b'/>",
          "<dict a='<'/>", "<dict a='b'c='d'/>",
          // containers
          "<dict>", "<dict></array>", "<dict><!-- </dict>", "<dict><!-- --></dict><!--</dict>",
          "<dict><![CDATA[ ]]></dict>", "<dict><? </dict>", "<dict><key>a</key></dict>",
          "<dict><true/><key>a</key></dict>", "<dict><key>a</key><key>b</key></dict>",
          "<dict><key>a</key>b</dict>", "<array><key>a</key></array>",
          // strings
          "<string>a<!-- b --></string>", "<string><b/></string>", "<string><![CDATA[</string>",
          "<string>&</string>", "<string>&amp</string>", "<string>&a;</string>",
          "<string>&#;</string>", "<string>&#x;</string>", "<string>&#X41;</string>",
          "<string>&#6a;</string>", "<string>&#65</string>", "<string>&#xD800;</string>",
          "<string>&#x110000;</string>", "<string>&#99999999999999999999;</string>",
          // numbers
          "<true>x</true>", "<true> </true>", "<integer/>", "<integer>-</integer>",
          "<integer>0x</integer>", "<integer>1 </integer>", "<integer>1a</integer>",
          "<integer>18446744073709551616</integer>", "<integer>-9223372036854775809</integer>",
          "<integer>&#49;</integer>", "<real/>", "<real>.</real>", "<real>1e</real>",
          "<real>1,5</real>", "<real>0x1p3</real>", "<real>1 </real>",
          // dates and data
          "<date/>", "<date>2001-02-29T00:00:00Z</date>", "<date>2001-01-01T24:00:00Z</date>",
          "<date>2001-01-01 00:00:00Z</date>", "<date>2001-01-01T00:00:00Z </date>",
          "<data>A</data>", "<data>AA</data>", "<data>AA=A</data>", "<data>A===</data>",
          "<data>====</data>", "<data>A*AA</data>"})
        EXPECT_EQ(read(xml(content)), "refused") << content;
    for (const std::string prolog :
         {"<!DOCTYPE plist [<!ENTITY a 'b'>]>", "<!DOCTYPE plist SYSTEM 'x' [ ]>",
          "<!DOCTYPE plist PUBLIC 'x'>", "<!DOCTYPE plists>", "<?xml version=1.0?>", "<?xml",
          "<?xml version='1.0'?><!DOCTYPE other>", "<!DOCTYPE plist><!DOCTYPE plist>"})
        EXPECT_EQ(read(prolog + xml("<dict/>")), "refused") << prolog;
}

TEST(PropertyList, BinaryTakesEveryObject) {
    check({
        {binary({"\xD0"}), "{}"},
        {binarySample, "{y=\u00E9\uFFFD;z=(42,real 1.5,<1><2>,y);}"},
        {binary({"\xA7\1\2\3\4\5\6\7", "\x11\xFF\xFE", "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE",
                 "\x14" + bigEndian(5, 16), "\x14" + std::string(16, '\xFF'),
                 "\x14\x80" + std::string(15, '\0'), "\x14\1" + std::string(15, '\0'),
                 "\x12\xFF\xFF\xFF\xFF"}),
         "(65534,-2,5,-1,-9223372036854775808,9223372036854775807,4294967295)"},
        {binary({"\xA5\1\2\3\4\5", "\x08", "\x09", "\x33\x3F\xF8\0\0\0\0\0\0"s, "\x81\x01\x02",
                 "\xC2\1\1"}),
         "(false,true,date 1.500000,uid 258,set(false,false))"},
        {binary({"\x5F\x10\x02" + "ab"s}), "ab"},
        {binary({"\xD3\1\2\3\4\5\1", asciiObject("k"), "\x61\0k"s, asciiObject("j"), "\x10\1",
                 "\x10\2"}),
         "{j=k;k=1;}"},
        {BinaryFile{{"\x09", "\xA1\0\0\0\0\0\0\0\0"s}, 8, 8, 1}.bytes(), "(true)"},
        {BinaryFile{{"\xA1\0\0\1"s, asciiObject("x")}, 3, 3}.bytes(), "(x)"},
    });
    EXPECT_EQ(binary({"\xD0"}).size(), 42u);
}

TEST(PropertyList, BinaryRefusesWhatIsBroken) {
    const std::string huge = "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF";
    for (const char marker : "\x00\x07\x0F\x15\x44\x5F\x70\x90\xB0\xE0\xF0"s)
        EXPECT_EQ(read(binary({std::string{marker}})), "refused") << +marker;
    for (const std::string& object :
         {// contents and counts that are not there
          "\x11\1"s, "\x44\1"s, "\x52\1"s, "\x61\1"s, "\x5F\x20\1\1"s,
          "\x5F\x14" + bigEndian(1, 16) + "x", '\x4F' + huge, '\x6F' + huge, '\xAF' + huge,
          '\xDF' + huge, "\xDF\x13\x80\0\0\0\0\0\0\0"s, "\xA1"s, "\xD1\1"s,
          // sizes of numbers that are none
          "\x21\0\0"s, "\x32\0\0\0\0"s, "\x84\1\0\0\0\0"s, "\x88" + std::string(9, '\0'),
          // no ASCII, no object's number, cycles
          "\x51\x80"s, "\xA1\1"s, "\xA1\xFF"s, "\xA1\0"s, "\xD1\0\0"s})
        EXPECT_EQ(read(binary({object})), "refused") << testing::PrintToString(object);

    const std::vector<BinaryFile> files = {
        {{"\xD1\1\1", "\x10\1"}},                                     // a key that is no string
        {{"\xD1\1\2", "\xA0", "\x09"}},                               // nor is a container
        {{"\xA1\1", "\xC1\2", "\xD1\3\0"s, asciiObject("k")}},        // a long cycle
        {{"\xA2\1\2", "\x55\x52\1\1", "\1\1"}, 1, 1, 0, {8, 11, 12}}, // a string in a string
        {{"\xA2\1\2", asciiObject("x")}, 1, 1, 0, {8, 11, 11}},       // two objects at one place
        {{"\xA1\1", "\x5F\x10"}},                                     // a count in the table
        {{"\xD0"}, 0, 1},
        {{"\xD0"}, 9, 1},
        {{"\xD0"}, 1, 0},
        {{"\xD0"}, 1, 9},
        {{"\xD0"}, 1, 1, 1},
        {{"\xD0"}, 1, 1, 0, {7}},
        {{"\xD0"}, 1, 1, 0, {9}},
        {{"\xD0"}, 8, 1, 0, {std::uint64_t{1} << 63}},
        {{"\xD0"}, 1, 1, 0, {}, 0},
        {{"\xD0"}, 1, 1, 0, {}, 2},
        {{"\xD0"}, 8, 1, 0, {}, (std::uint64_t{1} << 61) + 1},
        {{"\xD0"}, 1, 1, 0, {}, {}, 8},
        {{"\xD0"}, 1, 1, 0, {}, {}, 10},
        {{"\xD0"}, 1, 1, 0, {}, {}, ~std::uint64_t{0}},
        {{"\xA1\x01\0\0\0\0\0\0\1"s, "\x09"}, 1, 8}, // a reference cut to size would fit
    };
    for (std::size_t at = 0; at < files.size(); ++at)
        EXPECT_EQ(read(files[at].bytes()), "refused") << at;
}

TEST(PropertyList, SharedBinaryObjectsAreReadOnceAndStayShared) {
    // Twelve elements each, 500 levels: more paths than could ever be walked.
    const auto lattice = readPropertyList(binaryChain(500, 12));
    ASSERT_NE(lattice, nullptr);
    EXPECT_EQ(lattice->array()->front(), lattice->array()->back());

    const std::string longText = "\x4F\x12"s + bigEndian(100000, 4) + std::string(100000, 'k');
    const std::string longKey = '\x5F' + longText.substr(1);
    const auto keys = readPropertyList(
        BinaryFile{{"\xA2\1\2", "\xD2\3\4\3\3", "\xD2\4\3\4\4", longKey, asciiObject("k")}, 4}
            .bytes());
    ASSERT_NE(keys, nullptr);
    const auto* first = keys->array()->front()->dictionary();
    const auto* second = keys->array()->back()->dictionary();
    EXPECT_EQ(first->size(), 2u);
    EXPECT_EQ(std::next(first->begin())->key, std::next(second->begin())->key);
    EXPECT_EQ(first->value("k"), first->value(std::string(100000, 'k')));
    EXPECT_EQ(first->value("missing"), nullptr);
}

TEST(PropertyList, NestingHasALimitInEveryForm) {
    const std::vector<std::function<std::string(std::size_t)>> forms = {
        [](std::size_t depth) {
            return "a = " + repeated("(", depth - 1) + repeated(")", depth - 1) + ";";
        },
        [](std::size_t depth) {
            return repeated("{a=", depth - 1) + "{}" + repeated(";}", depth - 1);
        },
        [](std::size_t depth) {
            return xml(repeated("<array>", depth) + repeated("</array>", depth));
        },
        [](std::size_t depth) {
            return xml(repeated("<dict><key/>", depth - 1) + "<dict/>" +
                       repeated("</dict>", depth - 1));
        },
        [](std::size_t depth) { return binaryChain(depth, 1); },
    };
    for (std::size_t form = 0; form < forms.size(); ++form) {
        EXPECT_NE(read(forms[form](512)), "refused") << form;
        EXPECT_EQ(read(forms[form](513)), "refused") << form;
        EXPECT_EQ(read(forms[form](100000)), "refused") << form;
    }
    EXPECT_EQ(read("a = " + repeated("(", 100000)), "refused");

    // The same chain again, once at a depth where it fits and once below another array.
    std::vector<std::string> objects = {"\xA2" + bigEndian(2, 4) + bigEndian(1, 4),
                                        "\xA1" + bigEndian(2, 4)};
    for (std::uint64_t next = 3; next < 513; ++next)
        objects.push_back("\xA1" + bigEndian(next, 4));
    objects.emplace_back("\x09");
    EXPECT_EQ(read(BinaryFile{objects, 4, 4}.bytes()).substr(0, 2), "((");
    objects.back() = "\xA0";
    EXPECT_EQ(read(BinaryFile{objects, 4, 4}.bytes()), "refused");
}

TEST(PropertyList, ACutFileIsNoneOrEndsAfterAPair) {
    for (const std::string& sample : {xmlSample, binarySample, "{" + textSample + "}"}) {
        ASSERT_NE(read(sample), "refused");
        for (std::size_t length = 0; length < sample.size(); ++length)
            EXPECT_EQ(read(sample.substr(0, length)), "refused") << length;
    }
    for (const std::string& sample :
         {utf16(xmlSample, true), utf16("{" + textSample + "}", false)}) {
        for (std::size_t length = 3; length < sample.size(); ++length)
            EXPECT_EQ(read(sample.substr(0, length)), "refused") << length;
    }
    const std::string pairs = "a = b;\n/**/ 'c' = \"d\";";
    for (std::size_t length = 1; length < pairs.size(); ++length) {
        // The slash of a comment alone is the beginning of a key.
        const bool isBetweenPairs = length >= 6 && length <= 12 && length != 8;
        EXPECT_EQ(read(pairs.substr(0, length)), isBetweenPairs ? "{a=b;}" : "refused") << length;
    }
}

TEST(PropertyList, DamagedFilesAreSafeToRead) {
    for (const std::string& sample :
         {xmlSample, textSample, binarySample, utf16(xmlSample, true), utf16(textSample, false)}) {
        for (std::size_t at = 0; at < sample.size(); ++at) {
            for (const int change : {1, 2, 4, 8, 16, 32, 64, 128, 255}) {
                std::string damaged = sample;
                damaged[at] = static_cast<char>(damaged[at] ^ change);
                EXPECT_EQ(read(damaged).find("not UTF-8"), std::string::npos);
            }
        }
    }
}

TEST(PropertyList, OnlyAnOrdinaryFileWithADictionaryIsRead) {
    std::string folder = (std::filesystem::temp_directory_path() / "lists-XXXXXX").string();
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    const auto written = [&folder](const std::string& name, const std::string& contents) {
        std::ofstream(folder + "/" + name, std::ios::binary) << contents;
        return folder + "/" + name;
    };
    const auto dictionary = dictionaryWithContentsOfFile(written("a.strings", "YES = Oui;"));
    ASSERT_NE(dictionary, nullptr);
    EXPECT_EQ(described(dictionary->value("YES")), "Oui");

    const std::string large = "a = (" + repeated("\"some text\",", 100000) + ");";
    EXPECT_NE(dictionaryWithContentsOfFile(written("large", large)), nullptr);
    EXPECT_EQ(dictionaryWithContentsOfFile(written("array", xml("<array/>"))), nullptr);
    EXPECT_EQ(dictionaryWithContentsOfFile(written("empty", "")), nullptr);
    EXPECT_EQ(dictionaryWithContentsOfFile(folder + "/missing"), nullptr);
    EXPECT_EQ(dictionaryWithContentsOfFile(folder + "/a.strings\0"s), nullptr);
    EXPECT_EQ(dictionaryWithContentsOfFile(folder), nullptr);
    EXPECT_EQ(dictionaryWithContentsOfFile(""), nullptr);
    EXPECT_EQ(dictionaryWithContentsOfFile("/dev/zero"), nullptr);
    ASSERT_EQ(mkfifo((folder + "/pipe").c_str(), 0600), 0);
    EXPECT_EQ(dictionaryWithContentsOfFile(folder + "/pipe"), nullptr);
    const std::string sparse = written("sparse", "a = b;");
    std::filesystem::resize_file(sparse, std::uintmax_t{1} << 40);
    EXPECT_EQ(dictionaryWithContentsOfFile(sparse), nullptr);
    std::filesystem::remove_all(folder);
}

TEST(PropertyList, AFileMayHoldMoreThanItAnnounces) {
    char name[16] = {};
    ASSERT_EQ(prctl(PR_GET_NAME, name), 0);
    ASSERT_EQ(prctl(PR_SET_NAME, "a = b;"), 0);
    const auto dictionary = dictionaryWithContentsOfFile("/proc/thread-self/comm");
    prctl(PR_SET_NAME, name);
    ASSERT_NE(dictionary, nullptr);
    EXPECT_EQ(described(dictionary->value("a")), "b");
}

} // namespace
