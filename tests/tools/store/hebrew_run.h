#pragma once

#include "tools/store/in_hebrew.h"
#include "tools/store/program.h"

#include <QStringList>
#include <QTextStream>

#include <gtest/gtest.h>

/// Commands that run in this process, so that the marks around names are kept.
namespace storetooltest {

struct Said
{
    int exitStatus = -1;
    QString out;
    QString err;

    QStringList lines() const { return (out + err).split(u'\n', Qt::SkipEmptyParts); }
    /// Returns the lines as a pipe gets them.
    QStringList plainLines() const
    {
        QStringList plain;
        for (const QString& line : lines())
            plain.append(QString::fromUtf8(storetools::withoutIsolation(line.toUtf8())));
        return plain;
    }
};

inline Said run(const QStringList& arguments)
{
    Said said;
    QTextStream out(&said.out);
    QTextStream err(&said.err);
    said.exitStatus = storetools::run(arguments, out, err);
    out.flush();
    err.flush();
    return said;
}

inline Said runInHebrew(const QStringList& arguments)
{
    const InHebrew hebrew;
    return run(arguments);
}

/// Returns the call and what it printed, for the message of a failed test.
inline std::string named(const QStringList& arguments, const Said& said)
{
    return (arguments.join(u' ') + u'\n' + said.out + said.err).toStdString();
}

/// Expects Hebrew lines, with everything else isolated.
inline void expectHebrew(const QStringList& arguments, const Said& said)
{
    EXPECT_TRUE(hasHebrew(said.out + said.err)) << named(arguments, said);
    for (const QString& line : said.lines())
        EXPECT_EQ(bareLatin(line), QString()) << named(arguments, said);
}

} // namespace storetooltest
