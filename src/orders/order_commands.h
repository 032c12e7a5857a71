#pragma once

#include <QWidget>

class QPushButton;

namespace orders {

/// The row of buttons for commands on a line or on the whole order. The commands of an opening are
/// on the opening panel.
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
    /// CmdOpenOrder is disabled until an order has been closed.
    QPushButton* CmdOpenOrder;
    QPushButton* CmdCloseOrder;
    QPushButton* Command2;
};

} // namespace orders
