#pragma once

#include <QProxyStyle>

namespace shell {

/// The style of all windows, with a picture of its own for the button that stands in a toolbar for
/// what has no room in it. The toolkit makes its picture with every toolbar and reads it from a
/// file by way of every image plugin of the machine, which took a fifth of the program's start.
class ProgramStyle : public QProxyStyle
{
public:
    ProgramStyle();
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override;
};

} // namespace shell
