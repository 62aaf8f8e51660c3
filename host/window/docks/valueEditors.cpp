#include "window/docks/valueEditors.h"

#include "window/docks/numbersEditor.h"
#include "window/docks/textField.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QToolButton>
#include <QWheelEvent>

namespace shading {

namespace {

const QString kSeveral = QStringLiteral("several values");

QHBoxLayout* newRow(QWidget& widget)
{
    auto* const row = new QHBoxLayout(&widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(3);
    return row;
}

/// A text, also the name of a file.
class LineEditor : public ValueEditor {
public:
    LineEditor(ValueTaker& taker, const QString& id, const QString& name, QWidget* parent)
        : ValueEditor(parent),
          m_field(new TextField([&taker](const QString& text) { return taker.takeValue(text); }))
    {
        m_field->setObjectName(id);
        m_field->setAccessibleName(name);
        newRow(*this)->addWidget(m_field, 1);
        setFocusProxy(m_field);
    }

    void showValue(const QString& value, bool isMixed) override
    {
        m_field->setPlaceholderText(isMixed ? kSeveral : QString());
        m_field->showText(isMixed ? QString() : value);
    }

    void discard() override { m_field->discard(); }

    void addBrowse(ValueTaker& taker, const QString& id, const QString& folder)
    {
        auto* const button = new QToolButton;
        button->setObjectName(id + ".browse");
        button->setText(QStringLiteral("..."));
        button->setToolTip(tr("Choose a file"));
        button->setAccessibleName(tr("Choose a file for %1").arg(m_field->accessibleName()));
        layout()->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, &taker, folder] {
            auto* const dialog = new QFileDialog(this, tr("Choose a file"), folder);
            dialog->setObjectName("chooseFile");
            dialog->setAttribute(Qt::WA_DeleteOnClose);
            dialog->setOption(QFileDialog::DontUseNativeDialog);
            dialog->setFileMode(QFileDialog::ExistingFile);
            connect(dialog, &QFileDialog::fileSelected, this,
                    [&taker, folder](const QString& path) {
                        // A document and its pictures move together.
                        const QString near = QDir(folder).relativeFilePath(path);
                        taker.takeValue(near.startsWith(QLatin1String("../../")) ? path : near);
                    });
            dialog->open();
        });
    }

private:
    TextField* m_field;
};

class BooleanEditor : public ValueEditor {
public:
    BooleanEditor(ValueTaker& taker, const QString& id, const QString& name, QWidget* parent)
        : ValueEditor(parent),
          m_box(new QCheckBox)
    {
        m_box->setObjectName(id);
        m_box->setAccessibleName(name);
        newRow(*this)->addWidget(m_box);
        setFocusProxy(m_box);
        connect(m_box, &QCheckBox::clicked, this, [this, &taker] {
            const bool isOn = m_value != QLatin1String("true");
            if (!taker.takeValue(isOn ? QStringLiteral("true") : QStringLiteral("false")))
                showValue(m_value, m_isMixed);
        });
    }

    void showValue(const QString& value, bool isMixed) override
    {
        m_value = isMixed ? QString() : value.trimmed();
        m_isMixed = isMixed;
        m_box->setTristate(isMixed);
        m_box->setCheckState(isMixed                            ? Qt::PartiallyChecked
                             : m_value == QLatin1String("true") ? Qt::Checked
                                                                : Qt::Unchecked);
        m_box->setText(isMixed ? kSeveral : QString());
    }

private:
    QCheckBox* m_box;
    QString m_value;
    bool m_isMixed = false;
};

/// The wheel scrolls the list of properties and changes none of them.
class ChoiceBox : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

class ChoiceEditor : public ValueEditor {
public:
    ChoiceEditor(const ValueStyle& style,
                 ValueTaker& taker,
                 const QString& id,
                 const QString& name,
                 QWidget* parent)
        : ValueEditor(parent),
          m_box(new ChoiceBox)
    {
        m_box->setObjectName(id);
        m_box->setAccessibleName(name);
        m_box->setMinimumContentsLength(6);
        m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        for (const auto& [label, value] : style.choices)
            m_box->addItem(label, value);
        m_known = m_box->count();
        newRow(*this)->addWidget(m_box, 1);
        setFocusProxy(m_box);
        connect(m_box, &QComboBox::activated, this, [this, &taker](int index) {
            const QString value = m_box->itemData(index).toString();
            if (value != m_value && !taker.takeValue(value))
                showValue(m_value, false);
        });
    }

    void showValue(const QString& value, bool isMixed) override
    {
        m_value = value;
        const int index = m_box->findData(value);
        if (!isMixed && index >= 0 && index < m_known) {
            m_box->setCurrentIndex(index);
            return;
        }
        // What the definition does not list stands behind the others.
        const QString text = isMixed ? kSeveral : value;
        if (m_box->count() == m_known)
            m_box->addItem(QString());
        m_box->setItemText(m_known, text);
        m_box->setItemData(m_known, value);
        m_box->setCurrentIndex(m_known);
    }

private:
    QComboBox* m_box;
    int m_known = 0; ///< The choices of the definition.
    QString m_value;
};

class NoEditor : public ValueEditor {
public:
    using ValueEditor::ValueEditor;
    void showValue(const QString& /*value*/, bool /*isMixed*/) override {}
};

} // namespace

ValueEditor* makeValueEditor(const ValueStyle& style,
                             ValueTaker& taker,
                             const QString& id,
                             const QString& accessibleName,
                             const QString& folder,
                             QWidget* parent)
{
    using Kind = ValueStyle::Kind;
    switch (style.kind) {
    case Kind::None:
        return new NoEditor(parent);
    case Kind::Boolean:
        return new BooleanEditor(taker, id, accessibleName, parent);
    case Kind::Numbers:
    case Kind::Color:
        return new NumbersEditor(style, taker, id, accessibleName, parent);
    case Kind::Choice:
        return new ChoiceEditor(style, taker, id, accessibleName, parent);
    case Kind::Text:
    case Kind::FileName:
        break;
    }
    auto* const editor = new LineEditor(taker, id, accessibleName, parent);
    if (style.kind == Kind::FileName)
        editor->addBrowse(taker, id, folder);
    return editor;
}

} // namespace shading
