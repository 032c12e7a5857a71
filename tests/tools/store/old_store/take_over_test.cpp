#include "platform/dao/database.h"
#include "store/schema.h"
#include "support/ordinary_user.h"
#include "tools/store/checker.h"
#include "tools/store/old_store/stored_rows.h"

using namespace Qt::StringLiterals;
using storetooltest::contentsOf;
using storetooltest::listedRows;
using storetooltest::oldFile;
using storetooltest::OldFileFolder;
using storetooltest::Outcome;
using storetooltest::rowPlace;
using storetooltest::rowsOf;
using storetooltest::zomrelStore;

namespace {

QStringList counts(const QStringList& out)
{
    QStringList found;
    for (const QString& line : out.mid(out.indexOf(u"table             rows"_s) + 1))
        found.append(line.simplified());
    return found;
}

QVariant valueIn(const QString& path, const QString& table, int row, const QString& field)
{
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    const auto recordset = database->OpenRecordset(table, dao::dbOpenTable);
    recordset->Move(row);
    return recordset->Fields(field).Value();
}

const QByteArray longName = QByteArray("\xd0\x05").repeated(50);

} // namespace

TEST(TakeOverTest, ImportsEveryRowOfAnOldStore)
{
    const OldFileFolder folder;
    folder.write(contentsOf(oldFile(u"old-store.mdb"_s)));
    const Outcome outcome = folder.takeOver();
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(outcome.err, QStringList());
    EXPECT_EQ(
        counts(outcome.out),
        (QStringList{u"Orders 40"_s, u"Cuts 200"_s, u"Serials 6"_s, u"MashkofKind 4"_s,
                     u"MashkofColor 3"_s, u"KanafKind 2"_s, u"KanafColor 2"_s, u"GlassKind 3"_s,
                     u"GlassColor 2"_s, u"ReshetKind 2"_s, u"ReshetColor 3"_s,
                     u"imported %1 into %2"_s.arg(folder.old(), folder.target())}));
    for (const store::TableSchema& table : store::schema())
        EXPECT_EQ(rowsOf(folder.target(), table.name),
                  listedRows(u"old-store.rows.tsv"_s, table.name));
    EXPECT_EQ(storetools::checkStore(folder.target()), QStringList());
    EXPECT_EQ(folder.files(), (QStringList{u"new.mdb"_s, u"old.mdb"_s}));
}

TEST(TakeOverTest, ImportsEveryRowOfAnOlderStore)
{
    const OldFileFolder folder;
    folder.write(contentsOf(oldFile(u"older-store.mdb"_s)));
    const Outcome outcome = folder.takeOver();
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(outcome.out.first(3),
              (QStringList{u"Orders.Open_Close: the field is missing; False in every row"_s,
                           u"Orders.CustomerTel: the field is missing; Null in every row"_s,
                           u"Phones: not a table of the store, not imported"_s}));
    for (const store::TableSchema& table : store::schema()) {
        const QStringList fields =
            table.name == u"Orders"_s
                ? QStringList{u"Number"_s, u"Order_Date"_s, u"CustomerName"_s, u"CustomerAddress"_s}
                : QStringList();
        EXPECT_EQ(rowsOf(folder.target(), table.name, fields),
                  listedRows(u"older-store.rows.tsv"_s, table.name));
    }
    for (int row = 0; row < 9; ++row) {
        EXPECT_EQ(valueIn(folder.target(), u"Orders"_s, row, u"Open_Close"_s), 0);
        EXPECT_FALSE(valueIn(folder.target(), u"Orders"_s, row, u"CustomerTel"_s).isValid());
    }
    EXPECT_EQ(storetools::checkStore(folder.target()), QStringList());
}

TEST(TakeOverTest, OldFileIsUnchanged)
{
    const OldFileFolder folder;
    const QByteArray before = contentsOf(oldFile(u"older-store.mdb"_s));
    folder.write(before);
    ASSERT_TRUE(QFile::setPermissions(folder.old(), QFile::ReadOwner));
    EXPECT_EQ(folder.takeOver().exitStatus, 0);
    EXPECT_EQ(contentsOf(folder.old()), before);
}

TEST(TakeOverTest, ContinuesTheCounters)
{
    const OldFileFolder folder;
    folder.write(contentsOf(oldFile(u"old-store.mdb"_s)));
    ASSERT_EQ(folder.takeOver().exitStatus, 0);
    const auto database = dao::DBEngine::instance().OpenDatabase(folder.target());
    // The fourth of five rows was deleted, so the table has four rows.
    const auto kinds = database->OpenRecordset(u"MashkofKind"_s, dao::dbOpenTable);
    EXPECT_EQ(kinds->RecordCount(), 4);
    for (const int expected : {6, 7}) {
        kinds->AddNew();
        kinds->Fields(u"Name"_s).SetValue(u"חדש"_s);
        kinds->Update();
        kinds->MoveLast();
        EXPECT_EQ(kinds->Fields(u"Code"_s).Value(), expected);
    }
}

TEST(TakeOverTest, ImportsRowsInKeyOrder)
{
    const OldFileFolder folder;
    QByteArray file = contentsOf(oldFile(u"old-store.mdb"_s));
    constexpr qsizetype colours = 32; // The page of MashkofColor's rows.
    constexpr qsizetype code = 2;     // The code follows the number of columns.
    const qsizetype first = rowPlace(file, colours, 0) + code;
    const qsizetype third = rowPlace(file, colours, 2) + code;
    ASSERT_EQ(file[first], '\1');
    ASSERT_EQ(file[third], '\3');
    std::swap(file[first], file[third]);
    folder.write(file);
    ASSERT_EQ(folder.takeOver().exitStatus, 0);
    EXPECT_EQ(rowsOf(folder.target(), u"MashkofColor"_s),
              (QStringList{u"MashkofColor\t1\tירוק כהה"_s, u"MashkofColor\t2\tחום 8017"_s,
                           u"MashkofColor\t3\tלבן"_s}));
}

TEST(TakeOverTest, ReadsARowThatHasMoved)
{
    constexpr qsizetype colours = 32; // the page of MashkofColor's rows
    constexpr qsizetype page = colours * 4096;
    constexpr qsizetype rowCount = page + 12;
    const auto entry = [](qsizetype row) { return rowCount + 2 + 2 * row; };
    QByteArray file = contentsOf(oldFile(u"old-store.mdb"_s));
    ASSERT_EQ(file[rowCount], '\3');
    // The second row is moved in front of the third one and marked as deleted; its old entry refers
    // to the new place.
    const qsizetype second = rowPlace(file, colours, 1);
    const qsizetype length = rowPlace(file, colours, 0) - second;
    const qsizetype moved = rowPlace(file, colours, 2) - length;
    file.replace(moved, length, file.mid(second, length));
    file.replace(second, 4, QByteArray("\3\x20\0\0", 4)); // A reference to row 3 of page 32.
    file[entry(1) + 1] = static_cast<char>(file[entry(1) + 1] | '\x40');
    file[entry(3)] = static_cast<char>((moved - page) % 256);
    file[entry(3) + 1] = static_cast<char>(((moved - page) / 256) | 0x80);
    file[rowCount] = '\4';
    const OldFileFolder folder;
    folder.write(file);
    const Outcome outcome = folder.takeOver();
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(rowsOf(folder.target(), u"MashkofColor"_s),
              listedRows(u"old-store.rows.tsv"_s, u"MashkofColor"_s));
}

TEST(TakeOverTest, RefusesAnExistingTarget)
{
    const OldFileFolder folder;
    folder.write(contentsOf(oldFile(u"old-store.mdb"_s)));
    const Outcome onItself = zomrelStore({u"import"_s, folder.old(), folder.old()});
    EXPECT_EQ(onItself.exitStatus, 1);
    EXPECT_EQ(onItself.err,
              QStringList{u"zomrel-store: Database '%1' already exists."_s.arg(folder.old())});
    EXPECT_EQ(contentsOf(folder.old()), contentsOf(oldFile(u"old-store.mdb"_s)));
    EXPECT_EQ(folder.files(), QStringList{u"old.mdb"_s});
}

TEST(TakeOverTest, FailsWithoutAnOldFile)
{
    const OldFileFolder folder;
    const auto expectRefused = [&](const QString& message) {
        const Outcome outcome = folder.takeOver();
        EXPECT_EQ(outcome.exitStatus, 1);
        EXPECT_EQ(outcome.out, QStringList());
        EXPECT_EQ(outcome.err, QStringList{u"zomrel-store: "_s + message.arg(folder.old())});
        EXPECT_FALSE(QFile::exists(folder.target()));
    };
    expectRefused(u"Could not find file '%1'."_s);
    folder.write("");
    expectRefused(u"'%1' is no Jet 3 or Jet 4 file."_s);
    folder.write("no database at all, but a text that is long enough");
    expectRefused(u"'%1' is no Jet 3 or Jet 4 file."_s);
    QByteArray newer = contentsOf(oldFile(u"old-store.mdb"_s));
    newer[20] = '\2';
    folder.write(newer);
    expectRefused(u"'%1' has a newer format than Jet 4."_s);
    QByteArray accdb("\0\1\0\0Standard ACE DB\0\2", 21);
    folder.write(accdb + QByteArray(4096, '\0'));
    expectRefused(u"'%1' has a newer format than Jet 4."_s);
    ASSERT_TRUE(QFile::remove(folder.old()));
    ASSERT_TRUE(QDir().mkdir(folder.old()));
    expectRefused(u"Could not find file '%1'."_s);
}

TEST(TakeOverTest, FailsInAMissingFolder)
{
    const OldFileFolder folder;
    const QString lost = folder.path() + u"/no such folder/new.mdb"_s;
    const Outcome outcome = zomrelStore({u"import"_s, oldFile(u"old-store.mdb"_s), lost});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err.size(), 1);
    EXPECT_EQ(folder.files(), QStringList());
}

TEST(TakeOverTest, FailsInAReadOnlyFolder)
{
    const OldFileFolder folder;
    const testsupport::OrdinaryUser user;
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    const Outcome outcome =
        zomrelStore({u"import"_s, oldFile(u"old-store.mdb"_s), folder.target()});
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(folder.files(), QStringList());
}

TEST(TakeOverTest, LongTextsStopTheImportUnlessTruncated)
{
    const OldFileFolder folder;
    QByteArray file = contentsOf(oldFile(u"older-store.mdb"_s));
    // Marked as compressed, the hundred bytes of the customer of order 6 become 98 characters.
    const qsizetype place = file.indexOf(longName);
    ASSERT_GT(place, 0);
    file.replace(place, 2, "\xff\xfe");
    folder.write(file);
    const Outcome refused = folder.takeOver();
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_EQ(refused.out, QStringList());
    EXPECT_EQ(refused.err.mid(3),
              (QStringList{u"Orders, Number 6: CustomerName has 98 characters and takes 50"_s,
                           u"zomrel-store: nothing was imported"_s}));
    EXPECT_EQ(folder.files(), QStringList{u"old.mdb"_s});

    const Outcome cut = folder.takeOver({u"--cut-texts"_s});
    EXPECT_EQ(cut.exitStatus, 0) << cut.err.join(u'\n').toStdString();
    EXPECT_TRUE(
        cut.out.contains(u"Orders, Number 6: CustomerName has 98 characters and is cut to 50"_s));
    EXPECT_EQ(valueIn(folder.target(), u"Orders"_s, 5, u"CustomerName"_s),
              u"\u00d0\u0005"_s.repeated(25));
}

TEST(TakeOverTest, InvalidValuesStopTheImportAndAreAllReported)
{
    const OldFileFolder folder;
    QByteArray file = contentsOf(oldFile(u"older-store.mdb"_s));
    file.replace(file.indexOf(longName), 2, QByteArray("\x00\xd8", 2));
    const QByteArray thickness("6\0.\0005\0", 6);
    const qsizetype place = file.indexOf(thickness);
    ASSERT_GT(place, 0);
    // Rows fill a page from its end, so the first match is in the last of the sixteen lines.
    file[place + 4] = 'x';
    folder.write(file);
    const Outcome outcome = folder.takeOver();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_TRUE(outcome.err.contains(
        u"Orders, Number 6: CustomerName cannot be read: it contains half of a character"_s));
    EXPECT_TRUE(outcome.err.contains(
        u"Cuts, Code 16: U_Thick cannot take '6.x': Data type conversion error."_s))
        << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(folder.files(), QStringList{u"old.mdb"_s});
}

TEST(TakeOverTest, LinesWithoutAnOrderAreImportedAndReported)
{
    const OldFileFolder folder;
    QByteArray file = contentsOf(oldFile(u"older-store.mdb"_s));
    constexpr qsizetype orders = 73; // The page of the rows of Orders.
    constexpr qsizetype number = 2;  // The number follows the number of columns.
    const qsizetype ninth = rowPlace(file, orders, 8) + number;
    ASSERT_EQ(file[ninth], '\x09');
    file[ninth] = '\x63';
    folder.write(file);
    const Outcome outcome = folder.takeOver();
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_FALSE(outcome.out.filter(u"belong to order 9, which does not exist"_s).isEmpty());
    EXPECT_EQ(rowsOf(folder.target(), u"Cuts"_s), listedRows(u"older-store.rows.tsv"_s, u"Cuts"_s));
}

TEST(TakeOverTest, AcceptsOnlyKnownCodePages)
{
    const OldFileFolder folder;
    folder.write(contentsOf(oldFile(u"older-store.mdb"_s)));
    for (const QStringList& wrong :
         {QStringList{u"--code-page"_s}, {u"--code-page"_s, u"932"_s}, {u"--cut-text"_s}}) {
        const Outcome outcome = folder.takeOver(wrong);
        EXPECT_EQ(outcome.exitStatus, 2) << wrong.join(u' ').toStdString();
        EXPECT_TRUE(outcome.err.contains(u"usage:"_s));
        EXPECT_FALSE(QFile::exists(folder.target()));
    }
    // Jet 4 texts are in Unicode, whatever the code page.
    EXPECT_EQ(folder.takeOver({u"--code-page"_s, u"1252"_s}).exitStatus, 0);
    EXPECT_EQ(rowsOf(folder.target(), u"MashkofColor"_s),
              listedRows(u"older-store.rows.tsv"_s, u"MashkofColor"_s));
}
