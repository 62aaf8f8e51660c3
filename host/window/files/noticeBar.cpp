#include "window/files/noticeBar.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace shading {

NoticeBar::NoticeBar(const QString& text, QWidget* parent)
    : QFrame(parent),
      m_layout(new QHBoxLayout(this)),
      m_text(new QLabel(text, this))
{
    setObjectName("notice");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_layout->addWidget(m_text, 1);
}

void NoticeBar::setText(const QString& text)
{
    m_text->setText(text);
}

void NoticeBar::addButton(const QString& name, const QString& text, std::function<void()> run)
{
    auto* const button = new QPushButton(text, this);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, [this, then = std::move(run)] {
        hide();
        deleteLater();
        // Later: what is done may take the view with the bar along.
        QTimer::singleShot(0, QCoreApplication::instance(), then);
    });
    m_layout->addWidget(button);
}

} // namespace shading
