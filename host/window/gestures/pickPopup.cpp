#include "window/gestures/pickPopup.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace shading {

namespace {

constexpr int kMostRows = 300; ///< Who has more of them types a letter.
constexpr QSize kSize(360, 300);
constexpr QPoint kBeside(14, 10); ///< So that the place itself stays in sight.
constexpr int kPage = 8;

} // namespace

PickPopup::PickPopup(QWidget& over, const QString& what, Find find)
    : QFrame(over.parentWidget() ? over.parentWidget() : &over),
      m_over(over),
      m_find(std::move(find)),
      m_line(new QLineEdit(this)),
      m_list(new QTreeWidget(this))
{
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    m_line->setPlaceholderText(what);
    m_line->setAccessibleName(what);
    m_line->setClearButtonEnabled(true);
    m_list->setHeaderHidden(true);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setColumnCount(2);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_list->header()->setStretchLastSection(false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_line);
    layout->addWidget(m_list);
    m_line->installEventFilter(this);
    connect(m_line, &QLineEdit::textEdited, this, &PickPopup::fill);
    connect(m_list, &QTreeWidget::itemClicked, this, [this] { choose(); });
}

void PickPopup::popUp(const QPoint& pixel)
{
    m_line->setObjectName(objectName() + ".text");
    m_list->setObjectName(objectName() + ".list");
    const QRect room = parentWidget()->rect();
    resize(kSize.boundedTo(room.size()));
    QPoint corner = m_over.mapTo(parentWidget(), pixel) + kBeside;
    corner.setX(std::clamp(corner.x(), 0, std::max(0, room.width() - width())));
    corner.setY(std::clamp(corner.y(), 0, std::max(0, room.height() - height())));
    move(corner);
    fill();
    show();
    raise();
    m_line->setFocus(Qt::PopupFocusReason);
}

int PickPopup::count() const
{
    return m_list->topLevelItemCount();
}

void PickPopup::fill()
{
    m_list->clear();
    const std::vector<Item> items = m_find(m_line->text());
    const QBrush pale = palette().brush(QPalette::Disabled, QPalette::Text);
    for (const Item& item : items) {
        if (count() == kMostRows)
            break;
        auto* const row = new QTreeWidgetItem(m_list, {item.text, item.detail});
        row->setForeground(1, pale);
        row->setToolTip(0, item.help);
    }
    m_list->setCurrentItem(m_list->topLevelItem(0));
}

void PickPopup::step(int rows)
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    m_list->setCurrentItem(
        m_list->topLevelItem(std::clamp(row + rows, 0, std::max(0, count() - 1))));
}

void PickPopup::choose()
{
    if (m_list->currentItem())
        close(true);
}

void PickPopup::close(bool isChosen)
{
    if (std::exchange(m_isClosed, true))
        return;
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    const bool hadFocus = m_line->hasFocus();
    hide();
    deleteLater();
    if (hadFocus)
        m_over.setFocus(Qt::PopupFocusReason);
    if (isChosen)
        Q_EMIT chosen(row);
    else
        Q_EMIT cancelled();
}

bool PickPopup::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::FocusOut) {
        // Another window in front, or a menu of the line, is no answer.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            close(false);
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return QFrame::eventFilter(object, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
        step(-1);
        return true;
    case Qt::Key_Down:
        step(1);
        return true;
    case Qt::Key_PageUp:
        step(-kPage);
        return true;
    case Qt::Key_PageDown:
        step(kPage);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose();
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
        close(false);
        return true;
    default:
        return false;
    }
}

} // namespace shading
