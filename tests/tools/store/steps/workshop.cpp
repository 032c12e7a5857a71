#include "tools/store/steps/workshop.h"

#include "tools/store/builder.h"
#include "tools/store/checker.h"

#include <stdexcept>

namespace storetooltest {

namespace {

/// Returns the contents of a new store with one order, which is created once.
QByteArray newStore()
{
    static const QByteArray contents = [] {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"store.mdb"_s);
        storetools::createStore(path);
        testsupport::PlainSql(path).rows(
            u"INSERT INTO Orders (Number, Order_Date) VALUES (1, '2026-01-02')"_s);
        return contentsOf(path);
    }();
    return contents;
}

} // namespace

Workshop::Workshop(int lines)
{
    EXPECT_TRUE(QDir(folder_.path()).mkdir(u"tmp"_s) && QDir(folder_.path()).mkdir(u"target"_s));
    QFile file(store());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(newStore()) == newStore().size());
    file.close();
    station_ = std::make_unique<testsupport::PlainSql>(store());
    for (int line = 0; line < lines; ++line)
        EXPECT_TRUE(addLine());
}

QStringList Workshop::filesIn(const QString& subfolder) const
{
    return QDir(folder_.filePath(subfolder))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

bool Workshop::addLine()
{
    try {
        station_->rows(
            u"INSERT INTO Cuts (Order_Num, NUM) VALUES (1, %1)"_s.arg(acknowledged_ + 1));
    } catch (const std::runtime_error&) {
        return false;
    }
    ++acknowledged_;
    return true;
}

void Workshop::setPatience(int milliseconds)
{
    station_->rows(u"PRAGMA busy_timeout = %1"_s.arg(milliseconds));
}

QSet<int> Workshop::linesIn(const QString& path)
{
    QSet<int> numbers;
    for (const QList<QVariant>& row : testsupport::PlainSql(path).rows(u"SELECT NUM FROM Cuts"_s))
        numbers.insert(row.first().toInt());
    return numbers;
}

void Workshop::expectNoLineLost(const QStringList& stores) const
{
    QSet<int> found;
    for (const QString& each : stores)
        found += linesIn(each);
    for (int line = 1; line <= acknowledged_; ++line)
        EXPECT_TRUE(found.contains(line)) << "line " << line << " is lost";
}

void expectSound(const QString& path)
{
    EXPECT_EQ(storetools::checkStore(path), QStringList()) << qUtf8Printable(path);
}

} // namespace storetooltest
