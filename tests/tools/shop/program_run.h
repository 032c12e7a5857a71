#pragma once

#include "support/printers.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

namespace shoptooltest {

using namespace Qt::StringLiterals;

struct Outcome
{
    int exitStatus = -1;
    QByteArray out;
    QStringList err;
};

inline Outcome outcomeOf(QProcess& process, const QStringList& arguments)
{
    process.start(QStringLiteral(ZOMREL_SHOP_PROGRAM), arguments);
    if (!process.waitForFinished(120000))
        ADD_FAILURE() << qPrintable(process.errorString());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), process.readAllStandardOutput(),
            QString::fromUtf8(process.readAllStandardError()).split(u'\n', Qt::SkipEmptyParts)};
}

/// Runs the program as a user does, in a process of its own.
inline Outcome zomrelShop(const QStringList& arguments)
{
    QProcess process;
    return outcomeOf(process, arguments);
}

/// Runs the program with its standard output in a file or a device.
inline Outcome zomrelShopInto(const QString& place, const QStringList& arguments)
{
    QProcess process;
    process.setStandardOutputFile(place);
    return outcomeOf(process, arguments);
}

inline QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

} // namespace shoptooltest
