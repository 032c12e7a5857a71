#pragma once

#include <QFont>
#include <QString>

class QLabel;
class QPushButton;
class QWidget;

/// Functions that create the labels, buttons and fonts of the forms.
namespace controls {

/// Returns a font of this family and size. The size is in points and may be a fraction.
QFont fontOf(const QString& family, double points);
QFont boldFontOf(const QString& family, double points);

/// Creates a label that shows its text as plain text.
QLabel* makeLabel(const QString& name, const QString& text, const QFont& font, QWidget* parent);

/// Creates a label for a value. The colour of the text distinguishes a value from a caption. The
/// label has no border, because the user cannot edit the value.
QLabel* makeValueLabel(const QString& name, const QString& text, const QFont& font,
                       QWidget* parent);

QPushButton* makeButton(const QString& name, const QString& text, const QFont& font,
                        QWidget* parent);

/// Returns the objectName of a member of a control array, for example "TextNum_0".
QString memberName(const QString& array, std::size_t index);

} // namespace controls
