#pragma once

#include "tools/store/program_run.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

namespace storetooltest {

inline QString oldFile(const QString& name)
{
    return QStringLiteral(ZOMREL_TEST_DATA) + u"/old_store/"_s + name;
}

/// A folder with an old-format file of the given bytes, and the path of the store to create from
/// it.
class OldFileFolder
{
public:
    QString old() const { return folder_.filePath(u"old.mdb"_s); }
    QString target() const { return folder_.filePath(u"new.mdb"_s); }
    QString path() const { return folder_.path(); }

    void write(const QByteArray& bytes) const
    {
        QFile file(old());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    Outcome takeOver(const QStringList& options = {}) const
    {
        return zomrelStore(QStringList{u"import"_s, old(), target()} + options);
    }

    QStringList files() const
    {
        return QDir(path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                      QDir::Name);
    }

private:
    QTemporaryDir folder_;
};

/// Returns what prevents a backup of a store that was created from an old file. A field that is
/// empty in the old file does not, although the program would have filled it. Another process reads
/// the store, because a process refuses a store that was replaced since it has opened the path.
inline QStringList damageIn(const QString& path)
{
    const QTemporaryDir folder;
    const Outcome outcome = zomrelStore({u"backup"_s, path, folder.filePath(u"copy.mdb"_s)});
    return outcome.exitStatus == 0 ? QStringList() : outcome.out + outcome.err;
}

/// Returns the offset of a row on a page of a Jet 4 file, whose pages have 4096 bytes.
inline qsizetype rowPlace(const QByteArray& file, qsizetype page, qsizetype row)
{
    constexpr qsizetype pageSize = 4096;
    constexpr qsizetype firstEntry = 14;
    const char* entry = file.constData() + page * pageSize + firstEntry + row * 2;
    return page * pageSize + (qFromLittleEndian<quint16>(entry) & 0x1fff);
}

} // namespace storetooltest
