#pragma once

#include "tools/store/told_error.h"
#include "tools/store/words.h"

#include <QByteArray>
#include <QString>
#include <QtEndian>

#include <memory>
#include <span>

// The header glib.h must be included before mdbtools.h, because mdbtools.h would otherwise include
// glib.h inside extern "C".
#include <glib.h>

#include <mdbtools.h>

namespace storetools {

/// Throws CorruptDatabase (3049) if the condition is false. The error's description is the text
/// `otherwise`.
template <typename... Each>
void require(bool condition, const Text& otherwise, const Each&... arguments)
{
    if (!condition)
        throw ToldError(runtime::CorruptDatabase, say(otherwise, arguments...));
}

struct TableFreer
{
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using TableHandle = std::unique_ptr<MdbTableDef, TableFreer>;

template <typename Item>
std::span<Item*> itemsOf(GPtrArray* array)
{
    return {reinterpret_cast<Item**>(array->pdata), array->len};
}

inline QString objectName(const char* name)
{
    return QString::fromUtf8(name);
}

inline quint32 wordAt(const QByteArray& bytes, qsizetype place)
{
    return qFromLittleEndian<quint32>(bytes.constData() + place);
}

/// Access to the pages of one file.
class Pages
{
public:
    explicit Pages(MdbHandle& file) : file_(file) {}

    MdbHandle& file() const { return file_; }
    qsizetype size() const { return file_.fmt->pg_size; }

    void read(quint32 page) const
    {
        require(mdb_read_pg(&file_, page) == size(),
                {u"page %1 cannot be read", u"אי אפשר לקרוא את הדף %1"}, page);
    }
    bool holdsRowsOf(const MdbCatalogEntry& table) const
    {
        return file_.pg_buf[0] == MDB_PAGE_DATA &&
               qFromLittleEndian<quint32>(&file_.pg_buf[4]) == table.table_pg;
    }
    int rows() const
    {
        const int rows = qFromLittleEndian<quint16>(&file_.pg_buf[file_.fmt->row_count_offset]);
        require(file_.fmt->row_count_offset + 2 + 2 * rows <= size(),
                {u"a page has too many rows", u"בדף יש יותר מדי רשומות"});
        return rows;
    }
    QByteArray bytes(qsizetype start, qsizetype length) const
    {
        require(start >= 0 && length >= 0 && start + length <= size(),
                {u"a row reaches beyond its page", u"רשומה חורגת מהדף שלה"});
        return {reinterpret_cast<const char*>(&file_.pg_buf[start]), length};
    }

private:
    MdbHandle& file_;
};

} // namespace storetools
