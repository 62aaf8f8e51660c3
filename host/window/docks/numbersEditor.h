#pragma once

#include "window/docks/valueEditors.h"

#include <QColor>
#include <QStringList>
#include <vector>

class QToolButton;

namespace shading {

class NumberField;

/// Edits one or more numbers with commas between; a colour also by a picker.
class NumbersEditor : public ValueEditor {
    Q_OBJECT

public:
    NumbersEditor(const ValueStyle& style,
                  ValueTaker& taker,
                  const QString& id,
                  const QString& accessibleName,
                  QWidget* parent);

    void showValue(const QString& value, bool isMixed) override;
    void discard() override;

private:
    void addField(int index, const QString& id, const QString& accessibleName);
    void addSwatch(const QString& id, const QString& accessibleName);
    /// The value with another number in that place.
    QString valueWith(int index, const QString& number) const;
    QColor color() const;
    void pickColor();
    void showSwatch();

    ValueStyle m_style;
    ValueTaker& m_taker;
    std::vector<NumberField*> m_fields; ///< Owned by the widget, as is the swatch.
    QToolButton* m_swatch = nullptr;    ///< Null: it is no colour.
    QStringList m_numbers;              ///< Empty: there is no value of this form.
};

} // namespace shading
