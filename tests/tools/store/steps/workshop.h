#pragma once

#include "support/plain_sql.h"
#include "tools/store/steps/stepped_program.h"

#include <QDir>
#include <QSet>
#include <QTemporaryDir>

#include <memory>

namespace storetooltest {

/// Returns the statement that adds a line to order 1, with a value in every field.
QString insertionOf(int lineNumber);

/// A folder with a store, a folder "target" for the files that a command creates, a folder for
/// temporary files, and a station that adds lines to the store.
class Workshop
{
public:
    /// Creates a store with one order and `lines` lines.
    explicit Workshop(int lines = 3);

    QString store() const { return folder_.filePath(u"Aluminium.mdb"_s); }
    QString target(const QString& name) const { return folder_.filePath(u"target/"_s + name); }
    QString folder() const { return folder_.path(); }
    QString temporaryFolder() const { return folder_.filePath(u"tmp"_s); }
    QStringList filesIn(const QString& subfolder) const;

    /// Lets the station add a line. Returns false if the store refuses it; then no line is added.
    bool addLine();
    int acknowledged() const { return acknowledged_; }
    /// Sets how long the station waits for a locked store. The default is 5 seconds.
    void setPatience(int milliseconds);

    /// Returns the numbers of the lines in a store.
    static QSet<int> linesIn(const QString& path);
    /// Expects that all stores together hold all lines that the station has added.
    void expectNoLineLost(const QStringList& stores) const;

private:
    QTemporaryDir folder_;
    std::unique_ptr<testsupport::PlainSql> station_;
    int acknowledged_ = 0;
};

/// Expects that the store is sound.
void expectSound(const QString& path);

} // namespace storetooltest
