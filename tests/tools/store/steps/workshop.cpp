#include "tools/store/steps/workshop.h"

#include "store/schema.h"
#include "tools/store/builder.h"
#include "tools/store/program_run.h"

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

QString sqlValue(const dao::FieldInfo& field, int lineNumber)
{
    if (field.name == u"NUM")
        return QString::number(lineNumber);
    switch (field.type) {
    case dao::dbText:
        return u"'text'"_s;
    case dao::dbDate:
        return u"'2026-01-02'"_s;
    default:
        return u"1"_s;
    }
}

} // namespace

QString insertionOf(int lineNumber)
{
    QStringList names;
    QStringList values;
    for (const dao::FieldInfo& field : store::tableSchema(u"Cuts"_s)->fields) {
        if (field.counter)
            continue;
        names.append(field.name);
        values.append(sqlValue(field, lineNumber));
    }
    return u"INSERT INTO Cuts (%1) VALUES (%2)"_s.arg(names.join(u", "_s), values.join(u", "_s));
}

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
        station_->rows(insertionOf(acknowledged_ + 1));
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
    // Another process checks the store, because a restore notices a process that has it open.
    const Outcome outcome = zomrelStore({u"check"_s, path});
    EXPECT_EQ(outcome.out, QStringList{u"sound and complete: "_s + path});
}

} // namespace storetooltest
