#pragma once

#include "window/docks/valueStyle.h"

#include <QWidget>

namespace shading {

/// Takes what the user does to a value. False: it is refused.
class ValueTaker {
public:
    virtual ~ValueTaker() = default;
    virtual bool takeValue(const QString& value) = 0;
    /// A value that a gesture passes, which is one edit whatever it passes.
    virtual bool passValue(const QString& value) = 0;
    /// The gesture is over; not kept: the value is to be as before.
    virtual void endGesture(bool isKept) = 0;
};

/// Shows a value of a document as a text of the format, and edits it.
class ValueEditor : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Shows the value, but leaves alone what is being typed. Mixed: it is that of the first of
    /// several things whose values differ.
    virtual void showValue(const QString& value, bool isMixed) = 0;
    /// Gives up what is being typed.
    virtual void discard() {}
};

/// An editor of that style. The taker is not owned and must outlive it. The widgets in it are
/// called `ID`, or `ID.0`, `ID.1` where there are several. Files are looked for in the folder.
ValueEditor* makeValueEditor(const ValueStyle& style,
                             ValueTaker& taker,
                             const QString& id,
                             const QString& accessibleName,
                             const QString& folder,
                             QWidget* parent);

} // namespace shading
