#include "shop/csv.h"
#include "support/temporary_store.h"
#include "tools/shop/program_run.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;
using shoptooltest::contentsOf;
using shoptooltest::Outcome;
using shoptooltest::zomrelShop;
using testsupport::TemporaryStore;

namespace {

QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

/// Adds order 7 with two windows. The frame of the second one has no width.
void fill(TemporaryStore& store)
{
    store.addOrder(7);
    store.addLine(7, 1);
    store.addLine(7, 2);
    store.execute(u"UPDATE Cuts SET Mashkof_W = NULL WHERE NUM = 2"_s);
}

const QRegularExpression dataFile(u"\\.(csv|json|xlsx)$"_s);

const QString fault = u"order 7, line 2, frame, width: Mashkof_W is Null"_s;

Outcome plan(const TemporaryStore& store, const QString& folder, const QStringList& more = {})
{
    return zomrelShop(
        QStringList{u"plan"_s, u"7"_s, u"--store"_s, store.path(), u"--out"_s, folder} + more);
}

} // namespace

#ifdef Q_OS_LINUX // The device for a full disk.
TEST(ShopProgramTest, FullDisk_IsToldWithTheNameOfTheProgram)
{
    const Outcome outcome = shoptooltest::zomrelShopInto(u"/dev/full"_s, {u"--version"_s});
    EXPECT_EQ(outcome.exitStatus, 1);
    ASSERT_EQ(outcome.err.size(), 2);
    EXPECT_EQ(outcome.err[0],
              u"zomrel-shop: could not write the output: No space left on device"_s);
    EXPECT_TRUE(outcome.err[1].startsWith(u"zomrel-shop: what to do: "_s));
}
#endif

TEST(ShopProgramTest, Pieces_HaveOneRowEachAndFaultsGoToTheErrorStream)
{
    TemporaryStore store;
    fill(store);
    const Outcome outcome = zomrelShop({u"pieces"_s, u"7"_s, u"--store"_s, store.path()});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.err, QStringList{fault});
    EXPECT_TRUE(outcome.out.startsWith("\xEF\xBB\xBForder,line,"));
    const QList<QStringList> rows = shop::readCsv(outcome.out).value_or(QList<QStringList>());
    // Per line: frame 2 + 2, sash 4 + 4, mesh 4 + 4; two widths are missing.
    ASSERT_EQ(rows.size(), 1 + 40 - 2);
    EXPECT_EQ(rows[1], (QStringList{u"7"_s, u"1"_s, u"frame"_s, u"width"_s, u"משקוף רגיל"_s,
                                    u"לבן"_s, u"119.4"_s, u"90"_s}));
}

TEST(ShopProgramTest, Plan_WritesAllDocumentsAndNothingElse)
{
    TemporaryStore store;
    fill(store);
    const QTemporaryDir folder;
    const QString out = folder.filePath(u"מסמכים"_s);
    const Outcome outcome = plan(store, out);
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.err, QStringList{fault});
    EXPECT_TRUE(QString::fromUtf8(outcome.out).contains(u"proved: no plan needs fewer bars"_s));
    EXPECT_EQ(filesIn(out),
              (QStringList{u"bar-plan.csv"_s, u"cut-list.csv"_s, u"glass.csv"_s, u"labels.pdf"_s,
                           u"mesh.csv"_s, u"order-7.pdf"_s, u"plan.json"_s, u"workbook.xlsx"_s}));
    EXPECT_TRUE(contentsOf(QDir(out).filePath(u"order-7.pdf"_s)).startsWith("%PDF"));
    EXPECT_TRUE(contentsOf(QDir(out).filePath(u"labels.pdf"_s)).startsWith("%PDF"));
    EXPECT_EQ(filesIn(folder.path()), QStringList{u"מסמכים"_s});
    const QString json = QDir(out).filePath(u"plan.json"_s);
    const Outcome checked = zomrelShop({u"check"_s, json, u"--store"_s, store.path()});
    EXPECT_EQ(checked.exitStatus, 0);
    EXPECT_EQ(QString::fromUtf8(checked.out), u"no errors: %1\n"_s.arg(json));
    const QJsonObject errors =
        QJsonDocument::fromJson(contentsOf(json)).object()["errors"_L1][0].toObject();
    EXPECT_EQ(errors["reason"_L1].toString(), u"Mashkof_W is Null"_s);
}

TEST(ShopProgramTest, PaperOfSeveralOrders_IsNamedAfterTheFirstAndTheLast)
{
    TemporaryStore store;
    fill(store);
    store.addOrder(8);
    const QTemporaryDir folder;
    const Outcome outcome = zomrelShop({u"plan"_s, u"7"_s, u"8"_s, u"--store"_s, store.path(),
                                        u"--out"_s, folder.path(), u"--documents"_s, u"paper"_s});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(filesIn(folder.path()), QStringList{u"orders-7-8.pdf"_s});
}

/// A PDF file contains the time at which it was made.
TEST(ShopProgramTest, SameOrder_GivesTheSameBytesOfData)
{
    TemporaryStore store;
    fill(store);
    const QTemporaryDir folder;
    ASSERT_EQ(plan(store, folder.filePath(u"1"_s)).exitStatus, 0);
    ASSERT_EQ(plan(store, folder.filePath(u"2"_s)).exitStatus, 0);
    for (const QString& file : filesIn(folder.filePath(u"1"_s)).filter(dataFile))
        EXPECT_EQ(contentsOf(folder.filePath(u"1/"_s + file)),
                  contentsOf(folder.filePath(u"2/"_s + file)));
}

TEST(ShopProgramTest, ChosenDocuments_AreWrittenAloneAndOthersStay)
{
    TemporaryStore store;
    fill(store);
    const QTemporaryDir folder;
    QFile note(folder.filePath(u"glass.csv"_s));
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    note.write("previous");
    note.close();
    EXPECT_EQ(plan(store, folder.path(), {u"--documents"_s, u"json,mesh"_s}).exitStatus, 0);
    EXPECT_EQ(filesIn(folder.path()), (QStringList{u"glass.csv"_s, u"mesh.csv"_s, u"plan.json"_s}));
    EXPECT_EQ(contentsOf(note.fileName()), "previous");
}

TEST(ShopProgramTest, UnknownDocument_IsAnErrorAndWritesNothing)
{
    TemporaryStore store;
    fill(store);
    const QTemporaryDir folder;
    const Outcome outcome = plan(store, folder.path(), {u"--documents"_s, u"json,cutlist"_s});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err,
              QStringList{u"zomrel-shop: Unknown document 'cutlist'. The documents are "
                          "paper, cut-list, bar-plan, glass, mesh, labels, workbook, json."_s});
    EXPECT_TRUE(filesIn(folder.path()).isEmpty());
}

TEST(ShopProgramTest, OrderThatDoesNotExist_IsAnErrorAndWritesNothing)
{
    TemporaryStore store;
    fill(store);
    const QTemporaryDir folder;
    for (const QString& order : {u"12"_s, u"abc"_s, u"99999999999"_s, u"-5"_s, u"-99999999999"_s}) {
        const Outcome outcome = zomrelShop(
            {u"plan"_s, u"7"_s, order, u"--store"_s, store.path(), u"--out"_s, folder.path()});
        EXPECT_EQ(outcome.exitStatus, 1);
        EXPECT_EQ(outcome.err, QStringList{u"zomrel-shop: There is no order %1."_s.arg(order)});
    }
    EXPECT_TRUE(filesIn(folder.path()).isEmpty());
}

TEST(ShopProgramTest, StoreThatCannotBeRead_IsAnError)
{
    const QTemporaryDir folder;
    const QString missing = folder.filePath(u"none.mdb"_s);
    const Outcome outcome = zomrelShop({u"pieces"_s, u"7"_s, u"--store"_s, missing});
    EXPECT_EQ(outcome.exitStatus, 1);
    ASSERT_EQ(outcome.err.size(), 1);
    EXPECT_TRUE(outcome.err.front().contains(missing));
    EXPECT_TRUE(outcome.out.isEmpty());
}

TEST(ShopProgramTest, OrderWithoutLines_GivesEmptyDocuments)
{
    TemporaryStore store;
    store.addOrder(7);
    const QTemporaryDir folder;
    EXPECT_EQ(plan(store, folder.path()).exitStatus, 0);
    EXPECT_EQ(contentsOf(folder.filePath(u"plan.json"_s)),
              R"({"errors":[],"glass":[],"groups":[]})");
}

TEST(ShopProgramTest, Check_FindsAnOutdatedPlan)
{
    TemporaryStore store;
    fill(store);
    const QTemporaryDir folder;
    ASSERT_EQ(plan(store, folder.path()).exitStatus, 0);
    const QString json = folder.filePath(u"plan.json"_s);
    // The plan itself is still correct, but it lacks the pieces of the new line.
    store.addLine(7, 3);
    EXPECT_EQ(zomrelShop({u"check"_s, json}).exitStatus, 0);
    const Outcome outcome = zomrelShop({u"check"_s, json, u"--store"_s, store.path()});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err, QStringList{u"zomrel-shop: the plan has errors: "_s + json});
    EXPECT_TRUE(outcome.out.contains("pieces: 4 missing"));
}

TEST(ShopProgramTest, WrongUsage_PrintsTheUsage)
{
    for (const QStringList& arguments :
         {QStringList(),
          {u"cut"_s},
          {u"plan"_s, u"7"_s},
          {u"pieces"_s},
          {u"pieces"_s, u"7"_s, u"--bars"_s},
          {u"settings"_s},
          {u"pieces"_s, u"7"_s, u"-x"_s},
          {u"pieces"_s, u"7"_s, u"--store"_s},
          {u"plan"_s, u"7"_s, u"--out"_s, u"x"_s, u"--seconds"_s, u"-1"_s},
          {u"check"_s}}) {
        const Outcome outcome = zomrelShop(arguments);
        EXPECT_EQ(outcome.exitStatus, 2) << qPrintable(arguments.join(u' '));
        EXPECT_TRUE(outcome.err.contains(u"usage:"_s));
    }
    EXPECT_EQ(zomrelShop({u"--help"_s}).exitStatus, 0);
}

TEST(ShopProgramTest, TwoRunsAtOnce_LeaveTheDocumentsOfOne)
{
    TemporaryStore store;
    fill(store);
    store.addOrder(8);
    store.addLine(8, 1);
    const QTemporaryDir folder;
    std::vector<std::unique_ptr<QProcess>> runs;
    for (const QString& order : {u"7"_s, u"8"_s, u"7"_s, u"8"_s}) {
        runs.push_back(std::make_unique<QProcess>());
        runs.back()->start(
            QStringLiteral(ZOMREL_SHOP_PROGRAM),
            {u"plan"_s, order, u"--store"_s, store.path(), u"--out"_s, folder.path()});
    }
    for (const auto& run : runs) {
        ASSERT_TRUE(run->waitForFinished(120000));
        EXPECT_EQ(run->exitCode(), 0) << run->readAllStandardError().toStdString();
    }
    EXPECT_EQ(filesIn(folder.path()).filter(dataFile).size(), 6);
    const QJsonObject plan =
        QJsonDocument::fromJson(contentsOf(folder.filePath(u"plan.json"_s))).object();
    const int order = plan["glass"_L1][0]["order"_L1].toInt();
    const QByteArray glass = contentsOf(folder.filePath(u"glass.csv"_s));
    EXPECT_TRUE(glass.contains(QByteArray::number(order) + "-1"));
    EXPECT_FALSE(glass.contains(QByteArray::number(order == 7 ? 8 : 7) + "-1"));
}

TEST(ShopProgramTest, NegativeOrder_IsReadLikeAnyOther)
{
    TemporaryStore store;
    store.addOrder(-5);
    store.addLine(-5, 1);
    const QTemporaryDir folder;
    const Outcome pieces = zomrelShop({u"pieces"_s, u"-5"_s, u"--store"_s, store.path()});
    EXPECT_EQ(pieces.exitStatus, 0);
    EXPECT_EQ(shop::readCsv(pieces.out).value()[1][0], u"-5"_s);
    EXPECT_EQ(zomrelShop({u"plan"_s, u"--out"_s, folder.path(), u"-5"_s, u"--store"_s, store.path(),
                          u"--documents"_s, u"json"_s})
                  .exitStatus,
              0);
    EXPECT_EQ(zomrelShop({u"check"_s, folder.filePath(u"plan.json"_s), u"--store"_s, store.path()})
                  .exitStatus,
              0);
}

TEST(ShopProgramTest, NoTimeForPlanning_GivesTheQuickestPlan)
{
    TemporaryStore store;
    fill(store);
    const QTemporaryDir folder;
    const Outcome outcome =
        plan(store, folder.path(), {u"--documents"_s, u"json"_s, u"--seconds"_s, u"0"_s});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(zomrelShop({u"check"_s, folder.filePath(u"plan.json"_s), u"--store"_s, store.path()})
                  .exitStatus,
              0);
}

TEST(ShopProgramTest, DataWithoutPaper_NeedNoCatalogue)
{
    TemporaryStore store;
    fill(store);
    store.execute(u"DROP TABLE Serials"_s);
    const QTemporaryDir folder;
    EXPECT_EQ(zomrelShop({u"pieces"_s, u"7"_s, u"--store"_s, store.path()}).exitStatus, 0);
    EXPECT_EQ(plan(store, folder.path(), {u"--documents"_s, u"json"_s}).exitStatus, 0);
    EXPECT_EQ(plan(store, folder.path(), {u"--documents"_s, u"paper"_s}).exitStatus, 1);
}

TEST(ShopProgramTest, FolderThatCannotBeWritten_IsNamedAndNotCreated)
{
    TemporaryStore store;
    fill(store);
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"file"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString inner = file.fileName() + u"/inner"_s;
    const Outcome outcome = plan(store, inner);
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err,
              QStringList{u"zomrel-shop: Could not write '%1': '%2' is not a folder"_s.arg(
                  inner, file.fileName())});
}
