#include "window/drive/inputEvents.h"

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace shading {

namespace {

constexpr int kMoves = 15;

/// The window that has the keyboard: a popup before all others.
QWindow* keyWindow()
{
    if (QWidget* const popup = QApplication::activePopupWidget())
        return popup->windowHandle();
    if (QWindow* const focused = QGuiApplication::focusWindow())
        return focused;
    QWidget* const active = QApplication::activeWindow();
    return active ? active->windowHandle() : nullptr;
}

void sendMouse(QTest::MouseAction action,
               QWindow& window,
               const QPoint& globalPoint,
               Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers)
{
    QTest::mouseEvent(action, &window, button, modifiers, window.mapFromGlobal(globalPoint));
    settle();
}

void sendKey(QTest::KeyAction action, int key, Qt::KeyboardModifiers modifiers)
{
    if (QWindow* const window = keyWindow())
        QTest::sendKeyEvent(action, window, static_cast<Qt::Key>(key), QString(), modifiers);
    settle();
}

/// Holds a key down as long as it lives.
class HeldKey {
public:
    explicit HeldKey(const Held& held) : m_held(held)
    {
        if (m_held.key != 0)
            sendKey(QTest::Press, m_held.key, m_held.modifiers);
    }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;
    ~HeldKey()
    {
        if (m_held.key != 0)
            sendKey(QTest::Release, m_held.key, m_held.modifiers);
    }

private:
    Held m_held;
};

QWindow* windowOf(QWidget& widget)
{
    return widget.window()->windowHandle();
}

} // namespace

void settle()
{
    for (int i = 0; i < 4; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        // A loop inside of another one leaves these to that.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void click(QWidget& widget, const QPoint& at, Qt::MouseButton button, const Held& held)
{
    QWindow* const window = windowOf(widget);
    if (!window)
        return;
    const HeldKey key(held);
    const QPoint point = widget.mapToGlobal(at);
    sendMouse(QTest::MouseMove, *window, point, Qt::NoButton, held.modifiers);
    sendMouse(QTest::MousePress, *window, point, button, held.modifiers);
    sendMouse(QTest::MouseRelease, *window, point, button, held.modifiers);
}

void doubleClick(QWidget& widget, const QPoint& at, const Held& held)
{
    QWindow* const window = windowOf(widget);
    if (!window)
        return;
    const HeldKey key(held);
    const QPoint point = widget.mapToGlobal(at);
    sendMouse(QTest::MouseMove, *window, point, Qt::NoButton, held.modifiers);
    QTest::mouseEvent(QTest::MouseDClick, window, Qt::LeftButton, held.modifiers,
                      window->mapFromGlobal(point));
    settle();
}

void drag(QWidget& widget, const QPoint& from, const QPoint& to, const Held& held)
{
    drag(widget, from, widget, to, held);
}

void drag(QWidget& widget, const QPoint& from, QWidget& other, const QPoint& to, const Held& held)
{
    QWindow* const window = windowOf(widget);
    if (!window)
        return;
    const HeldKey key(held);
    const QPoint begin = widget.mapToGlobal(from);
    const QPoint end = other.mapToGlobal(to);
    sendMouse(QTest::MouseMove, *window, begin, Qt::NoButton, held.modifiers);
    sendMouse(QTest::MousePress, *window, begin, Qt::LeftButton, held.modifiers);
    for (int i = 1; i <= kMoves; ++i) {
        const QPoint point = begin + (end - begin) * i / kMoves;
        sendMouse(QTest::MouseMove, *window, point, Qt::NoButton, held.modifiers);
    }
    sendMouse(QTest::MouseRelease, *window, end, Qt::LeftButton, held.modifiers);
}

void press(const QKeySequence& keys)
{
    for (int i = 0; i < keys.count(); ++i)
        sendKey(QTest::Click, keys[static_cast<unsigned>(i)].key(),
                keys[static_cast<unsigned>(i)].keyboardModifiers());
}

void type(const QString& text)
{
    for (const QChar& letter : text) {
        if (QWindow* const window = keyWindow())
            QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, QString(letter),
                                Qt::NoModifier);
        settle();
    }
}

} // namespace shading
