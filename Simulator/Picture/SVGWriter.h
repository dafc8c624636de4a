#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// Numbers as a document holds them: with at most two decimals, a space between them.
std::string svgNumbers(std::initializer_list<double> numbers);

/// The outline of a shape, step by step.
class SVGPath {
public:
    /// Adds a command, as paths have them, with its numbers.
    SVGPath& step(std::string_view command, std::initializer_list<double> numbers = {});

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// An attribute of an element.
struct Attribute {
    std::string name;
    std::string value;

    Attribute(std::string_view itsName, std::string_view itsValue);
    Attribute(std::string_view itsName, double itsValue);
};

using Attributes = std::vector<Attribute>;

/// Writes a well-formed document, whatever the texts: what XML cannot hold is replaced.
class SVGWriter {
public:
    /// Begins an element; what follows, until it is closed, stands in it.
    void open(const std::string& name, const Attributes& attributes);
    void close();

    /// An element that holds nothing, or a text only.
    void element(const std::string& name, const Attributes& attributes, std::string_view text = {});

    /// The document. Requires: every element has been closed.
    std::string document() const { return text_; }

private:
    void begin(const std::string& name, const Attributes& attributes);
    void endTag(const std::string& name);
    void indent();

    std::string text_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    std::vector<std::string> openElements_;
};

} // namespace simulator
