#pragma once

#include "tools/store/command.h"

#include <QStringList>
#include <QTextStream>

namespace runtime {
class RunTimeError;
}

/// Options and messages that several commands of zomrel-store use.
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

/// Prints an error and what the user should do next. Returns the exit status Failure.
ExitStatus fail(QTextStream& err, const QString& message, const QString& nextStep);
ExitStatus fail(QTextStream& err, const runtime::RunTimeError& error);

/// Prints the findings in a store or a backup, a message about the findings, and what the user
/// should do next. Returns the exit status Failure.
ExitStatus notSound(QTextStream& err, const QStringList& findings, const QString& message,
                    const QString& nextStep);

/// Checks that no station is connected to the store or database that a command is about to replace
/// or fill. If stations are connected, prints them and returns false. With the option --force,
/// always returns true.
bool isLeft(const QString& place, const Call& call, QTextStream& err);

/// Prints a list of tables with the number of rows of each table.
class Counts
{
public:
    /// Prints the heading.
    explicit Counts(QTextStream& out);
    void add(const QString& table, qint64 rows) { line(table, QString::number(rows)); }

private:
    /// Prints one line with two cells. Each cell is enclosed in direction marks, so that the
    /// columns keep their order in a Hebrew text.
    void line(const QString& table, const QString& rows);

    QTextStream& out_;
};

} // namespace storetools
