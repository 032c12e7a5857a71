#include "orders/order_commands.h"

#include "platform/controls/makers.h"

#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

QPushButton* command(const QString& name, const QString& caption, QWidget* parent)
{
    QPushButton* button =
        controls::makeButton(name, caption, controls::fontOf(u"Arial"_s, 11), parent);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setMinimumHeight(34);
    return button;
}

} // namespace

OrderCommands::OrderCommands(QWidget* openingCommands, QWidget* parent)
    : QWidget(parent), CmdView(command(u"CmdView"_s, u"הצג שורה"_s, this)),
      CmdDel(command(u"CmdDel"_s, u"מחק שורה"_s, this)),
      CmdDelAll(command(u"CmdDelAll"_s, u"מחק הכל"_s, this)),
      CmdPrint(command(u"CmdPrint"_s, u"הדפס הזמנה"_s, this)),
      CmdFindOrder(command(u"CmdFindOrder"_s, u"חפש הזמנה"_s, this)),
      CmdOpenOrder(command(u"CmdOpenOrder"_s, u"הזמנה חדשה"_s, this)),
      CmdCloseOrder(command(u"CmdCloseOrder"_s, u"סגור הזמנה"_s, this)),
      Command2(command(u"Command2"_s, u"סיום"_s, this))
{
    CmdOpenOrder->setEnabled(false);
    auto* onLine = new QHBoxLayout;
    for (QPushButton* each : {CmdView, CmdDel, CmdDelAll})
        onLine->addWidget(each);
    auto* upper = new QHBoxLayout;
    upper->setSpacing(columnGap);
    upper->addWidget(openingCommands, openingShare);
    upper->addLayout(onLine, linesShare);
    auto* onOrder = new QHBoxLayout;
    for (QPushButton* each : {CmdPrint, CmdFindOrder, CmdOpenOrder, CmdCloseOrder, Command2})
        onOrder->addWidget(each);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addLayout(upper);
    rows->addLayout(onOrder);
}

} // namespace orders
