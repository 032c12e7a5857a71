#include "platform/controls/makers.h"

#include <QLabel>
#include <QPushButton>

namespace controls {

namespace {

/// The text colour of a value that the user cannot edit. The colour distinguishes it from a
/// caption, because the value has no border.
const QColor valueColour(0x1f, 0x4e, 0x79);

} // namespace

QFont fontOf(const QString& family, double points)
{
    QFont font(family);
    font.setPointSizeF(points);
    return font;
}

QFont boldFontOf(const QString& family, double points)
{
    QFont font = fontOf(family, points);
    font.setBold(true);
    return font;
}

QLabel* makeLabel(const QString& name, const QString& text, const QFont& font, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setFont(font);
    return label;
}

QLabel* makeValueLabel(const QString& name, const QString& text, const QFont& font, QWidget* parent)
{
    QLabel* label = makeLabel(name, text, font, parent);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, valueColour);
    label->setPalette(palette);
    return label;
}

QPushButton* makeButton(const QString& name, const QString& text, const QFont& font,
                        QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setObjectName(name);
    button->setFont(font);
    return button;
}

QString memberName(const QString& array, std::size_t index)
{
    return array + u'_' + QString::number(index);
}

} // namespace controls
