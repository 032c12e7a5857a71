#pragma once

#include "tools/store/command.h"

#include <QStringList>
#include <QTextStream>

namespace runtime {
class RunTimeError;
}

/// Options and messages that several commands have in common.
namespace storetools {

extern const QString forceOption;
bool isForced(const Call& call);

void print(QTextStream& stream, const QStringList& lines);

extern const QString storeProgram;

/// Prints the name of the program and a message.
void tell(QTextStream& stream, const QString& message, const QString& program = storeProgram);
/// Prints what the user should do next.
void tellNextStep(QTextStream& stream, const QString& nextStep,
                  const QString& program = storeProgram);

/// Prints what failed and what to do next. Returns Failure.
ExitStatus fail(QTextStream& err, const QString& message, const QString& nextStep);
ExitStatus fail(QTextStream& err, const runtime::RunTimeError& error);

/// Prints the findings in a store or a backup, the message about them, and what to do next. Returns
/// Failure.
ExitStatus notSound(QTextStream& err, const QStringList& findings, const QString& message,
                    const QString& nextStep);

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
    /// Prints two cells. The columns keep their order in a Hebrew text.
    void line(const QString& table, const QString& rows);

    QTextStream& out_;
};

} // namespace storetools
