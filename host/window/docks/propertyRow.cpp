#include "window/docks/propertyRow.h"

#include "document/history.h"
#include "document/names.h"
#include "window/workspace/workspace.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace shading {

namespace {

constexpr int kNameWidth = 126;
constexpr std::chrono::hours kGestureTime(24); // However long the button is held.

int newGesture()
{
    static int last = 0;
    return ++last;
}

} // namespace

PropertyRow::PropertyRow(Workspace& workspace, const Property& property, QWidget* parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_property(property)
{
    setObjectName("row." + property.name);
    addParts();
    refresh();
}

PropertyRow::~PropertyRow()
{
    // The editor gives a text that loses the focus to this.
    delete m_editor;
}

void PropertyRow::addParts()
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(4, 1, 4, 1);
    column->setSpacing(0);
    auto* const line = new QHBoxLayout;
    line->setSpacing(4);
    column->addLayout(line);
    const ValueStyle& style = m_property.style;
    const QString shown = style.label.isEmpty() ? m_property.name : style.label;
    m_name = new QLabel(shown);
    m_name->setFixedWidth(kNameWidth);
    m_name->setTextFormat(Qt::PlainText);
    line->addWidget(m_name);
    const QString id = "property." + m_property.name;
    m_editor = makeValueEditor(style, *this, id, shown, folder(), nullptr);
    m_source = new QPushButton;
    m_source->setObjectName(id + ".source");
    m_source->setFlat(true);
    m_source->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // A long one is cut.
    m_source->setStyleSheet(QStringLiteral("text-align: left"));
    connect(m_source, &QPushButton::clicked, this, [this] {
        if (const NodePtr node = m_state.sourceNode)
            m_workspace.reveal(node);
    });
    m_ways = new QStackedWidget;
    m_ways->addWidget(m_editor);
    m_ways->addWidget(m_source);
    line->addWidget(m_ways, 1);
    if (!style.unit.isEmpty())
        line->addWidget(new QLabel(style.unit));
    m_reset = new QToolButton;
    m_reset->setObjectName(id + ".reset");
    m_reset->setText(QString(QChar(0x21BA)));
    m_reset->setAutoRaise(true);
    m_reset->setToolTip(m_property.inputs.empty() ? tr("Take the attribute off")
                                                  : tr("Back to the definition's value"));
    m_reset->setAccessibleName(m_reset->toolTip() + ": " + shown);
    line->addWidget(m_reset);
    connect(m_reset, &QToolButton::clicked, this, [this] {
        m_editor->discard();
        takeValue(QString());
    });
    m_problem = new QLabel;
    m_problem->setObjectName(id + ".problem");
    m_problem->setWordWrap(true);
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setStyleSheet(QStringLiteral("color: #c8401c"));
    m_problem->hide();
    column->addWidget(m_problem);
    m_name->setBuddy(m_editor);
}

void PropertyRow::setProperty(const Property& property)
{
    const bool isSame = property.inputs == m_property.inputs && property.owner == m_property.owner;
    m_property = property;
    if (!isSame) {
        m_editor->discard();
        report(QString());
        m_gesture = 0;
    }
}

void PropertyRow::refresh()
{
    m_state = stateOf(m_workspace, m_property);
    m_editor->showValue(m_state.value, m_state.isMixed);
    const bool isFed = !m_state.source.isEmpty();
    const bool hasNothing = m_property.style.kind == ValueStyle::Kind::None;
    m_source->setText(isFed ? QString(QChar(0x2190)) + " " + m_state.source
                            : tr("nothing connected"));
    m_source->setEnabled(bool(m_state.sourceNode));
    m_source->setToolTip(m_state.sourceNode ? tr("Show where it comes from") : QString());
    QWidget* const way = isFed || hasNothing ? static_cast<QWidget*>(m_source) : m_editor;
    if (way == m_source)
        m_editor->discard();
    if (m_ways->currentWidget() != way)
        m_ways->setCurrentWidget(way);
    m_reset->setEnabled(m_state.isOwn && !isFed);
    const bool isBold = m_state.isOwn && !isFed && !m_property.inputs.empty();
    if (m_name->font().bold() != isBold) {
        QFont font = m_name->font();
        font.setBold(isBold);
        m_name->setFont(font);
    }
    showHelp();
}

void PropertyRow::showHelp()
{
    QStringList lines{m_property.typeName.isEmpty() ? m_property.name
                                                    : m_property.name + ": " + m_property.typeName};
    if (!m_property.style.help.isEmpty())
        lines.append(m_property.style.help);
    const QString help = lines.join('\n');
    if (m_name->toolTip() != help)
        m_name->setToolTip(help);
}

bool PropertyRow::takeValue(const QString& value)
{
    const bool isDone = report(shading::setProperty(m_workspace, m_property, value));
    refresh();
    return isDone;
}

bool PropertyRow::passValue(const QString& value)
{
    if (m_gesture == 0) {
        m_gesture = newGesture();
        m_countBefore = m_workspace.history().undoCount();
    }
    const History::Repeating repeating(m_workspace.history(),
                                       "gesture " + std::to_string(m_gesture), kGestureTime);
    return takeValue(value);
}

void PropertyRow::endGesture(bool isKept)
{
    const bool hasEdit = m_gesture != 0 && m_workspace.history().undoCount() > m_countBefore;
    m_gesture = 0;
    if (!isKept && hasEdit)
        m_workspace.undo();
    refresh();
}

bool PropertyRow::report(const QString& problem)
{
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    return problem.isEmpty();
}

QString PropertyRow::folder() const
{
    return QFileInfo(QString::fromStdString(m_workspace.session().path())).absolutePath();
}

} // namespace shading
