#include "Simulator/Picture/Drawing.h"

#include <initializer_list>

namespace simulator {
namespace {

using Direction = PopoverArrow::Direction;

struct Point {
    double x;
    double y;
};

/// The outline of a shape with these corners.
std::string pathOf(std::initializer_list<Point> corners) {
    SVGPath path;
    for (const Point corner : corners)
        path.step(path.text().empty() ? "M" : "L", {corner.x, corner.y});
    return path.step("Z").text();
}

Attributes anchored(const TextLine& line, Alignment alignment) {
    if (alignment == Alignment::center)
        return {{"x", line.box.centerX()}, {"text-anchor", "middle"}};
    return {{"x", line.isRightToLeft ? line.box.right() : line.box.x}, {"text-anchor", "start"}};
}

void drawLine(SVGWriter& writer, const TextLine& line, const TextBlock& block,
              std::string_view color) {
    Attributes attributes = anchored(line, block.alignment);
    attributes.emplace_back("y", line.box.centerY() + block.style.size * 0.35);
    attributes.emplace_back("font-size", block.style.size);
    attributes.emplace_back("fill", color);
    if (block.style.isBold)
        attributes.emplace_back("font-weight", "bold");
    if (line.isRightToLeft) {
        attributes.emplace_back("direction", "rtl");
        attributes.emplace_back("unicode-bidi", "embed");
    }
    attributes.emplace_back("xml:space", "preserve");
    writer.element("text", attributes, line.text);
}

} // namespace

void defineGradient(SVGWriter& writer, std::string_view id,
                    const std::vector<GradientStop>& stops) {
    writer.open("linearGradient", {{"id", id}, {"x1", 0}, {"y1", 0}, {"x2", 0}, {"y2", 1}});
    for (const GradientStop& stop : stops) {
        Attributes attributes{{"offset", stop.offset}, {"stop-color", stop.color}};
        if (stop.opacity < 1)
            attributes.emplace_back("stop-opacity", stop.opacity);
        writer.element("stop", attributes);
    }
    writer.close();
}

void drawBox(SVGWriter& writer, Box box, double radius, std::string_view fill,
             const Attributes& more) {
    Attributes attributes{
        {"x", box.x}, {"y", box.y}, {"width", box.width}, {"height", box.height}, {"fill", fill}};
    if (radius > 0)
        attributes.emplace_back("rx", radius);
    attributes.insert(attributes.end(), more.begin(), more.end());
    writer.element("rect", attributes);
}

void drawPath(SVGWriter& writer, std::string_view path, const Attributes& attributes) {
    Attributes all{{"d", path}};
    all.insert(all.end(), attributes.begin(), attributes.end());
    writer.element("path", all);
}

void openClipped(SVGWriter& writer, Box box) {
    writer.open("svg", {{"x", box.x},
                        {"y", box.y},
                        {"width", box.width},
                        {"height", box.height},
                        {"viewBox", svgNumbers({box.x, box.y, box.width, box.height})},
                        {"overflow", "hidden"}});
}

void drawShadow(SVGWriter& writer, Box box, double radius) {
    for (const double spread : {6.0, 4.0, 2.0})
        drawBox(writer, box.movedBy(0, 3).inset(-spread, -spread), radius + spread, "#000",
                {{"fill-opacity", 0.07}});
}

void drawText(SVGWriter& writer, const TextBlock& block, std::string_view color) {
    if (block.lines.empty())
        return;
    openClipped(writer, block.box);
    for (const TextLine& line : block.lines)
        drawLine(writer, line, block, color);
    writer.close();
}

std::string arrowPath(const PopoverArrow& arrow, double overlap) {
    const Box& box = arrow.box;
    switch (arrow.direction) {
    case Direction::up:
        return pathOf({{box.x, box.bottom() + overlap},
                       {box.x, box.bottom()},
                       {box.centerX(), box.y},
                       {box.right(), box.bottom()},
                       {box.right(), box.bottom() + overlap}});
    case Direction::down:
        return pathOf({{box.x, box.y - overlap},
                       {box.x, box.y},
                       {box.centerX(), box.bottom()},
                       {box.right(), box.y},
                       {box.right(), box.y - overlap}});
    case Direction::left:
        return pathOf({{box.right() + overlap, box.y},
                       {box.right(), box.y},
                       {box.x, box.centerY()},
                       {box.right(), box.bottom()},
                       {box.right() + overlap, box.bottom()}});
    case Direction::right:
        return pathOf({{box.x - overlap, box.y},
                       {box.x, box.y},
                       {box.right(), box.centerY()},
                       {box.x, box.bottom()},
                       {box.x - overlap, box.bottom()}});
    }
    return {};
}

} // namespace simulator
