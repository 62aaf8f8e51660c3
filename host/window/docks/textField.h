#pragma once

#include <QLineEdit>
#include <functional>

namespace shading {

/// A line of text that stands for a value of the document. What is typed counts on Enter and when
/// the focus leaves; Esc brings the value back. A text that is refused stays until it is accepted
/// or Esc is pressed; the values that come meanwhile do not touch it.
class TextField : public QLineEdit {
    Q_OBJECT

public:
    /// Takes what was typed; false: it is refused.
    using Take = std::function<bool(const QString& text)>;

    explicit TextField(Take take, QWidget* parent = nullptr);

    /// Shows the value, unless the user is typing another one.
    void showText(const QString& text);
    /// Gives up what is being typed.
    void discard();

protected:
    /// Undo and redo are the document's while nothing is being typed; before a key of the window
    /// does something, such as saving, what was typed counts.
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    /// Gives the text away as if it had been typed.
    bool commit(const QString& text);

private:
    void commitTyped();

    Take m_take;
    QString m_shown;             ///< The document's.
    bool m_isCommitting = false; ///< Whoever takes it may open a message that takes the focus.
};

} // namespace shading
