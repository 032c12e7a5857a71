#include "platform/report/export.h"

#include "platform/report/small_device.h"
#include "platform/report/small_report.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

const Progress goOn = [](int, int) { return true; };

QString textOf(Document& document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_EQ(writeText(document, buffer, goOn), Outcome::Done);
    return QString::fromUtf8(buffer.data());
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden);
}

TEST(TextExport, TextHasThePageHeaderOnceAndABlockPerRow)
{
    const auto document = smallDocument(smallRows(4));
    EXPECT_EQ(textOf(*document).toStdString(), u"כותרת\n"
                                               "17\n"
                                               "\n"
                                               "שם:\tשורה 1\n"
                                               "0.5\n"
                                               "\n"
                                               "שם:\tשורה 2\n"
                                               "1\n"
                                               "\n"
                                               "שם:\tשורה 3\n"
                                               "1.5\n"
                                               "\n"
                                               "שם:\tשורה 4\n"
                                               "2\n"
                                               "\n"_s.toStdString());
}

TEST(TextExport, TextWithLineBreaksIsOneLine)
{
    const auto rows = std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 1, [](int) {
        return MemoryRows::Row{u"א\nב\tג"_s, 1.0};
    });
    const auto document = smallDocument(rows);
    EXPECT_TRUE(textOf(*document).endsWith(u"\n\nשם:\tא ב ג\n1\n\n"_s));
}

TEST(TextExport, BlockHasNoEmptyLines)
{
    const auto rows = std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 2, [](int) {
        return MemoryRows::Row{u"א"_s, QVariant()};
    });
    const auto document = smallDocument(rows);
    EXPECT_TRUE(textOf(*document).endsWith(u"17\n\nשם:\tא\n\nשם:\tא\n\n"_s));
}

TEST(TextExport, ReportsProgressPageByPage)
{
    const auto document = smallDocument(smallRows(7));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    std::vector<int> told;
    writeText(*document, buffer, [&](int done, int total) {
        EXPECT_EQ(total, 3);
        told.push_back(done);
        return true;
    });
    EXPECT_EQ(told, (std::vector<int>{1, 2, 3}));
}

TEST(TextExport, FullDiskReturnsFailed)
{
    for (const qint64 room : {qint64(0), qint64(100), qint64(3000)}) {
        const auto document = smallDocument(smallRows(300));
        SmallDevice device(room);
        EXPECT_EQ(writeText(*document, device, goOn), Outcome::Failed) << room;
    }
}

TEST(Export, TargetIsReplacedOnlyWhenDone)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"מסמך.txt"_s);
    const auto writer = [](Outcome outcome) {
        return [outcome](QIODevice& device) {
            device.write("new");
            return outcome;
        };
    };
    EXPECT_EQ(writeFile(path, writer(Outcome::Cancelled)), Outcome::Cancelled);
    EXPECT_EQ(writeFile(path, writer(Outcome::Failed)), Outcome::Failed);
    EXPECT_TRUE(entries(folder.path()).isEmpty());
    EXPECT_EQ(writeFile(path, writer(Outcome::Done)), Outcome::Done);
    EXPECT_EQ(contents(path), "new");
    const auto older = [&](Outcome outcome) {
        return writeFile(path, [outcome](QIODevice& device) {
            device.write("partial");
            return outcome;
        });
    };
    EXPECT_EQ(older(Outcome::Cancelled), Outcome::Cancelled);
    EXPECT_EQ(older(Outcome::Failed), Outcome::Failed);
    EXPECT_EQ(contents(path), "new");
    EXPECT_EQ(entries(folder.path()), QStringList{u"מסמך.txt"_s});
}

TEST(Export, UnwritableTargetReturnsFailed)
{
    const QTemporaryDir folder;
    bool ran = false;
    const auto writer = [&](QIODevice&) {
        ran = true;
        return Outcome::Done;
    };
    EXPECT_EQ(writeFile(folder.filePath(u"missing/file.txt"_s), writer), Outcome::Failed);
    EXPECT_EQ(writeFile(folder.path(), writer), Outcome::Failed) << "the target is a folder";
    EXPECT_FALSE(ran);
}

TEST(Export, ReadErrorLeavesNoFile)
{
    const QTemporaryDir folder;
    const auto rows = smallRows(30);
    const auto document = smallDocument(rows);
    const auto failing = [&](QIODevice& device) {
        return writeText(*document, device, [&](int done, int) {
            if (done == 2)
                rows->failsWith = runtime::Locked;
            return true;
        });
    };
    EXPECT_THROW(writeFile(folder.filePath(u"x.txt"_s), failing), runtime::RunTimeError);
    EXPECT_TRUE(entries(folder.path()).isEmpty());
}

} // namespace
