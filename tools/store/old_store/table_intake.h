#pragma once

#include "store/schema.h"
#include "tools/store/old_store/code_page.h"
#include "tools/store/old_store/old_format.h"
#include "tools/store/old_store/report.h"

namespace storetools {

struct TakeOverOptions
{
    CodePage codePage{QStringLiteral("1255")}; ///< The code page of the texts in a Jet 3 file.
    /// If true, a text that is too long for its field is truncated instead of reported.
    bool cutTexts = false;
};

/// The messages of an import.
struct TakeOverReports
{
    Report notes;    ///< Data that was skipped, filled in or truncated.
    Report findings; ///< Errors that prevent the import.
};

/// A row of the new store, with one value for each field of its table.
using NewRow = std::vector<QVariant>;

/// Converts the rows of one table of an old store to rows of the corresponding table of the new
/// store.
class TableIntake
{
public:
    /// Reports missing fields and unknown columns.
    TableIntake(const store::TableSchema& schema, const OldTable& table, OldFormat format,
                const TakeOverOptions& options, TakeOverReports& reports);

    /// Converts a row. A value is converted in the same way as by an assignment to a field of a
    /// recordset. If a value cannot be imported, adds a message to the findings of the import and
    /// returns nothing.
    std::optional<NewRow> converted(const OldRow& row);

    /// Reports a difference between the number of rows that were read and the number of rows that
    /// the file records for the table.
    void finish() const;

    /// Returns a message about the row that was converted last. The message starts with the key of
    /// the row.
    QString found(const QString& what) const;

private:
    /// The column of the old table that contains the values of a field.
    struct Source
    {
        std::size_t column;
        quint8 type;
    };

    void match(const OldTable& table);
    void reportMissing(const dao::FieldInfo& field) const;
    void setPlace(const OldRow& row);
    QVariant decoded(std::size_t ordinal, const OldRow& row) const;
    bool take(std::size_t ordinal, const OldRow& row, QVariant& value);
    bool fit(const dao::FieldInfo& field, QVariant& text);
    void reportRounding(const dao::FieldInfo& field, const QVariant& from, const QVariant& to);

    const store::TableSchema& schema_;
    OldFormat format_;
    const TakeOverOptions& options_;
    TakeOverReports& reports_;
    std::vector<std::optional<Source>> sources_; ///< The source columns, indexed by field ordinal.
    std::size_t key_ = 0;                        ///< The ordinal of the key field.
    qint64 recordedRows_;
    qint64 rows_ = 0;
    QString shownKey_; ///< The name and value of the current row's key; empty if it is unknown.
};

} // namespace storetools
