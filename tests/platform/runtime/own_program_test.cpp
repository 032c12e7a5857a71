#include "platform/runtime/own_program.h"

#include <QCoreApplication>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST(OwnProgramTest, Path_namesACopyOfTheProgram)
{
    const runtime::OwnProgram program;
    const QString file = QCoreApplication::applicationFilePath();
    EXPECT_FALSE(contentsOf(file).isEmpty());
    EXPECT_TRUE(contentsOf(program.path()) == contentsOf(file));
#ifdef Q_OS_LINUX
    EXPECT_NE(program.path(), file);
#endif
}
