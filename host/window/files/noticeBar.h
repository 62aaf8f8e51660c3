#pragma once

#include <QFrame>
#include <functional>

class QLabel;
class QHBoxLayout;

namespace shading {

/// A line above the canvas that says something and has buttons for what may be done then.
class NoticeBar : public QFrame {
    Q_OBJECT

public:
    explicit NoticeBar(const QString& text, QWidget* parent = nullptr);

    void setText(const QString& text);
    /// A button of that name and text. The bar goes, then the function is called: whatever it is
    /// about may be gone by then.
    void addButton(const QString& name, const QString& text, std::function<void()> run);

private:
    QHBoxLayout* m_layout; ///< Both are owned by the bar.
    QLabel* m_text;
};

} // namespace shading
