#include "document/names.h"
#include "draw/zelPictureStyle.h"
#include "window/canvas/scene.h"
#include "window/canvas/scenePlaces.h"

#include <algorithm>
#include <cmath>

namespace shading {

namespace {

std::string rounded(double number)
{
    return std::to_string(std::lround(number * 10));
}

std::string textOf(const QRectF& rect)
{
    return rounded(rect.left()) + " " + rounded(rect.top()) + " " + rounded(rect.width()) + " " +
           rounded(rect.height());
}

} // namespace

const ScenePort& Scene::port(const SceneEnd& end) const
{
    return m_data.port(end);
}

QPointF Scene::dotOf(const SceneEnd& end) const
{
    return m_data.dotOf(end);
}

SceneEnd Scene::endOf(ZEL::Port& port) const
{
    const bool isInner = port.isCompoundInternalPort();
    if (isInner && port.getParentCompound() != m_compound)
        return {};
    // An inner port gives what comes in.
    const bool takes = (port.getPortIOType() == ZEL::PortInput);
    const int box =
        isInner ? bar(!takes) : boxOf(port.getParentNode() ? port.getParentNode().get() : nullptr);
    return box < 0 ? SceneEnd{} : m_data.endIn(box, &port, takes);
}

int Scene::wireOf(ZEL::Port& source, ZEL::Port& target) const
{
    const SceneEnd end = endOf(target);
    if (!end.isValid())
        return -1;
    for (const int wire : m_data.box(end.box).wires) {
        const SceneWire& found = m_data.wire(wire);
        if (found.target == end && m_data.port(found.source).port.get() == &source)
            return wire;
    }
    return -1;
}

/// Splits the path of a port of a node; the box of the node.
int Scene::boxNamed(const std::string& path, std::string& port) const
{
    const std::string around = pathOf(*m_compound->getAsNode()) + ".";
    if (path.compare(0, around.size(), around) != 0)
        return -1;
    for (int i = 0; i < static_cast<int>(m_data.boxes.size()); ++i) {
        const SceneBox& box = m_data.box(i);
        if (!box.isNode())
            continue;
        const std::string name = box.node->getName();
        const std::size_t end = around.size() + name.size();
        if (path.compare(around.size(), name.size(), name) != 0 ||
            (path.size() > end && path[end] != '.'))
            continue;
        port = path.size() > end ? path.substr(end + 1) : "";
        return i;
    }
    return -1;
}

std::optional<QRectF> Scene::nodeRect(const std::string& path) const
{
    std::string port;
    const int box = boxNamed(path, port);
    return box < 0 || !port.empty() ? std::nullopt : std::optional(m_data.box(box).rect);
}

SceneEnd Scene::endAt(const std::string& path, std::optional<bool> takes) const
{
    std::string name;
    const int box = boxNamed(path, name);
    if (box < 0 || name.empty())
        return {};
    const std::vector<ScenePort>& ports = m_data.box(box).ports;
    for (int i = 0; i < static_cast<int>(ports.size()); ++i) {
        const ScenePort& port = ports[static_cast<std::size_t>(i)];
        if (port.port->getName() == name && (!takes || *takes == port.takes))
            return {box, i};
    }
    return {};
}

std::optional<QPointF> Scene::portCentre(const std::string& path, std::optional<bool> isInput) const
{
    const SceneEnd end = endAt(path, isInput);
    return end.isValid() ? std::optional(dotOf(end)) : std::nullopt;
}

std::optional<QPointF> Scene::barCentre(const std::string& path, std::optional<bool> isInput) const
{
    for (const bool asked : {true, false}) {
        const int box = bar(asked);
        if (box < 0 || (isInput && *isInput != asked))
            continue;
        const SceneBox& shown = m_data.box(box);
        for (const ScenePort& port : shown.ports) {
            if (pathOf(*port.port) == path)
                return QPointF(shown.rect.center().x(), shown.rect.top() + port.y);
        }
    }
    return std::nullopt;
}

std::optional<QPointF> Scene::wireMiddle(const std::string& source, const std::string& target) const
{
    for (const SceneWire& wire : m_data.wires) {
        if (!wire.isAlive)
            continue;
        const PortPtr& from = m_data.port(wire.source).port;
        const PortPtr& to = m_data.port(wire.target).port;
        if (from && to && pathOf(*to) == target && pathOf(*from) == source)
            return wire.curve().at(0.5);
    }
    return std::nullopt;
}

QPointF Scene::freePlace(const QRectF& wanted) const
{
    return ScenePlaces::freePlace(m_data, wanted).topLeft();
}

std::string Scene::dump() const
{
    const auto portText = [this](const SceneEnd& end) {
        const ScenePort& port = m_data.port(end);
        return port.port ? pathOf(*port.port) : m_data.texts.text(port.name).toStdString();
    };
    std::vector<std::string> lines;
    for (int i = 0; i < static_cast<int>(m_data.boxes.size()); ++i) {
        const SceneBox& box = m_data.box(i);
        if (!box.isAlive)
            continue;
        std::string line = "box " + std::to_string(static_cast<int>(box.kind)) + " " +
                           (box.node ? pathOf(*box.node) : "") + " \"" +
                           m_data.texts.text(box.title).toStdString() + "\" " +
                           m_data.texts.text(box.typeName).toStdString() + " fold " +
                           std::to_string(static_cast<int>(box.fold)) + " at " + textOf(box.rect) +
                           " omitted " + std::to_string(box.omitted);
        for (int p = 0; p < static_cast<int>(box.ports.size()); ++p) {
            const ScenePort& port = box.ports[static_cast<std::size_t>(p)];
            line += std::string("\n  ") + (port.takes ? "takes " : "gives ") + portText({i, p}) +
                    " " + m_data.texts.type(port.type) + (port.isConnected ? " connected" : "") +
                    " at " + rounded(port.y);
        }
        lines.push_back(line);
    }
    for (const SceneWire& wire : m_data.wires) {
        if (wire.isAlive)
            lines.push_back("wire " + portText(wire.source) + " -> " + portText(wire.target) + " " +
                            m_data.texts.type(wire.type) + " " +
                            textOf(QRectF(wire.from, wire.to)));
    }
    for (const SceneBackdrop& backdrop : m_data.backdrops)
        lines.push_back("backdrop " + m_data.texts.text(backdrop.title).toStdString() + " " +
                        textOf(backdrop.rect));
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

} // namespace shading
