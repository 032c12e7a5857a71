#pragma once

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

namespace daotest {

using namespace Qt::StringLiterals;

/// The number of the run-time error that an action raises; 0 where it raises none.
inline int errorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const runtime::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

/// A plain SQL connection past the engine, as another station or a hand with a shell has one.
class RawConnection
{
public:
    explicit RawConnection(const QString& path)
    {
        static int made = 0;
        name_ = u"raw-%1"_s.arg(++made);
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, name_);
        database.setDatabaseName(path);
        if (!database.open())
            ADD_FAILURE() << qPrintable(database.lastError().text());
        QSqlQuery(database).exec(u"PRAGMA synchronous = OFF"_s); // a test's rows may get lost
    }
    ~RawConnection()
    {
        QSqlDatabase::database(name_, false).close();
        QSqlDatabase::removeDatabase(name_);
    }
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    QList<QVariantList> operator()(const QString& sql, const QVariantList& values = {})
    {
        QSqlQuery query(QSqlDatabase::database(name_));
        if (!query.prepare(sql)) {
            ADD_FAILURE() << qPrintable(sql) << ": " << qPrintable(query.lastError().text());
            return {};
        }
        for (const QVariant& each : values)
            query.addBindValue(each);
        if (!query.exec())
            ADD_FAILURE() << qPrintable(sql) << ": " << qPrintable(query.lastError().text());
        QList<QVariantList> rows;
        while (query.next()) {
            QVariantList row;
            for (int i = 0; query.value(i).isValid(); ++i)
                row.append(query.value(i));
            rows.append(row);
        }
        return rows;
    }
    QVariant scalar(const QString& sql) { return operator()(sql).value(0).value(0); }
    QSqlDatabase database() const { return QSqlDatabase::database(name_); }

private:
    QString name_;
};

/// A store in a folder of its own, made with plain SQL, so that the engine is tested over files
/// that it has not made itself. No connection may be left behind by a test.
class DaoTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder_.isValid());
        path_ = folder_.filePath(u"Aluminium.mdb"_s);
        dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::milliseconds(20));
    }
    void TearDown() override
    {
        raw_.reset();
        dao::DBEngine::instance().Idle();
        EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty())
            << qPrintable(QSqlDatabase::connectionNames().join(u", "_s));
        dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::seconds(5));
    }

    QList<QVariantList> sql(const QString& text, const QVariantList& values = {})
    {
        if (!raw_)
            raw_ = std::make_unique<RawConnection>(path_);
        return (*raw_)(text, values);
    }
    QVariant scalar(const QString& text) { return sql(text).value(0).value(0); }

    std::shared_ptr<dao::Database> open() const
    {
        return dao::DBEngine::instance().OpenDatabase(path_);
    }
    std::shared_ptr<dao::Recordset> table(const QString& name) const
    {
        return open()->OpenRecordset(name, dao::dbOpenTable);
    }
    std::shared_ptr<dao::Recordset> dynaset(const QString& source) const
    {
        return open()->OpenRecordset(source, dao::dbOpenDynaset);
    }

    QTemporaryDir folder_;
    QString path_;
    std::unique_ptr<RawConnection> raw_;
};

/// A table of items: a counter as its key, a second index on Num.
class ItemsTest : public DaoTest
{
protected:
    void SetUp() override
    {
        DaoTest::SetUp();
        sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY, Num LONG, Name TEXT(10), "
            "Small INTEGER, Amount DOUBLE, Day DATETIME, Done BOOLEAN, Note TEXT)"_s);
        sql(u"CREATE INDEX ByNum ON Items (Num)"_s);
    }

    void add(int code, const QVariant& num, const QString& name = u"n"_s)
    {
        sql(u"INSERT INTO Items (Code, Num, Name, Done) VALUES (?, ?, ?, 0)"_s, {code, num, name});
    }

    /// Goes through the rest of the recordset and gives one field of each row.
    static QVariantList rest(dao::Recordset& recordset, const QString& field)
    {
        QVariantList values;
        for (; !recordset.isEof(); recordset.MoveNext())
            values.append(recordset.Fields(field).Value());
        return values;
    }
};

} // namespace daotest
