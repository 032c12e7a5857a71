#include "orders/desk.h"

#include "platform/controls/form.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/file_system_object.h"

#include <QCoreApplication>
#include <QMdiArea>

namespace testsupport {

Desk::Desk() : store(TemporaryStore::Contents::Empty)
{
    Module1::CurrentOrderNum = 0;
    Module1::SelectedSerialNum = 0;
    Module1::SqlText.clear();
    Module1::FileSys = std::make_unique<runtime::FileSystemObject>();
    auto* area = new QMdiArea(&window);
    window.setCentralWidget(area);
    window.resize(1366, 768);
    controls::setFrame(area);
    window.show();
}

Desk::~Desk()
{
    if (orders::FrOrder* loaded = form())
        loaded->Unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    controls::setFrame(nullptr);
}

void Desk::addOrderWithLines(int number, const QList<int>& lineNumbers)
{
    store.addOrder(number);
    for (int lineNumber : lineNumbers)
        store.addLine(number, lineNumber, QStringLiteral("סדרה %1").arg(lineNumber));
}

orders::FrOrder& Desk::openOrder(int number)
{
    Module1::CurrentOrderNum = static_cast<std::int16_t>(number);
    return orders::frOrder();
}

orders::FrOrder* Desk::form() const
{
    return window.findChild<orders::FrOrder*>();
}

dao::Recordset& Desk::lines() const
{
    return on<controls::DataControl>("DataAllCuts")->Recordset();
}

QList<int> Desk::storedLineNumbers(int order)
{
    QList<int> numbers;
    for (const QList<QVariant>& row : store.rows(
             QStringLiteral("SELECT NUM FROM Cuts WHERE Order_Num = ? ORDER BY rowid"), {order}))
        numbers.append(row.first().toInt());
    return numbers;
}

bool Desk::timerRests() const
{
    return !on<QTimer>("Timer1")->isActive();
}

} // namespace testsupport
