#pragma once

#include "tools/store/command.h"

#include <QStringList>
#include <QTextStream>

/// Options and messages that several commands have in common.
namespace storetools {

extern const QString forceOption;
bool isForced(const Call& call);

void print(QTextStream& stream, const QStringList& lines);

/// Prints why a store is not sound, and that nothing was changed. Returns Failure.
ExitStatus notSound(const QStringList& findings, QTextStream& err);

/// Checks that no station is connected to the place that a command is about to replace or fill.
/// Otherwise names the stations and returns false, unless the call forces the command.
bool isLeft(const QString& place, const Call& call, QTextStream& err);

/// Prints the number of rows of each table.
class Counts
{
public:
    /// Prints the heading.
    explicit Counts(QTextStream& out);
    void add(const QString& table, qint64 rows) { line(table, QString::number(rows)); }

private:
    void line(const QString& table, const QString& rows);

    QTextStream& out_;
};

} // namespace storetools
