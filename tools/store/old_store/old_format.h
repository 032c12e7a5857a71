#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace storetools {

/// The file formats of an old store.
enum class OldFormat : quint8 {
    Jet3 = 3, ///< Texts in a code page, a byte for each character.
    Jet4 = 4, ///< Texts in UTF-16, some of them compressed.
};

/// Types of columns by the numbers that stand in the file.
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
    quint8 type = 0; ///< An OldType, or one that cannot be taken over.
};

/// A table that the store knows, as the old file describes it.
struct OldTable
{
    QString name;
    qint64 recordedRows = 0;               ///< How many rows the file says that it has.
    std::vector<OldColumn> columns;        ///< Those that the store knows.
    std::vector<OldColumn> foreignColumns; ///< The others.
};

/// The bytes of a value as they stand in the file, those of a memo put together; a Boolean is one
/// byte, 0 or 1. Nothing is Null.
using OldCell = std::optional<QByteArray>;
/// One cell for each column of the table.
using OldRow = std::vector<OldCell>;

/// Hears what an old store holds, in this order: opened, then tables with their rows and foreign
/// tables mixed, then end. The characters of a Jet 3 file's names are bytes of its code page.
class OldStoreVisitor
{
public:
    virtual ~OldStoreVisitor() = default;
    virtual void opened(OldFormat format) = 0;
    /// A table that the store does not know. A linked one lies in another file.
    virtual void foreignTable(const QString& name, bool linked) = 0;
    virtual void table(const OldTable& table) = 0;
    virtual void row(const OldRow& row) = 0;
    virtual void tableEnd() = 0;
    virtual void end() = 0;
};

} // namespace storetools
