#include "catalogue/command_button.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace catalogue {

QPushButton* commandButton(QWidget& form, const QString& name, const QString& caption)
{
    auto* button = new QPushButton(caption, &form);
    button->setObjectName(name);
    QFont font(u"Arial"_s);
    font.setPointSizeF(11.25);
    font.setBold(true);
    button->setFont(font);
    return button;
}

} // namespace catalogue
