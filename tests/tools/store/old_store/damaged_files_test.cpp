#include "tools/store/in_hebrew.h"
#include "tools/store/old_store/jet3_sample.h"
#include "tools/store/old_store/old_files.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using storetooltest::contentsOf;
using storetooltest::oldFile;
using storetooltest::OldFileFolder;
using storetooltest::Outcome;

namespace {

/// Expects that a damaged file either is refused with a one-line message or a list of invalid
/// values, or results in a complete and sound store. The latter happens if the damage is in unused
/// bytes or looks like a valid value.
void expectNoHarm(const OldFileFolder& folder, const std::string& damage)
{
    SCOPED_TRACE(damage);
    const QByteArray before = contentsOf(folder.old());
    const Outcome outcome = folder.takeOver();
    EXPECT_EQ(contentsOf(folder.old()), before);
    if (outcome.exitStatus == 0) {
        EXPECT_EQ(outcome.err, QStringList());
        EXPECT_EQ(storetooltest::damageIn(folder.target()), QStringList());
        EXPECT_EQ(folder.files(), (QStringList{u"new.mdb"_s, u"old.mdb"_s}));
        EXPECT_TRUE(QFile::remove(folder.target()));
        return;
    }
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.out, QStringList());
    EXPECT_EQ(outcome.err.filter(u"zomrel-store: "_s).size(), 1);
    EXPECT_EQ(folder.files(), QStringList{u"old.mdb"_s});
}

QByteArray wholeFile(const QString& name)
{
    if (!name.isEmpty())
        return contentsOf(oldFile(name));
    std::vector<storetooltest::Jet3Table> tables = storetooltest::emptyTables();
    storetooltest::addOrders(tables);
    storetooltest::addLines(tables);
    return storetooltest::jet3File(tables);
}

/// The parameter is a file name. An empty name stands for a Jet 3 file that the test creates.
class DamagedFilesTest : public testing::TestWithParam<const char*>
{
protected:
    QByteArray whole_ = wholeFile(QString::fromLatin1(GetParam()));
    qsizetype pageSize_ = *GetParam() == '\0' ? 2048 : 4096;
    OldFileFolder folder_;
};

} // namespace

TEST_P(DamagedFilesTest, TruncatedFileIsRefusedOrHarmless)
{
    for (int part = 0; part < 16; ++part) {
        for (const int more : {0, 777}) {
            folder_.write(whole_.left(whole_.size() * part / 16 + more));
            expectNoHarm(folder_, "cut off at " + std::to_string(part));
        }
    }
}

TEST_P(DamagedFilesTest, FileWithoutItsEndIsRefused)
{
    // In both files there are lines after this position.
    folder_.write(whole_.left(whole_.size() * 7 / 8));
    const Outcome outcome = folder_.takeOver();
    EXPECT_EQ(outcome.exitStatus, 1);
    ASSERT_EQ(outcome.err.size(), 1);
    EXPECT_TRUE(
        outcome.err.first().startsWith(u"zomrel-store: '%1' is damaged: "_s.arg(folder_.old())))
        << outcome.err.first().toStdString();
}

TEST_P(DamagedFilesTest, UserWithHebrewIsToldTheReasonInHebrew)
{
    folder_.write(whole_.left(whole_.size() * 7 / 8));
    const Outcome outcome = storetooltest::zomrelStoreIn(
        u"he_IL.UTF-8"_s, {u"import"_s, folder_.old(), folder_.target()});
    EXPECT_EQ(outcome.exitStatus, 1);
    ASSERT_EQ(outcome.err.size(), 1);
    const QString beginning = u"zomrel-store: הקובץ '%1' פגום: "_s.arg(folder_.old());
    EXPECT_TRUE(outcome.err.first().startsWith(beginning)) << outcome.err.first().toStdString();
    EXPECT_TRUE(storetooltest::hasHebrew(outcome.err.first().mid(beginning.size())))
        << outcome.err.first().toStdString();
    EXPECT_EQ(outcome.advice, QStringList{u"zomrel-store: מה עושים: העתק את הקובץ שוב מהמקום שלו, "
                                          "או ייבא עותק ישן יותר שלו."_s});
}

TEST_P(DamagedFilesTest, OverwrittenBytesAreRefusedOrHarmless)
{
    QRandomGenerator random(20261121);
    for (int round = 0; round < 24; ++round) {
        QByteArray damaged = whole_;
        // Headers of pages and table descriptions are in the first bytes of a page.
        const bool inHeads = round % 2 == 0;
        const int count = round % 4 < 2 ? 1 : 50;
        for (int i = 0; i < count; ++i) {
            qsizetype place = random.bounded(damaged.size());
            if (inHeads)
                place = place / pageSize_ * pageSize_ + random.bounded(80);
            damaged[place] = static_cast<char>(random.bounded(256));
        }
        folder_.write(damaged);
        expectNoHarm(folder_, "round " + std::to_string(round));
    }
}

TEST_P(DamagedFilesTest, PagesOfZerosOrOnesAreRefusedOrHarmless)
{
    for (qsizetype page = 1; page < whole_.size() / pageSize_; page += 13) {
        QByteArray damaged = whole_;
        damaged.replace(page * pageSize_, pageSize_,
                        QByteArray(pageSize_, page % 2 == 0 ? '\0' : '\xff'));
        folder_.write(damaged);
        expectNoHarm(folder_, "page " + std::to_string(page));
    }
}

INSTANTIATE_TEST_SUITE_P(Files, DamagedFilesTest,
                         testing::Values("old-store.mdb", "older-store.mdb", ""));
