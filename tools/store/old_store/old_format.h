#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace storetools {

/// The file formats of old stores.
enum class OldFormat : quint8 {
    Jet3 = 3, ///< Texts are stored in a single-byte code page.
    Jet4 = 4, ///< Texts are stored in UTF-16 and may be compressed.
};

/// Column type numbers of the file format.
enum OldType : quint8 {
    OldBoolean = 1,
    OldByte = 2,
    OldInteger = 3,
    OldLong = 4,
    OldCurrency = 5,
    OldSingle = 6,
    OldDouble = 7,
    OldDate = 8,
    OldText = 10,
    OldMemo = 12,
};

struct OldColumn
{
    QString name;
    quint8 type = 0; ///< An OldType, or a type number that cannot be imported.
};

/// A table of the store as the old file describes it.
struct OldTable
{
    QString name;
    qint64 recordedRows = 0;        ///< The number of rows that the file records for the table.
    std::vector<OldColumn> columns; ///< The columns that the store's schema contains.
    /// The old table's columns that are missing in the store's schema.
    std::vector<OldColumn> foreignColumns;
};

/// The raw bytes of a value in the old file. An empty optional means Null. The pieces of a memo are
/// joined, and a Boolean is one byte, 0 or 1.
using OldCell = std::optional<QByteArray>;
/// One row of an old table, with one cell for each element of OldTable::columns.
using OldRow = std::vector<OldCell>;

/// Receives the contents of an old store in a sequence of calls. The first call is opened(), and
/// the last one is end(). In between, the store's tables with their rows, and the tables that the
/// store's schema does not contain, are reported in any order. Names in a Jet 3 file are not
/// decoded yet: each character is a raw byte of the file's code page.
class OldStoreVisitor
{
public:
    virtual ~OldStoreVisitor() = default;
    virtual void opened(OldFormat format) = 0;
    /// Called for a table that the store's schema does not contain. `linked` is true if the rows of
    /// the table are stored in another file.
    virtual void foreignTable(const QString& name, bool linked) = 0;
    virtual void table(const OldTable& table) = 0;
    virtual void row(const OldRow& row) = 0;
    virtual void tableEnd() = 0;
    virtual void end() = 0;
};

} // namespace storetools
