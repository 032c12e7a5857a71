#include "tools/store/old_store/old_file.h"

#include "store/schema.h"
#include "tools/store/old_store/old_pages.h"
#include "tools/store/old_store/old_texts.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

constexpr Text unreadableRow{u"a row of %1 cannot be read", u"אי אפשר לקרוא רשומה של %1"};
constexpr Text unreadableText{u"a text of %1 cannot be read", u"אי אפשר לקרוא טקסט של %1"};

constexpr int deletedRow = 0x8000;
constexpr int movedRow = 0x4000;
constexpr int placeOfRow = 0x1fff;

/// The maximum length in bytes of a memo (a long text). Real memos are far shorter.
constexpr qsizetype longestMemo = qsizetype{16} * 1024 * 1024;

struct HandleCloser
{
    void operator()(MdbHandle* handle) const { mdb_close(handle); }
};
using Handle = std::unique_ptr<MdbHandle, HandleCloser>;

/// The position of a row within a page of the file.
struct PlaceInPage
{
    int start = 0;
    std::size_t length = 0;
    int flags = 0;
};

/// A row that has been located in the file: its key and its position.
struct FoundRow
{
    qint32 key = 0;
    quint32 page = 0;
    PlaceInPage place;
};

/// Limits the total length of the values that are read to the size of the file. In a sound file
/// each byte belongs to at most one value, so the values together are not longer than the file. A
/// damaged file may refer to the same bytes again and again; the limit then ends the reading with
/// an error.
class ByteBudget
{
public:
    explicit ByteBudget(qint64 fileSize) : left_(fileSize) {}

    void spend(qsizetype bytes)
    {
        left_ -= bytes;
        require(left_ >= 0, {u"its values are longer than the file", u"הערכים בו ארוכים מהקובץ"});
    }

private:
    qint64 left_;
};

/// Reads one table. The reader first locates all rows and then reads them in the order of their
/// keys, so that the new store contains them in the order in which they were added. Their order in
/// the file may differ, because new rows reuse the space of deleted rows.
class TableReader
{
public:
    TableReader(const Pages& pages, MdbCatalogEntry& entry, ByteBudget& budget,
                OldStoreVisitor& visitor)
        : pages_(pages), entry_(entry), budget_(budget), visitor_(visitor),
          schema_(*store::tableSchema(objectName(entry.object_name))),
          table_(mdb_read_table(&entry))
    {
        require(table_ != nullptr && mdb_read_columns(table_.get()) != nullptr &&
                    table_->num_cols <= MDB_MAX_COLS,
                descriptionCannotBeRead, schema_.name);
        columns_ = itemsOf<MdbColumn>(table_->columns);
    }

    void read()
    {
        describe();
        quint32 page = 0;
        while (const quint32 next = pageBehind(page)) {
            page = next;
            findRows(page);
        }
        require(
            rows_.size() >= table_->num_rows,
            {u"%1 has %2 rows and only %3 can be found", u"בטבלה %1 יש %2 רשומות, ונמצאו רק %3"},
            schema_.name, table_->num_rows, rows_.size());
        std::ranges::stable_sort(rows_, {}, &FoundRow::key);
        for (const FoundRow& row : rows_) {
            pages_.read(row.page);
            tell(row.place);
        }
        visitor_.tableEnd();
    }

private:
    void describe()
    {
        OldTable described;
        described.name = schema_.name;
        described.recordedRows = table_->num_rows;
        const QString& key = schema_.indexes.front().fields.front();
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const OldColumn column{objectName(columns_[i]->name),
                                   static_cast<quint8>(columns_[i]->col_type)};
            taken_.push_back(schema_.ordinalOf(column.name) >= 0);
            (taken_.back() ? described.columns : described.foreignColumns).push_back(column);
            if (column.name.compare(key, Qt::CaseInsensitive) == 0)
                keyColumn_ = i;
        }
        visitor_.table(described);
    }

    /// Returns the number of the table's next page after `page`, or 0 if there is none.
    quint32 pageBehind(quint32 page) const
    {
        const gint32 next = mdb_map_find_next(&pages_.file(), table_->usage_map,
                                              static_cast<unsigned>(table_->map_sz), page);
        require(
            next == 0 || next > static_cast<gint32>(page),
            {u"the list of the pages of %1 cannot be read", u"אי אפשר לקרוא את רשימת הדפים של %1"},
            schema_.name);
        return static_cast<quint32>(next);
    }

    void findRows(quint32 page)
    {
        pages_.read(page);
        if (!pages_.holdsRowsOf(entry_))
            return;
        const int count = pages_.rows();
        for (int row = 0; row < count; ++row) {
            const std::optional<PlaceInPage> place = placeOf(row);
            require(place.has_value(),
                    {u"row %1 of page %2 is outside of its page", u"רשומה %1 בדף %2 חורגת מהדף"},
                    row, page);
            if ((place->flags & deletedRow) != 0)
                continue;
            if ((place->flags & movedRow) == 0) {
                add(page, *place);
                continue;
            }
            findMovedRow(*place);
            pages_.read(page);
        }
    }

    std::optional<PlaceInPage> placeOf(int row) const
    {
        int start = 0;
        std::size_t length = 0;
        if (mdb_find_row(&pages_.file(), row, &start, &length) != 0)
            return {};
        return PlaceInPage{
            .start = start & placeOfRow, .length = length, .flags = start & ~placeOfRow};
    }

    /// Finds the current position of a moved row by following its pointers. A row that outgrows its
    /// page moves to another page. There the row is marked as deleted, so that a scan of the page
    /// skips it. The old position contains a pointer to the new one.
    void findMovedRow(PlaceInPage place)
    {
        constexpr int longestWay = 16;
        for (int step = 0; step < longestWay && place.length >= sizeof(quint32); ++step) {
            const quint32 target = wordAt(pages_.bytes(place.start, sizeof(quint32)), 0);
            const quint32 page = target >> 8U;
            const int row = static_cast<int>(target & 0xffU);
            pages_.read(page);
            if (!pages_.holdsRowsOf(entry_) || row >= pages_.rows())
                return;
            const std::optional<PlaceInPage> next = placeOf(row);
            if (!next)
                return;
            if ((next->flags & movedRow) == 0)
                return add(page, *next);
            place = *next;
        }
    }

    void add(quint32 page, const PlaceInPage& place)
    {
        rows_.push_back({keyOf(fieldsOf(place)), page, place});
    }

    std::vector<MdbField> fieldsOf(const PlaceInPage& place) const
    {
        std::vector<MdbField> fields(columns_.size());
        require(place.length > 0 &&
                    mdb_crack_row(table_.get(), place.start, place.length, fields.data()) >= 0,
                unreadableRow, schema_.name);
        for (std::size_t i = 0; i < fields.size(); ++i)
            require(columns_[i]->col_type == MDB_BOOL || fields[i].is_null != 0 ||
                        liesIn(place, fields[i]),
                    unreadableRow, schema_.name);
        return fields;
    }

    static bool liesIn(const PlaceInPage& place, const MdbField& field)
    {
        const qsizetype end = place.start + static_cast<qsizetype>(place.length);
        return field.start >= place.start && field.siz >= 0 &&
               qsizetype{field.start} + field.siz <= end;
    }

    /// Returns the key of a row. Returns 0 if the table has no key, or if the key is Null or not an
    /// integer.
    qint32 keyOf(const std::vector<MdbField>& fields) const
    {
        if (!keyColumn_ || fields[*keyColumn_].is_null != 0)
            return 0;
        const MdbField& field = fields[*keyColumn_];
        const QByteArray bytes = pages_.bytes(field.start, field.siz);
        switch (columns_[*keyColumn_]->col_type) {
        case MDB_LONGINT:
            return bytes.size() == sizeof(qint32) ? qFromLittleEndian<qint32>(bytes.constData())
                                                  : 0;
        case MDB_INT:
            return bytes.size() == sizeof(qint16) ? qFromLittleEndian<qint16>(bytes.constData())
                                                  : 0;
        default:
            return 0;
        }
    }

    void tell(const PlaceInPage& place) const
    {
        const std::vector<MdbField> fields = fieldsOf(place);
        OldRow row;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (taken_[i])
                row.push_back(cell(*columns_[i], fields[i]));
        }
        visitor_.row(row);
    }

    OldCell cell(const MdbColumn& column, const MdbField& field) const
    {
        // A Boolean column stores its value in the bit that marks Null in other columns. The mark
        // for Null means false.
        if (column.col_type == MDB_BOOL)
            return QByteArray(1, field.is_null != 0 ? '\0' : '\1');
        if (field.is_null != 0)
            return {};
        const QByteArray bytes = pages_.bytes(field.start, field.siz);
        budget_.spend(bytes.size());
        return column.col_type == MDB_MEMO ? memo(bytes) : bytes;
    }

    /// Reads a memo (a long text). It is stored in the table's row itself, in one row of another
    /// page, or in a chain of such rows.
    QByteArray memo(const QByteArray& head) const
    {
        constexpr quint32 inRow = 0x80000000;
        constexpr quint32 inOneRow = 0x40000000;
        require(head.size() >= MDB_MEMO_OVERHEAD, unreadableText, schema_.name);
        const quint32 flags = wordAt(head, 0);
        const auto length = qsizetype{flags & ~(inRow | inOneRow)};
        require(length <= longestMemo, {u"a text of %1 is too long", u"טקסט של %1 ארוך מדי"},
                schema_.name);
        if ((flags & inRow) != 0)
            return exactly(head.mid(MDB_MEMO_OVERHEAD), length);
        quint32 place = wordAt(head, sizeof(quint32));
        if ((flags & inOneRow) != 0)
            return exactly(piece(place), length);
        QByteArray text;
        while (text.size() < length && place != 0) {
            const QByteArray next = piece(place);
            require(next.size() > qsizetype{sizeof(quint32)}, unreadableText, schema_.name);
            place = wordAt(next, 0);
            text += next.mid(sizeof(quint32));
        }
        return exactly(text, length);
    }

    QByteArray piece(quint32 place) const
    {
        void* page = nullptr;
        int start = 0;
        std::size_t length = 0;
        const bool found =
            mdb_find_pg_row(&pages_.file(), static_cast<int>(place), &page, &start, &length) == 0;
        require(found && start >= 0 &&
                    qsizetype{start} + static_cast<qsizetype>(length) <= pages_.size(),
                {u"a text of %1 cannot be found", u"טקסט של %1 לא נמצא"}, schema_.name);
        budget_.spend(static_cast<qsizetype>(length));
        return {static_cast<const char*>(page) + start, static_cast<qsizetype>(length)};
    }

    QByteArray exactly(const QByteArray& bytes, qsizetype length) const
    {
        require(bytes.size() >= length, {u"a text of %1 is not complete", u"טקסט של %1 אינו שלם"},
                schema_.name);
        return bytes.left(length);
    }

    Pages pages_;
    MdbCatalogEntry& entry_;
    ByteBudget& budget_;
    OldStoreVisitor& visitor_;
    const store::TableSchema& schema_;
    TableHandle table_;
    std::span<MdbColumn*> columns_;
    std::vector<bool> taken_;
    std::optional<std::size_t> keyColumn_;
    std::vector<FoundRow> rows_;
};

Handle open(const QString& path)
{
    Handle handle(mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS));
    require(handle != nullptr,
            {u"its first page cannot be read", u"אי אפשר לקרוא את הדף הראשון שלו"});
    return handle;
}

OldFormat formatOf(const MdbHandle& handle)
{
    require(handle.f->jet_version == MDB_VER_JET3 || handle.f->jet_version == MDB_VER_JET4,
            {u"it has an unknown format", u"התבנית שלו אינה מוכרת"});
    return handle.f->jet_version == MDB_VER_JET3 ? OldFormat::Jet3 : OldFormat::Jet4;
}

/// Checks that the catalog, which is the file's list of tables, is complete. Throws CorruptDatabase
/// (3049) if the catalog contains fewer tables than its recorded row count. Without this check a
/// lost table would not be noticed.
void requireWholeCatalog(std::span<MdbCatalogEntry*> catalog)
{
    const auto itself = std::ranges::find_if(catalog, [](const MdbCatalogEntry* entry) {
        return objectName(entry->object_name) == u"MSysObjects"_s;
    });
    require(itself != catalog.end(), tablesCannotBeRead);
    const TableHandle table(mdb_read_table(*itself));
    require(table != nullptr && catalog.size() >= table->num_rows,
            {u"its list of tables is not complete", u"רשימת הטבלאות שלו אינה שלמה"});
}

} // namespace

void readOldFile(const QString& path, OldStoreVisitor& visitor)
{
    const Handle handle = open(path);
    visitor.opened(formatOf(*handle));
    require(mdb_read_catalog(handle.get(), MDB_ANY) != nullptr, tablesCannotBeRead);
    const auto catalog = itemsOf<MdbCatalogEntry>(handle->catalog);
    requireWholeCatalog(catalog);
    ByteBudget budget(QFileInfo(path).size());
    for (MdbCatalogEntry* entry : catalog) {
        const QString name = objectName(entry->object_name);
        if (entry->object_type == MDB_LINKED_TABLE)
            visitor.foreignTable(name, true);
        else if (mdb_is_user_table(entry) == 0)
            continue;
        else if (store::tableSchema(name) == nullptr)
            visitor.foreignTable(name, false);
        else
            TableReader(Pages(*handle), *entry, budget, visitor).read();
    }
    visitor.end();
}

} // namespace storetools
