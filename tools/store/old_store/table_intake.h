#pragma once

#include "store/schema.h"
#include "tools/store/old_store/code_page.h"
#include "tools/store/old_store/old_format.h"
#include "tools/store/old_store/report.h"

namespace storetools {

struct TakeOverOptions
{
    CodePage codePage{QStringLiteral("1255")}; ///< Of the texts of a Jet 3 file.
    bool cutTexts = false;                     ///< Texts longer than their field are cut to it.
};

/// What the user is told of a taking over.
struct TakeOverReports
{
    Report notes;    ///< What was left out, filled in or cut.
    Report findings; ///< What keeps the store from being taken over.
};

/// A row of the new store, a value for each field of its table.
using NewRow = std::vector<QVariant>;

/// Turns the rows of one table of an old store into those of the new one.
class TableIntake
{
public:
    /// Reports the fields that are missing and the columns that the store does not know.
    TableIntake(const store::TableSchema& schema, const OldTable& table, OldFormat format,
                const TakeOverOptions& options, TakeOverReports& reports);

    /// Nothing where a value cannot be taken over, which is then reported. Values are converted as
    /// assigning them to their fields does.
    std::optional<NewRow> converted(const OldRow& row);

    /// Reports a number of rows other than the one that the file has noted down.
    void finish() const;

    /// What is said of the row that was converted last, with its place.
    QString found(const QString& what) const;

private:
    /// A field and the column that it comes from.
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
    std::vector<std::optional<Source>> sources_; ///< By the ordinal of the field.
    std::size_t key_ = 0;                        ///< The ordinal of the key.
    qint64 recordedRows_;
    qint64 rows_ = 0;
    QString place_;
};

} // namespace storetools
