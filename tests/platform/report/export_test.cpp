#include "platform/report/export.h"

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

/// Takes so many bytes and no more, like a disk that fills up.
class SmallDevice : public QIODevice
{
public:
    explicit SmallDevice(qint64 room) : room_(room) { open(QIODevice::WriteOnly); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override
    {
        const qint64 taken = std::min(size, room_);
        room_ -= taken;
        return taken > 0 || size == 0 ? taken : -1;
    }

private:
    qint64 room_;
};

QString text(Outcome (*write)(Document&, QIODevice&, const Progress&), Document& document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_EQ(write(document, buffer, goOn), Outcome::Done);
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

TEST(TextExport, HoldsTheHeadOnceAndABlockPerRow)
{
    const auto document = smallDocument(smallRows(4));
    EXPECT_EQ(text(writeText, *document).toStdString(), u"כותרת\n"
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

TEST(TextExport, HoldsALineForATextWithBreaks)
{
    const auto rows = std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 1, [](int) {
        return MemoryRows::Row{u"א\nב\tג"_s, 1.0};
    });
    const auto document = smallDocument(rows);
    EXPECT_TRUE(text(writeText, *document).endsWith(u"\n\nשם:\tא ב ג\n1\n\n"_s));
}

TEST(HtmlExport, IsOneSelfContainedRightToLeftPage)
{
    auto sections = makeSections(smallReport);
    QImage picture(4, 3, QImage::Format_RGB32);
    picture.fill(0xff336699);
    sections[0].Controls(u"Logo"_s).setPicture(picture);
    Document document(smallReport, std::move(sections), smallRows(4), smallPaper);
    const QString html = text(writeHtml, document);
    EXPECT_TRUE(html.contains(u"<html lang=\"he\" dir=\"rtl\">"_s));
    EXPECT_TRUE(html.contains(u"charset=\"utf-8\""_s));
    EXPECT_EQ(html.count(u"src=\"data:image/jpeg;base64,"_s), 1);
    EXPECT_EQ(html.count(u"src="_s), 1);
    EXPECT_FALSE(html.contains(u"http"_s));
    EXPECT_FALSE(html.contains(u"<link"_s));
}

TEST(HtmlExport, HoldsEveryTextInOrderWhereItStandsOnPaper)
{
    const auto document = smallDocument(smallRows(4));
    const QString html = text(writeHtml, *document);
    EXPECT_EQ(html.count(u">כותרת</div>"_s), 1) << "the head stands once";
    EXPECT_EQ(html.count(u">שם:</div>"_s), 4);
    qsizetype at = 0;
    for (int row = 1; row <= 4; ++row) {
        at = html.indexOf(u">שורה %1</div>"_s.arg(row), at);
        ASSERT_GT(at, 0) << row;
        at = html.indexOf(u">%1</div>"_s.arg(row / 2.0), at);
        ASSERT_GT(at, 0) << row;
    }
    EXPECT_TRUE(html.contains(u".NameField{left:50pt;top:4.5pt;width:150pt;height:15pt;"_s));
    EXPECT_TRUE(html.contains(u"<div class=\"NameField\" dir=\"rtl\">"_s));
    EXPECT_TRUE(html.contains(u"<div class=\"SizeField\" dir=\"ltr\">"_s));
}

TEST(HtmlExport, LetsEachTextBeginAtItsOwnSide)
{
    const QStringList names{u"חלון לבן"_s, u"White"_s, u"PVC לבן"_s, u"-5"_s};
    const auto rows =
        std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 4, [=](int row) {
            return MemoryRows::Row{names[row], names[row]};
        });
    const QString html = text(writeHtml, *smallDocument(rows));
    // NameField reads from right to left, SizeField from left to right.
    for (const QString& element :
         {u"<div class=\"NameField\" dir=\"rtl\">חלון לבן</div>"_s,
          u"<div class=\"NameField\" dir=\"ltr\"><span dir=\"rtl\">White</span></div>"_s,
          u"<div class=\"NameField\" dir=\"rtl\">PVC לבן</div>"_s,
          u"<div class=\"NameField\" dir=\"ltr\">-5</div>"_s,
          u"<div class=\"SizeField\" dir=\"rtl\"><span dir=\"ltr\">חלון לבן</span></div>"_s,
          u"<div class=\"SizeField\" dir=\"ltr\">White</div>"_s,
          u"<div class=\"SizeField\" dir=\"ltr\">PVC לבן</div>"_s,
          u"<div class=\"SizeField\" dir=\"ltr\">-5</div>"_s})
        EXPECT_TRUE(html.contains(element)) << element.toStdString();
}

TEST(HtmlExport, EscapesWhatTheUserTyped)
{
    const auto rows = std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 1, [](int) {
        return MemoryRows::Row{u"<b>&\"%1 %2"_s, 1};
    });
    const QString html = text(writeHtml, *smallDocument(rows));
    EXPECT_TRUE(html.contains(u"&lt;b&gt;&amp;&quot;%1 %2</"_s));
}

TEST(Export, TellsItsProgressPageByPage)
{
    for (const auto write : {writeText, writeHtml}) {
        const auto document = smallDocument(smallRows(7));
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        std::vector<int> told;
        write(*document, buffer, [&](int done, int total) {
            EXPECT_EQ(total, 3);
            told.push_back(done);
            return true;
        });
        EXPECT_EQ(told, (std::vector<int>{1, 2, 3}));
    }
}

TEST(Export, ReportsAFullDisk)
{
    for (const qint64 room : {qint64(0), qint64(100), qint64(3000)}) {
        const auto document = smallDocument(smallRows(300));
        SmallDevice first(room);
        EXPECT_EQ(writeText(*document, first, goOn), Outcome::Failed) << room;
        SmallDevice second(room);
        EXPECT_EQ(writeHtml(*document, second, goOn), Outcome::Failed) << room;
    }
}

TEST(Export, TakesTheFilesPlaceOnlyWhenDone)
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

TEST(Export, FailsWhereNoFileCanBe)
{
    const QTemporaryDir folder;
    bool ran = false;
    const auto writer = [&](QIODevice&) {
        ran = true;
        return Outcome::Done;
    };
    EXPECT_EQ(writeFile(folder.filePath(u"missing/file.txt"_s), writer), Outcome::Failed);
    EXPECT_EQ(writeFile(folder.path(), writer), Outcome::Failed) << "a folder";
    EXPECT_FALSE(ran);
}

TEST(Export, LeavesNothingBehindAReadingFailure)
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
