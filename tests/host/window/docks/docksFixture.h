#pragma once

#include "windowFixture.h"

#include <QAbstractItemView>
#include <QDockWidget>
#include <QLabel>
#include <QTest>

namespace shadingTest {

/// The panels of the window, by the names of their widgets.
class Docks : public Window {
protected:
    template <class Widget = QWidget>
    Widget* widget(const QString& name)
    {
        auto* const found = window.findChild<Widget*>(name);
        EXPECT_TRUE(found) << name.toStdString();
        return found;
    }

    /// Shows a panel in front of the others.
    void show(const QString& panel)
    {
        window.showPanel(panel);
        settle();
    }

    /// A press and a release in the middle of what the index shows.
    static void click(QAbstractItemView& view, const QModelIndex& index)
    {
        view.scrollTo(index);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                          view.visualRect(index).center());
        settle();
    }

    /// Types the text in the place of what stands in the field, and presses the key.
    static void enter(QWidget* field, const QString& text, Qt::Key key = Qt::Key_Return)
    {
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(field, text);
        QTest::keyClick(field, key);
        settle();
    }

    /// Presses, ten moves, release.
    static void drag(QWidget* from, QPoint start, QPoint way, bool isReleased = true)
    {
        QTest::mousePress(from, Qt::LeftButton, Qt::NoModifier, start);
        for (int i = 1; i <= 10; ++i) {
            const QPoint at = start + way * i / 10;
            QMouseEvent move(QEvent::MouseMove, at, from->mapToGlobal(at), Qt::LeftButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(from, &move);
        }
        if (isReleased)
            QTest::mouseRelease(from, Qt::LeftButton, Qt::NoModifier, start + way);
        settle();
    }
};

} // namespace shadingTest
