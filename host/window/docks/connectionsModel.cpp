#include "window/docks/connectionsModel.h"

#include "document/names.h"
#include "window/docks/property.h"

#include <QElapsedTimer>
#include <QTimer>

namespace shading {

namespace {

constexpr int kTurnMs = 15;
constexpr int kNodesATime = 64;

QString targetText(ZEL::Port& target)
{
    return target.isCompoundInternalPort() ? QString("output %1").arg(target.getName())
                                           : sourceText(target);
}

} // namespace

ConnectionsModel::ConnectionsModel(QObject* parent)
    : QAbstractTableModel(parent),
      m_timer(new QTimer(this))
{
    m_timer->setInterval(0);
    connect(m_timer, &QTimer::timeout, this, &ConnectionsModel::runSlice);
}

void ConnectionsModel::read(const CompoundPtr& compound)
{
    if (compound != m_compound)
        show({});
    m_compound = compound;
    m_next.clear();
    m_place = 0;
    m_timer->stop();
    if (compound)
        m_timer->start();
}

void ConnectionsModel::runSlice()
{
    QElapsedTimer time;
    time.start();
    ZEL::NodeList& nodes = m_compound->nodes();
    while (m_place < nodes.size() && time.elapsed() < kTurnMs) {
        for (int i = 0; i < kNodesATime && m_place < nodes.size(); ++i) {
            const NodePtr node = nodes[m_place++];
            for (ZEL::Port* const input : node->inputs())
                addSources(*input);
        }
    }
    if (m_place < nodes.size())
        return;
    m_timer->stop();
    for (ZEL::Port* const output : m_compound->innerOutputs())
        addSources(*output);
    show(std::exchange(m_next, {}));
}

void ConnectionsModel::addSources(ZEL::Port& target)
{
    for (ZEL::Port* const source : target.connectedTo())
        m_next.push_back({PortPtr(source), PortPtr(&target)});
}

void ConnectionsModel::show(std::vector<Row> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

int ConnectionsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ConnectionsModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 3;
}

QVariant ConnectionsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    const Row& shown = row(index.row());
    switch (index.column()) {
    case 0:
        return sourceText(*shown.source);
    case 1:
        return targetText(*shown.target);
    default:
        return QString::fromStdString(typeNameOf(*shown.source));
    }
}

QVariant ConnectionsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QString titles[] = {tr("Source"), tr("Target"), tr("Type")};
    return section < 3 ? titles[section] : QVariant();
}

} // namespace shading
