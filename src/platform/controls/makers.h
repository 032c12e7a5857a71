#pragma once

#include <QFont>
#include <QString>

class QLabel;
class QPushButton;
class QWidget;

/// Functions that create the labels, buttons and fonts of the forms.
namespace controls {

/// Returns a font of this family and size. The size may be a fraction of a point.
QFont fontOf(const QString& family, double points);
QFont boldFontOf(const QString& family, double points);

/// Creates a label that shows its text as plain text.
QLabel* makeLabel(const QString& name, const QString& text, const QFont& font, QWidget* parent);

/// Creates a label for a value. Its colour distinguishes it from a caption. It has no frame,
/// because the user cannot edit it.
QLabel* makeValueLabel(const QString& name, const QString& text, const QFont& font,
                       QWidget* parent);

QPushButton* makeButton(const QString& name, const QString& text, const QFont& font,
                        QWidget* parent);

/// Returns the objectName of a member of a control array, for example "TextNum_0".
QString memberName(const QString& array, std::size_t index);

} // namespace controls
