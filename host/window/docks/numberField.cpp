#include "window/docks/numberField.h"

#include "edits/positions.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kPageSteps = 10;
constexpr double kFine = 0.1;

double stepFactor(Qt::KeyboardModifiers modifiers)
{
    if (modifiers.testFlag(Qt::ShiftModifier))
        return kFine;
    return modifiers.testFlag(Qt::ControlModifier) ? kPageSteps : 1;
}

double numberOf(const QString& text)
{
    double number = 0;
    return readFloat(text.trimmed().toStdString(), number) ? number : 0;
}

} // namespace

NumberField::NumberField(const ValueStyle& style, Take take, Scrub scrub, QWidget* parent)
    : TextField(std::move(take), parent),
      m_style(style),
      m_scrub(std::move(scrub))
{
    setMinimumWidth(36);
    // A press may become a drag: the focus comes when it does not, or is one.
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::SplitHCursor);
}

double NumberField::stepAt(double number) const
{
    if (m_style.step && *m_style.step > 0)
        return *m_style.step;
    if (m_style.isInteger)
        return 1;
    if (m_style.range)
        return *m_style.range / 100;
    // Two digits of it.
    const double size = std::abs(number);
    return size < 1 ? 0.01 : std::pow(10, std::floor(std::log10(size)) - 1);
}

QString NumberField::stepped(double number, double steps) const
{
    double result = number + steps * stepAt(number);
    if (m_style.isInteger)
        result = std::round(result);
    if (m_style.least)
        result = std::max(result, std::min(*m_style.least, number));
    if (m_style.most)
        result = std::min(result, std::max(*m_style.most, number));
    // Without the last digits, which steps of a tenth leave there.
    const double rounded = QString::number(result, 'g', 7).toDouble();
    return m_style.isInteger ? QString::number(static_cast<qlonglong>(rounded))
                             : QString::fromStdString(numberText(rounded));
}

void NumberField::keyPressEvent(QKeyEvent* event)
{
    if (m_drag == Drag::Scrubbing) {
        if (event->key() == Qt::Key_Escape)
            endScrub(false);
        return;
    }
    double steps = 0;
    switch (event->key()) {
    case Qt::Key_Up:
        steps = 1;
        break;
    case Qt::Key_Down:
        steps = -1;
        break;
    case Qt::Key_PageUp:
        steps = kPageSteps;
        break;
    case Qt::Key_PageDown:
        steps = -kPageSteps;
        break;
    default:
        TextField::keyPressEvent(event);
        return;
    }
    if (!isReadOnly())
        commit(stepped(numberOf(text()), steps * stepFactor(event->modifiers())));
}

void NumberField::mousePressEvent(QMouseEvent* event)
{
    const bool isMine =
        event->button() == Qt::LeftButton && !isReadOnly() && !isModified() && !m_hasCursor;
    if (!isMine) {
        setFocus(Qt::MouseFocusReason);
        TextField::mousePressEvent(event);
        return;
    }
    m_drag = Drag::Pressed;
    m_pressedAt = event->globalPosition().x();
    m_start = numberOf(text());
    m_steps = 0;
}

void NumberField::mouseMoveEvent(QMouseEvent* event)
{
    if (m_drag == Drag::None) {
        TextField::mouseMoveEvent(event);
        return;
    }
    const double way = event->globalPosition().x() - m_pressedAt;
    if (m_drag == Drag::Pressed && std::abs(way) < QApplication::startDragDistance())
        return;
    if (m_drag == Drag::Pressed) {
        setFocus(Qt::MouseFocusReason);
        m_drag = Drag::Scrubbing;
        m_pressedAt = event->globalPosition().x();
        return;
    }
    // A change of the keys on the way counts from where it is made.
    m_steps += (event->globalPosition().x() - m_pressedAt) * stepFactor(event->modifiers());
    m_pressedAt = event->globalPosition().x();
    const QString passed = stepped(m_start, m_steps);
    if (passed != text() && m_scrub.pass(passed))
        showText(passed);
}

void NumberField::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_drag == Drag::None) {
        TextField::mouseReleaseEvent(event);
        return;
    }
    if (m_drag == Drag::Scrubbing) {
        endScrub(true);
        return;
    }
    // Once for all of it, once more for a place in it.
    m_drag = Drag::None;
    setFocus(Qt::MouseFocusReason);
    m_hasCursor = hasSelectedText();
    if (m_hasCursor)
        setCursorPosition(cursorPositionAt(event->position().toPoint()));
    else
        selectAll();
}

void NumberField::focusOutEvent(QFocusEvent* event)
{
    if (m_drag == Drag::Scrubbing)
        endScrub(true);
    m_drag = Drag::None;
    m_hasCursor = false;
    TextField::focusOutEvent(event);
}

void NumberField::endScrub(bool isKept)
{
    m_drag = Drag::None;
    m_scrub.end(isKept);
}

} // namespace shading
