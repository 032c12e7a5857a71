#pragma once

#include "support/plain_sql.h"
#include "support/throwaway_server.h"

#include <QList>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

#include <memory>

namespace testsupport {

/// A store in a temporary folder of its own, and a plain SQL connection to look at it and to lay
/// rows in it past the engine. Where the tests run over a server, the store is a database there and
/// the folder holds the link to it. Sets Module1::StorePath and LogoPath for as long as it lives.
class TemporaryStore
{
public:
    enum class Contents {
        Delivered, ///< As `zomrel-store create` makes it, catalogue and all.
        Empty,     ///< All eleven tables with their indexes, no row.
    };

    explicit TemporaryStore(Contents contents = Contents::Empty);
    ~TemporaryStore();
    TemporaryStore(const TemporaryStore&) = delete;
    TemporaryStore& operator=(const TemporaryStore&) = delete;

    QString path() const;
    QString folder() const;

    /// Runs one SQL statement with bound values, past the engine. Throws a std::runtime_error with
    /// the engine's text where it fails.
    void execute(const QString& sql, const QList<QVariant>& values = {});
    QList<QList<QVariant>> rows(const QString& sql, const QList<QVariant>& values = {});
    /// The first column of the first row; invalid where there is none.
    QVariant scalar(const QString& sql, const QList<QVariant>& values = {});

    /// All that the store holds, to be compared: the file's bytes, or what a server tells of its
    /// tables, their columns and their rows.
    QByteArray contents();

    /// Looks at it over a new connection, after its server has been started anew.
    void reconnect() { sql_->reconnect(); }

    /// Waits until no program works on the store any more, but for this one's plain SQL: a server
    /// goes on with the statement that a station was killed in.
    void waitUntilLeft();

    /// Adds a series and returns its AutoNum. The deductions stand in the table's order: frame
    /// width and height, sash, glass, mesh.
    int addSeries(const QString& name, const QList<double>& deductions, int kanafNum, int nativNum,
                  const QVariant& sign = {});
    void addOrder(int number, bool closed = false,
                  const QString& isoDate = QStringLiteral("2026-01-02"));
    /// Adds an ordinary line with the number to the order: an opening of 120 by 100 with two
    /// sashes, dated 2026-01-02, all its fields filled.
    void addLine(int orderNumber, int lineNumber, const QString& name = QStringLiteral("סדרה"));

    /// Writes a store of its own to the path, or the link to it.
    static std::unique_ptr<ThrowawayDatabase> write(Contents contents, const QString& path);

private:
    QTemporaryDir folder_;
    std::unique_ptr<ThrowawayDatabase> database_; ///< Null for an embedded store.
    std::unique_ptr<PlainSql> sql_;
    QString formerStorePath_;
    QString formerLogoPath_;
};

} // namespace testsupport
