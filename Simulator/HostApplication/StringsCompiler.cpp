// Turns a strings file into another of the forms that a strings file may have on the device.

#include "Platform/PropertyLists.h"

#include <cstdint>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using Texts = std::map<std::string, std::string>;

std::optional<Texts> textsIn(const std::string& path) {
    const auto dictionary = platform::dictionaryWithContentsOfFile(path);
    if (!dictionary)
        return std::nullopt;
    Texts texts;
    for (const auto& [key, value] : *dictionary) {
        if (!value->string())
            return std::nullopt;
        texts[*key] = *value->string();
    }
    return texts;
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            result += '\\';
        result += character;
    }
    return result + '"';
}

std::string textForm(const Texts& texts) {
    std::string file;
    for (const auto& [key, value] : texts)
        file += quoted(key) + " = " + quoted(value) + ";\n";
    return file;
}

std::string xmlEscaped(const std::string& text) {
    std::string result;
    for (const char character : text) {
        if (character == '<')
            result += "&lt;";
        else if (character == '>')
            result += "&gt;";
        else if (character == '&')
            result += "&amp;";
        else
            result += character;
    }
    return result;
}

std::string xmlForm(const Texts& texts) {
    std::string file =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n";
    for (const auto& [key, value] : texts)
        file += "    <key>" + xmlEscaped(key) + "</key>\n    <string>" + xmlEscaped(value) +
                "</string>\n";
    return file + "</dict>\n</plist>\n";
}

// Requires: valid UTF-8, which is all that the reader hands out.
std::u16string utf16(std::string_view text) {
    std::u16string units;
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at++]);
        const int following = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        std::uint32_t scalar = following == 0 ? lead : lead & (0x3Fu >> following);
        for (int count = 0; count < following; ++count)
            scalar = scalar << 6 | (static_cast<unsigned char>(text[at++]) & 0x3Fu);
        if (scalar >= 0x10000) {
            units += static_cast<char16_t>(0xD800 + ((scalar - 0x10000) >> 10));
            units += static_cast<char16_t>(0xDC00 + ((scalar - 0x10000) & 0x3FF));
        } else {
            units += static_cast<char16_t>(scalar);
        }
    }
    return units;
}

std::string bigEndian(std::uint64_t number, unsigned size) {
    std::string bytes;
    for (unsigned left = size; left > 0; --left)
        bytes += static_cast<char>(number >> (left - 1) * 8 & 0xFF);
    return bytes;
}

std::string bigEndian(const std::u16string& units) {
    std::string bytes;
    for (const char16_t unit : units)
        bytes += bigEndian(unit, 2);
    return bytes;
}

std::string utf16BigEndianForm(const Texts& texts) {
    return bigEndian(0xFEFF, 2) + bigEndian(utf16(textForm(texts)));
}

std::string utf16LittleEndianForm(const Texts& texts) {
    std::string bytes = utf16BigEndianForm(texts);
    for (std::size_t at = 0; at < bytes.size(); at += 2)
        std::swap(bytes[at], bytes[at + 1]);
    return bytes;
}

constexpr unsigned numberSize = 4;

// The head of an object with a count: its kind, and the count in it or behind it.
std::string binaryHead(unsigned kind, std::size_t count) {
    if (count < 15)
        return bigEndian(kind << 4 | count, 1);
    return bigEndian(kind << 4 | 15, 1) + bigEndian(0x12, 1) + bigEndian(count, numberSize);
}

std::string binaryString(const std::string& text) {
    const std::u16string units = utf16(text);
    if (units.size() == text.size())
        return binaryHead(5, text.size()) + text;
    return binaryHead(6, units.size()) + bigEndian(units);
}

std::string binaryForm(const Texts& texts) {
    // The dictionary refers to its keys first, then to its values: to the objects behind it, in
    // this order.
    std::vector<std::string> objects = {binaryHead(13, texts.size())};
    for (std::size_t object = 1; object <= texts.size() * 2; ++object)
        objects[0] += bigEndian(object, numberSize);
    for (const auto& [key, value] : texts)
        objects.push_back(binaryString(key));
    for (const auto& [key, value] : texts)
        objects.push_back(binaryString(value));

    std::string file = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += bigEndian(file.size(), numberSize);
        file += object;
    }
    const std::size_t offsetsStart = file.size();
    return file + offsets + bigEndian(0, 6) + bigEndian(numberSize, 1) + bigEndian(numberSize, 1) +
           bigEndian(objects.size(), 8) + bigEndian(0, 8) + bigEndian(offsetsStart, 8);
}

const std::map<std::string, std::function<std::string(const Texts&)>> forms = {
    {"text", textForm},
    {"xml", xmlForm},
    {"binary", binaryForm},
    {"utf16le", utf16LittleEndianForm},
    {"utf16be", utf16BigEndianForm},
};

} // namespace

int main(int argumentCount, char** arguments) {
    const auto form = argumentCount == 4 ? forms.find(arguments[1]) : forms.end();
    if (form == forms.end()) {
        std::cerr << "usage: purgo-strings-compiler text|xml|binary|utf16le|utf16be FROM TO\n";
        return 2;
    }
    const auto texts = textsIn(arguments[2]);
    if (!texts) {
        std::cerr << arguments[2] << ": no strings file\n";
        return 1;
    }
    std::ofstream file(arguments[3], std::ios::binary);
    file << form->second(*texts) << std::flush;
    if (!file)
        std::cerr << arguments[3] << ": cannot be written\n";
    return file ? 0 : 1;
}
