#pragma once

#include <QString>
#include <QStringList>

namespace dao {

/// What the settings of a store's server mean after a power cut. Both lists are empty for an
/// embedded store.
struct Durability
{
    QStringList hazards; ///< Confirmed rows may be lost: one text for each reason.
    QStringList remarks; ///< Damage may stay unnoticed: one text for each reason.
};

/// A change of a row, as the log of a server's database contains it.
struct LoggedChange
{
    QString moment; ///< In the time zone of the server's database.
    QString who;    ///< The role that was logged in.
    QString action; ///< "added", "changed" or "deleted".
    QString table;
    QString key;    ///< The primary key of the row.
    QString oldRow; ///< The values before the change without Null, as JSON; empty for a new row.
};

} // namespace dao
