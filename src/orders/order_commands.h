#pragma once

#include <QWidget>

class QPushButton;

namespace orders {

/// The two rows of commands below the order form. The first row has the commands of the opening
/// and those on a line, each below its column of the form. The second row has the commands on the
/// whole order.
class OrderCommands : public QWidget
{
    Q_OBJECT

public:
    /// How the form's width is divided between the column of the opening and the column of the
    /// lines.
    static constexpr int openingShare = 9;
    static constexpr int linesShare = 11;
    static constexpr int columnGap = 12;

    /// Takes the row with the commands of the opening.
    OrderCommands(QWidget* openingCommands, QWidget* parent);

    QPushButton* CmdView;
    QPushButton* CmdDel;
    QPushButton* CmdDelAll;
    QPushButton* CmdPrint;
    QPushButton* CmdFindOrder;
    /// CmdOpenOrder is disabled until an order has been closed.
    QPushButton* CmdOpenOrder;
    QPushButton* CmdCloseOrder;
    QPushButton* Command2;
};

} // namespace orders
