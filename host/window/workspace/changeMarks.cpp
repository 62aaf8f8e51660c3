#include "window/workspace/changeMarks.h"

#include "document/document.h"
#include "document/rules.h"

#include <QTimer>

namespace shading {

ChangeMarks::ChangeMarks(Document& document, QObject* parent) : QObject(parent)
{
    watch(document.getRootNode());
}

void ChangeMarks::watch(const NodePtr& node)
{
    if (!node->isCompound())
        return;
    node->registerEditor(this); // Once more does nothing.
    for (ZEL::Node* const inner : node->getAsCompound()->nodes())
        watch(inner);
}

void ChangeMarks::flush()
{
    m_isDue = false;
    if (m_marks.empty())
        return;
    const Marks marks = std::exchange(m_marks, {});
    m_places.clear();
    m_marked.clear();
    Q_EMIT flushed(marks);
}

CompoundMarks& ChangeMarks::marksOf(const CompoundPtr& compound)
{
    const auto [place, isNew] = m_places.emplace(compound.get(), m_marks.size());
    if (isNew) {
        m_marks.emplace_back();
        m_marks.back().compound = compound;
    }
    if (!m_isDue) {
        m_isDue = true;
        QTimer::singleShot(0, this, &ChangeMarks::flush);
    }
    return m_marks[place->second];
}

void ChangeMarks::markNode(const CompoundPtr& compound, const NodePtr& node)
{
    CompoundMarks& marks = marksOf(compound);
    if (m_marked.emplace(compound.get(), node.get()).second)
        marks.nodes.push_back(node);
}

void ChangeMarks::markWire(const PortPtr& first, const PortPtr& second)
{
    for (const PortPtr& port : {first, second}) {
        const CompoundPtr level = levelOf(*port);
        if (!level)
            continue;
        marksOf(level).hasOtherWires = true;
        const NodePtr node = port->getParentNode();
        // Of an inner port the bar is drawn anew, with all its rows.
        if (node && !port->isCompoundInternalPort())
            markNode(level, node);
    }
}

void ChangeMarks::zel_onConnectionChange(ZEL::ECnxChangeType /*type*/,
                                         const ZEL::AddRefWrapper<ZEL::Port>& first,
                                         const ZEL::AddRefWrapper<ZEL::Port>& second)
{
    markWire(first, second);
}

void ChangeMarks::zel_onCompoundConnectionChange(ZEL::ECnxChangeType /*type*/,
                                                 const ZEL::AddRefWrapper<ZEL::Port>& first,
                                                 const ZEL::AddRefWrapper<ZEL::Port>& second)
{
    markWire(first, second);
}

void ChangeMarks::zel_onCompoundPortChange(ZEL::ECompoundPortChangeType /*type*/,
                                           const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    const NodePtr node = port->getParentNode();
    if (const CompoundPtr compound = node ? node->getAsCompound() : nullptr)
        marksOf(compound).hasOtherPorts = true;
}

void ChangeMarks::zel_onNodeChange(ZEL::ENodeChangeType type,
                                   const ZEL::AddRefWrapper<ZEL::Compound>& compound,
                                   const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    watch(node);
    if (node->isCompound() && node->getAsCompound() == compound) {
        marksOf(compound).hasOtherBackdrops = true;
        return;
    }
    if (type != ZEL::eNodeChanged)
        marksOf(compound).hasOtherNodes = true;
    markNode(compound, node);
}

} // namespace shading
