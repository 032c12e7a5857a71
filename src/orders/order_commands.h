#pragma once

#include <QWidget>

class QPushButton;

namespace orders {

/// The commands on a line and on the order as a whole, in one row. The commands that belong to an
/// opening stand on its own panel.
class OrderCommands : public QWidget
{
    Q_OBJECT

public:
    explicit OrderCommands(QWidget* parent = nullptr);

    QPushButton* CmdView;
    QPushButton* CmdDel;
    QPushButton* CmdDelAll;
    QPushButton* CmdPrint;
    QPushButton* CmdFindOrder;
    /// Disabled until an order has been closed.
    QPushButton* CmdOpenOrder;
    QPushButton* CmdCloseOrder;
    QPushButton* Command2;
};

} // namespace orders
