#include "window/docks/numbersEditor.h"

#include "edits/positions.h"
#include "window/docks/numberField.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QPixmap>
#include <QToolButton>
#include <algorithm>

namespace shading {

namespace {

constexpr int kSwatchSize = 18;
const char* const kParts[] = {"red", "green", "blue", "alpha"};

} // namespace

NumbersEditor::NumbersEditor(const ValueStyle& style,
                             ValueTaker& taker,
                             const QString& id,
                             const QString& accessibleName,
                             QWidget* parent)
    : ValueEditor(parent),
      m_style(style),
      m_taker(taker)
{
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(3);
    if (style.kind == ValueStyle::Kind::Color)
        addSwatch(id, accessibleName);
    for (int i = 0; i < style.count; ++i)
        addField(i, style.count == 1 ? id : id + "." + QString::number(i), accessibleName);
    setFocusProxy(m_fields.front());
}

void NumbersEditor::addField(int index, const QString& id, const QString& accessibleName)
{
    auto* const grid = static_cast<QGridLayout*>(layout());
    auto* const field = new NumberField(
        m_style,
        [this, index](const QString& text) { return m_taker.takeValue(valueWith(index, text)); },
        {[this, index](const QString& text) { return m_taker.passValue(valueWith(index, text)); },
         [this](bool isKept) { m_taker.endGesture(isKept); }});
    field->setObjectName(id);
    const QString part = m_swatch ? QString(kParts[index]) : QString::number(index + 1);
    field->setAccessibleName(m_style.count == 1 ? accessibleName : accessibleName + " " + part);
    grid->addWidget(field, index / m_style.columns, index % m_style.columns + 1);
    m_fields.push_back(field);
}

void NumbersEditor::addSwatch(const QString& id, const QString& accessibleName)
{
    m_swatch = new QToolButton;
    m_swatch->setObjectName(id + ".swatch");
    m_swatch->setToolTip(tr("Choose a colour"));
    m_swatch->setAccessibleName(tr("Choose a colour for %1").arg(accessibleName));
    m_swatch->setIconSize(QSize(kSwatchSize, kSwatchSize));
    static_cast<QGridLayout*>(layout())->addWidget(m_swatch, 0, 0);
    connect(m_swatch, &QToolButton::clicked, this, &NumbersEditor::pickColor);
}

void NumbersEditor::showValue(const QString& value, bool isMixed)
{
    m_numbers = isMixed ? QStringList() : value.split(',');
    if (m_numbers.size() != m_style.count)
        m_numbers.clear();
    for (int i = 0; i < m_style.count; ++i) {
        NumberField& field = *m_fields[static_cast<std::size_t>(i)];
        field.showText(m_numbers.isEmpty() ? QString() : m_numbers[i].trimmed());
        field.setPlaceholderText(isMixed ? QStringLiteral("...") : QString());
    }
    if (m_swatch)
        showSwatch();
}

void NumbersEditor::discard()
{
    for (NumberField* const field : m_fields)
        field->discard();
}

QString NumbersEditor::valueWith(int index, const QString& number) const
{
    // The whole value is cleared by clearing one number, for none has one number less.
    if (number.trimmed().isEmpty())
        return QString();
    QStringList numbers;
    for (int i = 0; i < m_style.count; ++i)
        numbers.append(m_numbers.isEmpty() ? QStringLiteral("0") : m_numbers[i].trimmed());
    numbers[index] = number.trimmed();
    return numbers.join(QStringLiteral(", "));
}

QColor NumbersEditor::color() const
{
    QColor color(0, 0, 0);
    if (m_numbers.isEmpty())
        return color;
    const auto part = [this](int index) {
        double number = 0;
        readFloat(m_numbers[index].trimmed().toStdString(), number);
        return std::clamp(number, 0.0, 1.0);
    };
    color.setRgbF(static_cast<float>(part(0)), static_cast<float>(part(1)),
                  static_cast<float>(part(2)), m_style.count > 3 ? static_cast<float>(part(3)) : 1);
    return color;
}

void NumbersEditor::showSwatch()
{
    QPixmap pixmap(kSwatchSize, kSwatchSize);
    pixmap.fill(m_numbers.isEmpty() ? Qt::transparent : color());
    m_swatch->setIcon(QIcon(pixmap));
}

void NumbersEditor::pickColor()
{
    // Goes with the editor, when what is edited goes.
    auto* const dialog = new QColorDialog(color(), this);
    dialog->setObjectName("chooseColor");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QColorDialog::DontUseNativeDialog);
    dialog->setOption(QColorDialog::ShowAlphaChannel, m_style.count > 3);
    connect(dialog, &QColorDialog::currentColorChanged, this, [this](const QColor& color) {
        const double parts[] = {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
        QStringList numbers;
        for (int i = 0; i < m_style.count; ++i)
            numbers.append(
                QString::fromStdString(numberText(QString::number(parts[i], 'g', 4).toDouble())));
        m_taker.passValue(numbers.join(QStringLiteral(", ")));
    });
    connect(dialog, &QColorDialog::finished, this,
            [this](int result) { m_taker.endGesture(result == QDialog::Accepted); });
    dialog->open();
}

} // namespace shading
