#pragma once

#include <QWidget>

class QPushButton;

namespace orders {

/// The two rows of buttons at the bottom of the order form. The first row contains the buttons for
/// the opening and the buttons for a line, each below the column of the form to which they belong.
/// The second row contains the buttons for the whole order.
class OrderCommands : public QWidget
{
    Q_OBJECT

public:
    /// The ratio by which the form's width is divided between the column of the opening and the
    /// column of the lines.
    static constexpr int openingShare = 9;
    static constexpr int linesShare = 11;
    static constexpr int columnGap = 12;

    /// Creates two rows of buttons. The first row begins with `openingCommands`, which contains the
    /// buttons for the opening.
    OrderCommands(QWidget* openingCommands, QWidget* parent);

    QPushButton* CmdView;
    QPushButton* CmdDel;
    QPushButton* CmdDelAll;
    QPushButton* CmdPrint;
    QPushButton* CmdFindOrder;
    /// The button for a new order is disabled until an order has been closed.
    QPushButton* CmdOpenOrder;
    QPushButton* CmdCloseOrder;
    QPushButton* Command2;
};

} // namespace orders
