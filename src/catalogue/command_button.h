#pragma once

#include <QString>

class QPushButton;
class QWidget;

namespace catalogue {

/// A command of a form: a button in the font of all commands.
QPushButton* commandButton(QWidget& form, const QString& name, const QString& caption);

} // namespace catalogue
