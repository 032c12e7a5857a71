#pragma once

#include "orders/order_commands.h"
#include "orders/order_head.h"
#include "reliability/bad/working_day.h"
#include "support/temporary_store.h"

#include <utility>

/// The commands that write to the store, tried where they cannot.
enum Command { NewOrder, AddLine, DeleteLine, SaveDetails, CloseOrder };

inline constexpr std::pair<const char*, Command> writingCommands[] = {{"new order", NewOrder},
                                                                      {"line", AddLine},
                                                                      {"deleting", DeleteLine},
                                                                      {"details", SaveDetails},
                                                                      {"closing", CloseOrder}};

inline const QString nameBefore = QStringLiteral("לקוח");
inline const QString nameAfter = QStringLiteral("לקוח אחר");

/// Order 1 as the command finds it: closed before a new one, without lines where its details are
/// saved by themselves.
inline void layOrder(testsupport::TemporaryStore& store, Command command)
{
    constexpr int linesBefore = 4;
    store.addSeries(QStringLiteral("סדרה"), {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, 2, 2);
    store.addOrder(1, command == NewOrder);
    store.execute(QStringLiteral("UPDATE Orders SET CustomerName = ?"), {nameBefore});
    const int lines = command == SaveDetails ? 0 : linesBefore;
    for (int line = 1; line <= lines; ++line)
        store.addLine(1, line);
}

/// What the store holds of order 1 and how many orders there are.
struct Held
{
    int orders;
    int lines;
    QString customer;
    bool closed;
    bool operator==(const Held&) const = default;
};

inline Held held(testsupport::TemporaryStore& store)
{
    return {
        store.scalar(QStringLiteral("SELECT count(*) FROM Orders")).toInt(),
        store.scalar(QStringLiteral("SELECT count(*) FROM Cuts WHERE Order_Num = 1")).toInt(),
        store.scalar(QStringLiteral("SELECT CustomerName FROM Orders WHERE Number = 1")).toString(),
        store.scalar(QStringLiteral("SELECT Open_Close FROM Orders WHERE Number = 1")).toInt() !=
            0};
}

inline void run(WorkingDay& day, Command command)
{
    switch (command) {
    case NewOrder:
        day.openOrder();
        break;
    case AddLine:
        day.addLine();
        break;
    case DeleteLine:
        day.boxes.answer(runtime::vbYes);
        day.click(QStringLiteral("CmdDel"));
        break;
    case SaveDetails:
        day.click(
            QStringLiteral("CmdPrint")); // with no line in the order it saves and nothing else
        break;
    case CloseOrder:
        day.boxes.answer(runtime::vbYes);
        day.click(QStringLiteral("CmdCloseOrder"));
        break;
    }
}

inline Held heldAfter(Command command, const Held& before)
{
    Held done = before;
    if (command == NewOrder)
        ++done.orders;
    else if (command == DeleteLine)
        --done.lines;
    else
        done.customer = nameAfter;
    done.lines += command == AddLine ? 1 : 0;
    done.closed = done.closed || command == CloseOrder;
    return done;
}

/// True for what a command that failed may leave: what was there, or a line without the customer's
/// details, which are a change of their own behind it.
inline bool mayBeLeft(Command command, const Held& before, const Held& after)
{
    Held lineOnly = before;
    ++lineOnly.lines;
    return after == before || (command == AddLine && after == lineOnly);
}
