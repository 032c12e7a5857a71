#pragma once

#include "platform/dao/database.h"
#include "platform/dao/engine/connection_pool.h"
#include "platform/runtime/run_time_error.h"

#include "support/errors.h"
#include "support/plain_sql.h"
#include "support/throwaway_server.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

namespace daotest {

using namespace Qt::StringLiterals;

/// Skips a test that applies only to an embedded store.
#define EMBEDDED_ONLY(reason)                                                                      \
    if (testsupport::isOnServer())                                                                 \
    GTEST_SKIP() << (reason)

using testsupport::errorOf;
using testsupport::isOnServer;
using testsupport::PlainSql;

/// Provides a store in a temporary folder. The store is created with plain SQL, so that the tests
/// cover stores that another program has created. On a server, the store is a new database, and the
/// folder contains a link to it. After each test no connection may be open.
class DaoTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder_.isValid());
        path_ = folder_.filePath(u"Aluminium.mdb"_s);
        if (isOnServer())
            linkToNewDatabase();
        dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::milliseconds(20));
    }
    void TearDown() override
    {
        raw_.reset();
        dao::DBEngine::instance().Idle();
        EXPECT_EQ(dao::EngineConnection::living(), 0);
        dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::seconds(5));
        server_.reset();
    }

    void linkToNewDatabase()
    {
        const QString pattern = u"bare"_s;
        testsupport::databaseOnce(pattern, [this](const dao::Link& link) {
            writeFile(dao::linkText(link));
            PlainSql(path_).exactly(u"CREATE DOMAIN zomrel_boolean AS smallint"_s);
        });
        server_ = std::make_unique<testsupport::ThrowawayDatabase>(pattern);
        server_->writeLink(path_);
    }

    void writeFile(const QByteArray& contents)
    {
        QFile file(path_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(contents), contents.size());
    }

    QList<QVariantList> sql(const QString& text, const QVariantList& values = {})
    {
        if (!raw_)
            raw_ = std::make_unique<PlainSql>(path_);
        return raw_->rows(text, values);
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
    std::unique_ptr<PlainSql> raw_;
    std::unique_ptr<testsupport::ThrowawayDatabase> server_; ///< Null for an embedded store.
};

/// Provides a table of items with a counter as its primary key and an index on Num.
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

    /// Moves to the end of the recordset and returns the values of one field.
    static QVariantList rest(dao::Recordset& recordset, const QString& field)
    {
        QVariantList values;
        for (; !recordset.isEof(); recordset.MoveNext())
            values.append(recordset.Fields(field).Value());
        return values;
    }
};

} // namespace daotest
