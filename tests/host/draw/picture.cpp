#include "draw/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <pugixml.hpp>
#include <sstream>

namespace {

using Point = ShownPicture::Point;
using Box = ShownPicture::Box;

constexpr double kTolerance = 0.5;

bool areClose(const Point& a, const Point& b)
{
    return std::hypot(a.x - b.x, a.y - b.y) <= kTolerance;
}

std::vector<Point> pointsOf(std::string shape)
{
    std::replace_if(
        shape.begin(), shape.end(), [](char c) { return c == 'M' || c == 'C' || c == ','; }, ' ');
    std::istringstream words(shape);
    std::vector<Point> points;
    Point point{};
    while (words >> point.x >> point.y)
        points.push_back(point);
    return points;
}

/// A plain estimate, in sizes of the font: 0.6 for a letter, 1 for a sign of East Asia.
double widthOf(const std::string& words)
{
    double width = 0;
    for (const char c : words) {
        const auto byte = static_cast<unsigned char>(c);
        width += byte >= 0xE3 && byte < 0xEF ? 1 : (byte & 0xC0U) == 0x80 ? 0 : 0.6;
    }
    return width;
}

ShownPicture::Text textOf(const pugi::xml_node& text)
{
    const bool isName = std::strcmp(text.attribute("class").value(), "name") == 0;
    const std::string words = text.child_value();
    const double width = (isName ? 13 : 11) * widthOf(words);
    const double x = text.attribute("x").as_double();
    const bool isAtEnd = !text.attribute("text-anchor").empty();
    return {words, isAtEnd ? x - width : x, isAtEnd ? x : x + width,
            text.attribute("y").as_double()};
}

/// The first word of its class.
bool isOfClass(const pugi::xml_node& node, const std::string& name)
{
    const std::string value = node.attribute("class").value();
    return value.substr(0, value.find(' ')) == name;
}

/// "translate(X,Y)"
Point dotOf(const pugi::xml_node& group)
{
    const pugi::xml_node dot =
        group.find_child([](const pugi::xml_node& child) { return isOfClass(child, "dot"); });
    std::string place = dot.attribute("transform").value();
    std::replace_if(
        place.begin(), place.end(), [](char c) { return c == '(' || c == ',' || c == ')'; }, ' ');
    std::istringstream words(place);
    std::string word;
    Point point{};
    words >> word >> point.x >> point.y;
    return point;
}

Box boxOf(const pugi::xml_node& group, std::size_t frame)
{
    const pugi::xml_node body = group.find_child_by_attribute("rect", "class", "body");
    const double left = body.attribute("x").as_double();
    const double top = body.attribute("y").as_double();
    const std::string kind = group.attribute("class").value();
    Box box{kind == "unknown" ? "node" : kind,
            group.attribute("data-path").value(),
            frame,
            left,
            top,
            left + body.attribute("width").as_double(),
            top + body.attribute("height").as_double(),
            {},
            {}};
    for (const pugi::xml_node text : group.children("text"))
        box.texts.push_back(textOf(text));
    for (const pugi::xml_node inner : group.children("g")) {
        const std::string role = inner.attribute("class").value();
        if (role.rfind("port ", 0) != 0)
            continue;
        box.ports.push_back(
            {inner.attribute("data-path").value(), role == "port input", dotOf(inner)});
        box.texts.push_back(textOf(inner.child("text")));
    }
    std::stable_sort(box.ports.begin(), box.ports.end(), [](const auto& a, const auto& b) {
        return a.isInput != b.isInput ? a.isInput : a.dot.y < b.dot.y;
    });
    if (box.kind == "stub")
        box.ports.push_back({box.path, dotOf(group).x == left, dotOf(group)});
    return box;
}

void readGroup(const pugi::xml_node& group, std::size_t frame, ShownPicture& picture)
{
    const std::size_t index = picture.boxes.size();
    picture.boxes.push_back(boxOf(group, index == 0 ? 0 : frame));
    for (const pugi::xml_node path : group.children("path")) {
        if (std::strcmp(path.attribute("class").value(), "connection") == 0)
            picture.connections.push_back({path.attribute("data-from").value(),
                                           path.attribute("data-to").value(),
                                           pointsOf(path.attribute("d").value())});
    }
    for (const pugi::xml_node inner : group.children("g")) {
        if (inner.find_child_by_attribute("rect", "class", "body"))
            readGroup(inner, index, picture);
    }
}

bool overlap(const Box& a, const Box& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

bool contains(const Box& outer, const Box& inner)
{
    return outer.left <= inner.left && inner.right <= outer.right && outer.top <= inner.top &&
           inner.bottom <= outer.bottom;
}

Point curvePoint(const Point* c, double t)
{
    const double s = 1 - t;
    const double w[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
    return {w[0] * c[0].x + w[1] * c[1].x + w[2] * c[2].x + w[3] * c[3].x,
            w[0] * c[0].y + w[1] * c[1].y + w[2] * c[2].y + w[3] * c[3].y};
}

std::vector<Point> alongCurve(const std::vector<Point>& control)
{
    std::vector<Point> points;
    for (std::size_t i = 0; i + 3 < control.size(); i += 3) {
        for (int step = 0; step <= 32; ++step)
            points.push_back(curvePoint(&control[i], step / 32.0));
    }
    return points;
}

bool isInside(const Point& point, const Box& box, double depth)
{
    return point.x > box.left + depth && point.x < box.right - depth && point.y > box.top + depth &&
           point.y < box.bottom - depth;
}

/// True when the curve runs through the inside of the box, more than two pixels deep.
bool crosses(const std::vector<Point>& points, const Box& box)
{
    return std::any_of(points.begin(), points.end(),
                       [&](const Point& point) { return isInside(point, box, 2); });
}

bool isWithin(const std::vector<Point>& points, const Box& box)
{
    return std::all_of(points.begin(), points.end(),
                       [&](const Point& point) { return isInside(point, box, -1); });
}

std::string boxFaults(const ShownPicture& picture, std::size_t index)
{
    const Box& box = picture.boxes[index];
    std::string faults;
    if (!contains(picture.boxes[box.frame], box))
        faults += box.path + " leaves its frame\n";
    for (std::size_t i = index + 1; i < picture.boxes.size(); ++i) {
        const Box& other = picture.boxes[i];
        if (index != 0 && other.frame == box.frame && overlap(box, other))
            faults += box.path + " overlaps " + other.path + "\n";
    }
    for (const ShownPicture::Text& text : picture.boxes[box.frame].texts) {
        if (index != 0 && text.left < box.right && box.left < text.right &&
            text.bottom - 9 < box.bottom && box.top < text.bottom + 2)
            faults += box.path + " covers " + text.words + "\n";
    }
    for (const ShownPicture::Port& port : box.ports) {
        const double border = port.isInput ? box.left : box.right;
        if (std::abs(port.dot.x - border) > kTolerance || port.dot.y < box.top ||
            port.dot.y > box.bottom)
            faults += port.path + " is not on the border\n";
    }
    return faults;
}

std::string textFaults(const Box& box)
{
    std::string faults;
    for (std::size_t i = 0; i < box.texts.size(); ++i) {
        const ShownPicture::Text& text = box.texts[i];
        if (text.left < box.left + 3 || text.right > box.right - 3 || text.bottom < box.top + 8 ||
            text.bottom > box.bottom - 3)
            faults += text.words + " leaves " + box.path + "\n";
        for (std::size_t k = i + 1; k < box.texts.size(); ++k) {
            const ShownPicture::Text& other = box.texts[k];
            if (text.left < other.right && other.left < text.right &&
                std::abs(text.bottom - other.bottom) < 10)
                faults += text.words + " overlaps " + other.words + "\n";
        }
    }
    return faults;
}

std::string connectionFaults(const ShownPicture& picture,
                             const ShownPicture::Connection& connection)
{
    const std::string name = connection.from + " -> " + connection.to;
    if (connection.curve.size() < 4 || connection.curve.size() % 3 != 1)
        return name + " is no curve\n";
    const std::vector<Point> points = alongCurve(connection.curve);
    bool isFromDot = false;
    bool isToDot = false;
    std::string faults;
    for (const Box& box : picture.boxes) {
        for (const ShownPicture::Port& port : box.ports) {
            isFromDot |=
                port.path == connection.from && areClose(port.dot, connection.curve.front());
            isToDot |= port.path == connection.to && areClose(port.dot, connection.curve.back());
        }
        if (box.kind != "frame" && crosses(points, box))
            faults += name + " crosses " + box.path + "\n";
    }
    if (!isWithin(points, picture.boxes[0]))
        faults += name + " leaves the picture\n";
    return faults + (isFromDot && isToDot ? "" : name + " does not end on the dots\n");
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string result;
    for (const std::string& line : lines)
        result += line + "\n";
    return result;
}

void addConnections(ZEL::PortList& sources, std::vector<std::string>& lines)
{
    for (ZEL::Port* const source : sources) {
        for (ZEL::Port* const target : source->connectedTo())
            lines.push_back(std::string(source->getFullPathName().getName()) + " -> " +
                            target->getFullPathName().getName());
    }
}

void addConnections(ZEL::Compound& compound, int depth, std::vector<std::string>& lines)
{
    addConnections(compound.innerInputs(), lines);
    for (ZEL::Node* const node : compound.nodes()) {
        addConnections(node->outputs(), lines);
        if (node->isCompound() && depth > 0)
            addConnections(*node->getAsCompound(), depth - 1, lines);
    }
}

void addBox(ZEL::Node& node, int depth, std::vector<std::string>& lines)
{
    const std::string kind = !node.isCompound() ? "node " : depth < 0 ? "compound " : "frame ";
    lines.push_back(kind + node.getFullPathName().getName());
    for (ZEL::Port* const port : node.inputs())
        lines.push_back(std::string("  input ") + port->getFullPathName().getName());
    for (ZEL::Port* const port : node.outputs())
        lines.push_back(std::string("  output ") + port->getFullPathName().getName());
    if (!node.isCompound() || depth < 0)
        return;
    for (ZEL::Node* const inner : node.getAsCompound()->nodes())
        addBox(*inner, depth - 1, lines);
}

} // namespace

ShownPicture::ShownPicture(const std::string& svg)
{
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(svg.data(), svg.size());
    EXPECT_TRUE(result) << result.description() << "\n" << svg.substr(0, 400);
    if (result)
        readGroup(document.child("svg").child("g"), 0, *this);
}

std::string ShownPicture::boxesText() const
{
    std::vector<std::string> lines;
    for (const Box& box : boxes) {
        if (box.kind == "stub")
            continue;
        lines.push_back(box.kind + " " + box.path);
        for (const Port& port : box.ports)
            lines.push_back((port.isInput ? "  input " : "  output ") + port.path);
    }
    return joined(lines);
}

std::string ShownPicture::connectionsText() const
{
    std::vector<std::string> lines;
    for (const Connection& connection : connections)
        lines.push_back(connection.from + " -> " + connection.to);
    std::sort(lines.begin(), lines.end());
    return joined(lines);
}

std::string ShownPicture::faultsText() const
{
    std::string faults;
    for (std::size_t i = 0; i < boxes.size(); ++i)
        faults += boxFaults(*this, i) + textFaults(boxes[i]);
    for (const Connection& connection : connections)
        faults += connectionFaults(*this, connection);
    return faults;
}

std::string ShownPicture::backwardText() const
{
    std::string result;
    for (const Connection& connection : connections) {
        for (const Box& box : boxes) {
            for (const Port& port : box.ports) {
                // The dot of the box that sends, not that of a frame's edge which is fed.
                const bool isSource = !port.isInput && areClose(port.dot, connection.curve.front());
                if (isSource && connection.curve.back().x <= box.right)
                    result += connection.from + " -> " + connection.to + "\n";
            }
        }
    }
    return result;
}

std::string expectedBoxes(ZEL::Compound& compound, int depth)
{
    std::vector<std::string> lines;
    addBox(*compound.getAsNode(), depth, lines);
    return joined(lines);
}

std::string expectedConnections(ZEL::Compound& compound, int depth)
{
    std::vector<std::string> lines;
    addConnections(compound, depth, lines);
    std::sort(lines.begin(), lines.end());
    return joined(lines);
}
