#include "window/canvas/sceneReader.h"

#include "document/document.h"
#include "document/names.h"
#include "draw/zelPictureStyle.h"
#include "session/shown.h"

#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr int kCanvasStubHeight = 17; ///< Those at neighbouring ports do not touch.

SceneBox::Kind kindOf(ZEL::Node& node)
{
    if (node.isCompound())
        return SceneBox::Kind::Compound;
    return isUnknown(node) ? SceneBox::Kind::Unknown : SceneBox::Kind::Node;
}

std::vector<double> labelWidths(const std::vector<ScenePort>& ports, bool takes)
{
    std::vector<double> widths;
    for (const ScenePort& port : ports) {
        if (port.takes == takes)
            widths.push_back(zelDraw::labelWidth(port.port->getName()));
    }
    return widths;
}

} // namespace

int SceneReader::addNode(const NodePtr& node)
{
    const int box = m_data.addBox();
    m_data.box(box).node = node;
    m_data.boxByNode[node.get()] = box;
    ++m_data.nodeCount;
    readNode(box);
    return box;
}

void SceneReader::readNode(int index)
{
    SceneBox& box = m_data.box(index);
    ZEL::Node& node = *box.node;
    box.kind = kindOf(node);
    box.fold = m_memory.fold(box.node);
    box.title = m_data.texts.add(zelDraw::shortened(node.getName(), zelDraw::kLongestName));
    box.typeName =
        m_data.texts.add(zelDraw::shortened(node.getNodeTypeName(), zelDraw::kLongestName));
    box.ports.clear();
    box.omitted = 0;
    const bool showsAll = box.fold == Fold::All || box.kind == SceneBox::Kind::Compound;
    for (ZEL::Port* const port : node.inputs()) {
        if (showsAll || port->isConnected() || isTelling(node, *port))
            addPort(box, *port, true);
        else
            ++box.omitted;
    }
    box.takers = static_cast<int>(box.ports.size());
    for (ZEL::Port* const port : node.outputs())
        addPort(box, *port, false);
    placePorts(box);
}

void SceneReader::placePorts(SceneBox& box) const
{
    const bool hasSign = box.kind == SceneBox::Kind::Compound;
    const double header =
        zelDraw::headerWidth(box.node->getName(), box.node->getNodeTypeName(), hasSign);
    std::vector<double> left = labelWidths(box.ports, true);
    if (box.omitted > 0)
        left.push_back(zelDraw::textWidth(zelDraw::omittedText(box.omitted), zelDraw::kPortSize));
    const std::vector<double> right = labelWidths(box.ports, false);
    const bool isClosed = box.fold == Fold::Header;
    const zelDraw::BoxSize size = isClosed ? zelDraw::closedBoxSize(header, {}, {})
                                           : zelDraw::closedBoxSize(header, left, right);
    box.size = {size.width, size.height};
    for (std::size_t i = 0; i < box.ports.size(); ++i) {
        ScenePort& port = box.ports[i];
        const std::size_t row = port.takes ? i : i - static_cast<std::size_t>(box.takers);
        port.y = isClosed ? zelDraw::kBoxHeader / 2.0
                          : zelDraw::kBoxHeader + zelDraw::rowMiddle(zelDraw::kRowHeight, row);
    }
}

int SceneReader::typeOf(ZEL::Port& port)
{
    const TypePtr type = port.getDataType();
    return m_data.texts.addType(type ? type->getName() : "");
}

void SceneReader::addPort(SceneBox& box, ZEL::Port& port, bool takes)
{
    ScenePort added;
    added.port = PortPtr(&port);
    added.name = m_data.texts.add(zelDraw::shortened(port.getName(), zelDraw::kLongestPortName));
    added.type = typeOf(port);
    added.takes = takes;
    added.isConnected = port.isConnected() || (takes && !hiddenSourceOf(port).empty());
    box.ports.push_back(std::move(added));
}

void SceneReader::readBars(bool isRoot)
{
    readBar(m_data.inputBar, m_compound.innerInputs(), true, !isRoot);
    readBar(m_data.outputBar, m_compound.innerOutputs(), false, !isRoot);
}

void SceneReader::readBar(int& index, ZEL::PortList& ports, bool isInput, bool isWanted)
{
    if (ports.size() == 0 && !isWanted) {
        if (index >= 0)
            m_data.removeBox(index);
        index = -1;
        return;
    }
    if (index < 0)
        index = m_data.addBox();
    SceneBox& box = m_data.box(index);
    box.kind = isInput ? SceneBox::Kind::InputBar : SceneBox::Kind::OutputBar;
    box.node = m_compound.getAsNode();
    box.title = m_data.texts.add(isInput ? "inputs" : "outputs");
    box.ports.clear();
    double width = zelDraw::labelWidth("outputs");
    for (ZEL::Port* const port : ports) {
        addPort(box, *port, !isInput);
        box.ports.back().y = zelDraw::rowMiddle(zelDraw::kEdgeRowHeight, box.ports.size() - 1);
        width = std::max(width, zelDraw::labelWidth(port->getName()));
    }
    box.takers = isInput ? 0 : static_cast<int>(box.ports.size());
    const std::size_t rows = box.ports.size() + 1; // The last one is for a new port.
    box.size = {std::ceil(width) + 2 * zelDraw::kTextMargin,
                static_cast<double>(zelDraw::kEdgeRowHeight) * static_cast<double>(rows)};
}

SceneEnd SceneReader::endOf(ZEL::Port& port, bool takes) const
{
    if (port.isCompoundInternalPort()) {
        const int bar = takes ? m_data.outputBar : m_data.inputBar;
        const bool isOurs = port.getParentCompound().get() == &m_compound;
        return isOurs && bar >= 0 ? m_data.endIn(bar, &port, takes) : SceneEnd{};
    }
    const NodePtr node = port.getParentNode();
    const auto found = m_data.boxByNode.find(node.get());
    return found == m_data.boxByNode.end() ? SceneEnd{} : m_data.endIn(found->second, &port, takes);
}

SceneEnd SceneReader::addStub(const PortPtr& port, const std::string& name, int type, bool takes)
{
    const int index = m_data.addBox();
    SceneBox& stub = m_data.box(index);
    stub.kind = SceneBox::Kind::Stub;
    stub.title = m_data.texts.add(zelDraw::shortened(name, zelDraw::kLongestName));
    ScenePort end;
    end.port = port;
    end.y = kCanvasStubHeight / 2.0;
    end.name = stub.title;
    end.type = type;
    end.takes = takes;
    end.isConnected = true;
    stub.ports.push_back(std::move(end));
    stub.takers = takes ? 1 : 0;
    const double width =
        zelDraw::textWidth(zelDraw::shortened(name, zelDraw::kLongestName), zelDraw::kPortSize);
    stub.size = {std::ceil(width) + 2 * zelDraw::kTextMargin, kCanvasStubHeight};
    return {index, 0};
}

SceneEnd SceneReader::stubOf(ZEL::Port& port, bool takes)
{
    const auto known = m_data.stubs.find(&port);
    if (known != m_data.stubs.end())
        return {known->second, 0};
    const SceneEnd made = addStub(PortPtr(&port), pathOf(port), typeOf(port), takes);
    m_data.stubs[&port] = made.box;
    return made;
}

void SceneReader::connect(int index)
{
    // Stubs come into the array meanwhile: no reference into it is kept.
    for (int i = 0; i < static_cast<int>(m_data.box(index).ports.size()); ++i) {
        const SceneEnd end = {index, i};
        const PortPtr port = m_data.port(end).port;
        const int type = m_data.port(end).type;
        const bool takes = m_data.port(end).takes;
        for (ZEL::Port* const other : port->connectedTo()) {
            SceneEnd far = endOf(*other, !takes);
            if (!takes && far.isValid())
                continue; // The other one makes it.
            if (!far.isValid())
                far = stubOf(*other, !takes);
            if (takes)
                m_data.addWire(far, end, m_data.port(far).type);
            else
                m_data.addWire(end, far, type);
        }
        const std::string hidden = takes ? hiddenSourceOf(*port) : "";
        if (!hidden.empty())
            m_data.addWire(addStub(nullptr, hidden, type, false), end, type);
    }
}

void SceneReader::connectToUntouched(int index)
{
    const SceneBox& box = m_data.box(index);
    for (int i = box.takers; i < static_cast<int>(box.ports.size()); ++i) {
        const ScenePort& port = box.ports[static_cast<std::size_t>(i)];
        for (ZEL::Port* const other : port.port->connectedTo()) {
            const SceneEnd far = endOf(*other, true);
            if (far.isValid() && !m_data.box(far.box).isTouched)
                m_data.addWire({index, i}, far, port.type);
        }
    }
}

} // namespace shading
