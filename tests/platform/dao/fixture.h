#pragma once

#include "platform/dao/database.h"
#include "platform/dao/engine/connection.h"
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

/// Leaves a test that is about the one file that an embedded store is.
#define EMBEDDED_ONLY(reason)                                                                      \
    if (testsupport::isOnServer())                                                                 \
    GTEST_SKIP() << (reason)

using testsupport::errorOf;
using testsupport::isOnServer;
using testsupport::PlainSql;

/// A store in a folder of its own, made with plain SQL, so that the engine is tested over stores
/// that it has not made itself. On a server it is a database of its own, with a link in the folder.
/// No connection may be left behind by a test.
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
