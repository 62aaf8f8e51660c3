#include "base/utf8.h"
#include "draw/zelPicture.h"
#include "draw/zelPictureStyle.h"
#include "draw/zelTheme.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace zelDraw {

namespace {

/// The rules of the style, in the light colours.
std::string styleText()
{
    const Theme& colours = theme(false);
    const struct {
        const char* text;
        Colour colour; ///< Follows the text.
    } parts[] = {
        {"text{font-family:ui-monospace,SFMono-Regular,'DejaVu Sans Mono',Menlo,Consolas,monospace;"
         "font-size:11px;fill:",
         colours.text},
        {"}.name{font-size:13px;font-weight:600;fill:", colours.name},
        {"}.type,.more{fill:", colours.faint},
        {"}.page{fill:", colours.page},
        {"}.body{stroke-width:1.2;fill:", colours.body},
        {";stroke:", colours.border},
        {"}.compound>.body{stroke:", colours.compoundBorder},
        {"}.unknown>.body{stroke:", colours.unknownBorder},
        {"}.head{fill:", colours.head},
        {"}.compound>.head{fill:", colours.compoundHead},
        {"}.hatch{fill:url(#hatch)}.stripe{stroke-width:3;stroke:", colours.hatch},
        {"}.sign{fill:none;stroke-width:1.3;stroke:", colours.compoundBorder},
        {"}.frame>.body{fill-opacity:.06;fill:", colours.frame},
        {";stroke:", colours.frameBorder},
        {"}.stub>.body{stroke-dasharray:4 3;fill:", colours.stub},
        {"}.connection{fill:none;stroke-width:2;stroke-linecap:round;opacity:.9}"
         ".dot{stroke-width:1.6;stroke-linejoin:round}.free{fill:",
         colours.body},
    };
    std::string style;
    for (const auto& part : parts)
        style += part.text + colourText(part.colour);
    return style + "}";
}

/// The text for an XML attribute or element. What XML cannot hold becomes the sign U+FFFD.
std::string escaped(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const auto [code, size] = shading::characterAt(text, i);
        i += size;
        if (!shading::isXmlCharacter(code))
            result += "\uFFFD";
        else if (code < 0x20 || code == '&' || code == '<' || code == '>' || code == '"')
            result += "&#" + std::to_string(static_cast<int>(code)) + ";";
        else
            result += text.substr(i - size, size);
    }
    return result;
}

/// With at most one decimal, which is a full stop everywhere.
std::string numberText(double number)
{
    const long tenths = std::lround(std::abs(number) * 10);
    std::string result = number < 0 && tenths != 0 ? "-" : "";
    result += std::to_string(tenths / 10);
    if (tenths % 10 != 0)
        result += "." + std::to_string(tenths % 10);
    return result;
}

std::string attribute(const char* name, const std::string& value)
{
    return std::string(" ") + name + "=\"" + value + "\"";
}

std::string attribute(const char* name, double value)
{
    return attribute(name, numberText(value));
}

std::string rectText(const char* kind, const Rect& place, int radius)
{
    return "<rect" + attribute("class", kind) + attribute("x", place.left) +
           attribute("y", place.top) + attribute("width", place.width) +
           attribute("height", place.height) + attribute("rx", radius) + "/>\n";
}

enum class Anchor { Start, End };

std::string text(const char* kind, const Point& at, Anchor anchor, const std::string& words)
{
    return "<text" + (*kind == '\0' ? "" : attribute("class", kind)) + attribute("x", at.x) +
           attribute("y", at.y) + (anchor == Anchor::End ? " text-anchor=\"end\"" : "") + ">" +
           escaped(words) + "</text>\n";
}

std::string pointText(const Point& point)
{
    return numberText(point.x) + "," + numberText(point.y);
}

/// The shape of the type, filled or hollow.
std::string dotText(const Point& at, const std::string& type, bool isFilled)
{
    std::string shape = "M";
    for (const Corner& corner : outlineOf(shapeOf(type)))
        shape += (shape.size() > 1 ? "L" : "") + pointText({corner.x, corner.y});
    const std::string colour = colourText(typeColour(type, false));
    return "<path" + attribute("class", isFilled ? "dot" : "dot free") +
           attribute("transform", "translate(" + pointText(at) + ")") +
           attribute("d", shape + "z") + attribute("stroke", colour) +
           (isFilled ? attribute("fill", colour) : "") + "/>";
}

std::string tooltip(const std::string& words)
{
    return "<title>" + escaped(words) + "</title>";
}

std::string curveText(const Curve& curve)
{
    std::string result = "M" + pointText(curve.front()) + "C";
    for (std::size_t i = 1; i < curve.size(); ++i)
        result += (i > 1 ? " " : "") + pointText(curve[i]);
    return result;
}

const char* const kHatch =
    "<pattern id=\"hatch\" width=\"9\" height=\"9\" patternUnits=\"userSpaceOnUse\" "
    "patternTransform=\"rotate(45)\"><path class=\"stripe\" d=\"M0,0V9\"/></pattern>\n";

class Writer {
public:
    std::string write(const PictureBox& picture)
    {
        writeBox(picture);
        const double below = picture.place.height + kPictureMargin / 2.0;
        const double legend = writeLegend(0, below, picture.place.width);
        const Rect page = {-kPictureMargin, -kPictureMargin,
                           picture.place.width + 2 * kPictureMargin,
                           below + legend + 1.5 * kPictureMargin};
        return "<svg xmlns=\"http://www.w3.org/2000/svg\"" + attribute("width", page.width) +
               attribute("height", page.height) +
               attribute("viewBox", pointText({page.left, page.top}) + "," +
                                        pointText({page.width, page.height})) +
               ">\n<style>" + styleText() + "</style>\n" + kHatch + rectText("page", page, 10) +
               m_text + "</svg>\n";
    }

private:
    void writeBox(const PictureBox& box)
    {
        const char* const kinds[] = {"node", "compound", "frame", "stub"};
        const char* const kind =
            box.isUnknown ? "unknown" : kinds[static_cast<std::size_t>(box.kind)];
        m_text += "<g" + attribute("class", kind) + attribute("data-path", escaped(box.path)) +
                  ">" + tooltip(box.type.empty() ? box.path : box.path + ": " + box.type) + "\n";
        if (box.kind == PictureBox::Kind::Frame) {
            writeFrame(box);
        } else if (box.kind == PictureBox::Kind::Stub) {
            const PicturePort& port = box.inputs.empty() ? box.outputs.front() : box.inputs.front();
            m_types.insert(port.type);
            m_text += rectText("body", box.place, kStubHeight / 2);
            m_text += text("more", {box.place.left + kTextMargin, box.place.top + 15},
                           Anchor::Start, shortened(box.name, kLongestName));
            m_text += dotText(port.dot, port.type, true) + "\n";
        } else {
            m_text += rectText("body", box.place, 6);
            if (box.isUnknown)
                m_text += rectText("hatch", box.place, 6);
            writeHeader(box);
            writeOmitted(box);
        }
        if (box.kind != PictureBox::Kind::Stub) {
            writePorts(box, box.inputs, true);
            writePorts(box, box.outputs, false);
        }
        m_text += "</g>\n";
    }

    void writeHeader(const PictureBox& box)
    {
        const Rect& place = box.place;
        const double right = place.left + place.width;
        const double bottom = place.top + kBoxHeader - 6;
        m_text += "<path class=\"head\" d=\"M" + pointText({place.left + 0.6, bottom}) + "V" +
                  numberText(place.top + 6) + "a5.4,5.4 0 0 1 5.4,-5.4H" + numberText(right - 6) +
                  "a5.4,5.4 0 0 1 5.4,5.4V" + numberText(bottom) + "z\"/>\n";
        if (box.kind == PictureBox::Kind::Compound) {
            m_text += rectText("sign", {right - 25, place.top + 8, 13, 11}, 2);
            m_text += rectText("sign", {right - 21.5, place.top + 11.5, 6, 4}, 1);
        }
        m_text += text("name", {place.left + kTextMargin, place.top + 17}, Anchor::Start,
                       shortened(box.name, kLongestName));
        m_text += text("type", {place.left + kTextMargin, place.top + 31}, Anchor::Start,
                       shortened(box.type, kLongestName));
    }

    void writeFrame(const PictureBox& frame)
    {
        const Rect& place = frame.place;
        m_text += rectText("body", place, 8);
        m_text += text("name", {place.left + kTextMargin, place.top + 21}, Anchor::Start,
                       shortened(frame.name, kLongestName));
        m_text += text("type", {place.left + place.width - kTextMargin, place.top + 21},
                       Anchor::End, shortened(frame.type, kLongestName));
        if (frame.boxes.empty())
            m_text +=
                text("more", {place.left + place.width / 2 - 16, place.top + place.height - 14},
                     Anchor::Start, "empty");
        for (const PictureConnection& connection : frame.connections)
            writeConnection(connection);
        for (const PictureBox& box : frame.boxes)
            writeBox(box);
    }

    void writeConnection(const PictureConnection& connection)
    {
        m_types.insert(connection.type);
        m_text += "<path class=\"connection\"" +
                  attribute("data-from", escaped(connection.sourcePath)) +
                  attribute("data-to", escaped(connection.targetPath)) +
                  attribute("stroke", colourText(typeColour(connection.type, false))) +
                  attribute("d", curveText(connection.curve)) + "/>\n";
    }

    void writePorts(const PictureBox& box, const std::vector<PicturePort>& ports, bool isInput)
    {
        const bool isFrame = box.kind == PictureBox::Kind::Frame;
        for (const PicturePort& port : ports) {
            m_types.insert(port.type);
            const double x = port.dot.x + (isInput ? kTextMargin : -kTextMargin);
            const double y = port.dot.y + (isFrame ? -5 : 4);
            m_text += "<g" + attribute("class", isInput ? "port input" : "port output") +
                      attribute("data-path", escaped(port.path)) + ">" +
                      tooltip(port.name + ": " + (port.type.empty() ? "no type" : port.type)) +
                      dotText(port.dot, port.type, port.isConnected);
            m_text += text("", {x, y}, isInput ? Anchor::Start : Anchor::End,
                           shortened(port.name, kLongestPortName));
            m_text.back() = '<';
            m_text += "/g>\n";
        }
    }

    void writeOmitted(const PictureBox& box)
    {
        if (box.omittedInputs == 0)
            return;
        const double y = box.place.top + kBoxHeader + kRowHeight / 2.0 + 4 +
                         kRowHeight * static_cast<int>(box.inputs.size());
        m_text += text("more", {box.place.left + kTextMargin, y}, Anchor::Start,
                       omittedText(box.omittedInputs));
    }

    /// Rows of dots with names, below the picture; returns their height.
    double writeLegend(double left, double top, double width)
    {
        double x = left;
        double y = top;
        m_text += "<g class=\"legend\">\n";
        for (const std::string& type : m_types) {
            const std::string name = type.empty() ? "no type" : type;
            const double step = textWidth(name, kTypeSize) + 34;
            if (x > left && x + step > left + width) {
                x = left;
                y += kRowHeight;
            }
            m_text += dotText({x + 6, y + 10}, type, true) +
                      text("type", {x + 16, y + 14}, Anchor::Start, name);
            x += step;
        }
        m_text += "</g>\n";
        return m_types.empty() ? 0 : y - top + kRowHeight;
    }

    std::string m_text;
    std::set<std::string> m_types; ///< All that occur.
};

} // namespace

std::string pictureSvg(const PictureBox& picture)
{
    return Writer().write(picture);
}

} // namespace zelDraw
