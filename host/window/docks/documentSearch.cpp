#include "window/docks/documentSearch.h"

#include "document/document.h"
#include "document/names.h"

#include <QElapsedTimer>
#include <QTimer>
#include <cstring>

namespace shading {

namespace {

constexpr int kSliceMs = 15; ///< Of one turn.

} // namespace

DocumentSearch::DocumentSearch(QObject* parent) : QObject(parent), m_timer(new QTimer(this))
{
    m_timer->setInterval(0);
    connect(m_timer, &QTimer::timeout, this, &DocumentSearch::runSlice);
}

void DocumentSearch::start(Document& document, const QString& text)
{
    stop();
    m_text = text.trimmed().toStdString();
    if (m_text.empty())
        return;
    m_isPath = text.contains('.');
    if (m_isPath)
        m_exact = document.findNodeFromPath(m_text.c_str());
    m_levels.push_back({document.getRootNode()->getAsCompound()});
    m_timer->start();
}

void DocumentSearch::stop()
{
    m_timer->stop();
    m_levels.clear();
    m_exact = nullptr;
}

bool DocumentSearch::isRunning() const
{
    return m_timer->isActive();
}

void DocumentSearch::runSlice()
{
    QElapsedTimer time;
    time.start();
    std::vector<Hit> hits;
    if (const NodePtr exact = std::exchange(m_exact, nullptr))
        hits.push_back({exact, tr("path")});
    while (!m_levels.empty() && time.elapsed() < kSliceMs) {
        // The compound may have other nodes than at the turn before.
        for (int i = 0; i < 64 && !m_levels.empty(); ++i) {
            Level& level = m_levels.back();
            const NodePtr node = level.compound->nodes()[level.next++];
            if (!node) {
                m_levels.pop_back();
                continue;
            }
            look(node, hits);
            if (node->isCompound())
                m_levels.push_back({node->getAsCompound()});
        }
    }
    const bool isOver = m_levels.empty();
    if (isOver)
        m_timer->stop();
    if (!hits.empty())
        Q_EMIT found(hits);
    if (isOver)
        Q_EMIT finished();
}

void DocumentSearch::look(const NodePtr& node, std::vector<Hit>& hits) const
{
    const QString what = match(*node);
    if (!what.isEmpty())
        hits.push_back({node, what});
}

/// Where the text is found first; empty: nowhere.
QString DocumentSearch::match(ZEL::Node& node) const
{
    if (isIn(node.getName()))
        return tr("name");
    if (m_isPath && isIn(pathOf(node).c_str()))
        return tr("path");
    if (isIn(node.getNodeTypeName()))
        return tr("type %1").arg(node.getNodeTypeName());
    for (ZEL::Port* const port : node.inputs()) {
        if (isIn(port->getName()))
            return tr("input %1").arg(port->getName());
        if (isIn(port->getPortDefaultValue()))
            return QString("%1 = %2").arg(port->getName(),
                                          QString(port->getPortDefaultValue()).left(60));
    }
    for (ZEL::Port* const port : node.outputs()) {
        if (isIn(port->getName()))
            return tr("output %1").arg(port->getName());
    }
    return {};
}

bool DocumentSearch::isIn(const char* text) const
{
    return strcasestr(text, m_text.c_str()) != nullptr;
}

} // namespace shading
