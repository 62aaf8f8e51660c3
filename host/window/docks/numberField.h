#pragma once

#include "window/docks/textField.h"
#include "window/docks/valueStyle.h"

namespace shading {

/// A number that is typed, stepped with the arrow keys, or dragged: pressed and moved to the right
/// it grows, a pixel a step; with Shift by a tenth of it, with Ctrl by ten.
class NumberField : public TextField {
    Q_OBJECT

public:
    /// What a drag does: each number that it passes, and then once its end; not kept means Esc.
    struct Scrub {
        Take pass;
        std::function<void(bool isKept)> end;
    };

    NumberField(const ValueStyle& style, Take take, Scrub scrub, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    enum class Drag { None, Pressed, Scrubbing };

    double stepAt(double number) const;
    /// The text of the number so many steps on, inside the range.
    QString stepped(double number, double steps) const;
    void endScrub(bool isKept);

    ValueStyle m_style;
    Scrub m_scrub;
    Drag m_drag = Drag::None;
    bool m_hasCursor = false; ///< Pressed into for typing: a drag selects text.
    double m_pressedAt = 0;   ///< In pixels of the screen.
    double m_start = 0;       ///< The number when it was pressed.
    double m_steps = 0;       ///< From there.
};

} // namespace shading
