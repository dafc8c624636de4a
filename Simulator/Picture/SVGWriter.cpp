#include "Simulator/Picture/SVGWriter.h"

#include "Simulator/Picture/Characters.h"

#include <array>
#include <charconv>
#include <cmath>

namespace simulator {
namespace {

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : encoded(decoded(text))) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            // A line's end that a paragraph left behind; of these XML knows only the line feed.
            result += static_cast<unsigned char>(character) < 0x20 ? ' ' : character;
        }
    }
    return result;
}

std::string formatted(double number) {
    std::array<char, 64> digits{};
    const double shown = std::isfinite(number) && std::abs(number) < 1e9 ? number : 0;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), shown,
                                   std::chars_format::fixed, 2)
                         .ptr;
    std::string text(digits.data(), end);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

} // namespace

std::string svgNumbers(std::initializer_list<double> numbers) {
    std::string text;
    for (const double number : numbers) {
        if (!text.empty())
            text += ' ';
        text += formatted(number);
    }
    return text;
}

SVGPath& SVGPath::step(std::string_view command, std::initializer_list<double> numbers) {
    text_ += command;
    text_ += svgNumbers(numbers);
    return *this;
}

Attribute::Attribute(std::string_view itsName, std::string_view itsValue)
    : name(itsName), value(itsValue) {}

Attribute::Attribute(std::string_view itsName, double itsValue)
    : name(itsName), value(svgNumbers({itsValue})) {}

void SVGWriter::open(const std::string& name, const Attributes& attributes) {
    begin(name, attributes);
    text_ += ">\n";
    openElements_.push_back(name);
}

void SVGWriter::close() {
    const std::string name = openElements_.back();
    openElements_.pop_back();
    indent();
    endTag(name);
}

void SVGWriter::element(const std::string& name, const Attributes& attributes,
                        std::string_view text) {
    begin(name, attributes);
    if (text.empty()) {
        text_ += "/>\n";
        return;
    }
    text_ += '>';
    text_ += escaped(text);
    endTag(name);
}

void SVGWriter::begin(const std::string& name, const Attributes& attributes) {
    indent();
    text_ += '<';
    text_ += name;
    for (const Attribute& attribute : attributes) {
        text_ += ' ';
        text_ += attribute.name;
        text_ += "=\"";
        text_ += escaped(attribute.value);
        text_ += '"';
    }
}

void SVGWriter::endTag(const std::string& name) {
    text_ += "</";
    text_ += name;
    text_ += ">\n";
}

void SVGWriter::indent() {
    text_.append(openElements_.size(), ' ');
}

} // namespace simulator
