// Fuzzes the import of rows. Whatever the reading process sends, each imported value fits its
// field, and each dropped value is reported.

#include "fuzz/fuzz.h"

#include "platform/dao/engine/values.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/old_store/frames.h"
#include "tools/store/old_store/intake.h"

#include <QBuffer>
#include <QDateTime>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace storetools;

namespace {

bool isOfType(const dao::FieldInfo& field, const QVariant& value)
{
    if (!value.isValid())
        return field.type != dao::dbBoolean;
    switch (field.type) {
    case dao::dbBoolean:
        return value.typeId() == QMetaType::Int && (value == 0 || value == -1);
    case dao::dbInteger:
    case dao::dbLong:
        return value.typeId() == QMetaType::Int;
    case dao::dbDouble:
        return value.typeId() == QMetaType::Double && std::isfinite(value.toDouble());
    case dao::dbDate:
        return value.typeId() == QMetaType::QDate || value.typeId() == QMetaType::QDateTime;
    case dao::dbText:
        break;
    }
    const QString text = value.toString();
    return value.typeId() == QMetaType::QString && text.size() <= field.size && text.isValidUtf16();
}

/// Checks every row against its table and counts the rows.
class CheckingSink : public RowSink
{
public:
    void add(const store::TableSchema& table, const NewRow& row) override
    {
        fuzz::require(row.size() == table.fields.size(), "a row has a value for each field",
                      table.name);
        for (std::size_t i = 0; i < row.size(); ++i) {
            const dao::FieldInfo& field = table.fields[i];
            fuzz::require(isOfType(field, row[i]), "a value fits its field", row[i].toString());
            fuzz::require(dao::converted(field, row[i]) == row[i],
                          "assigning a value does not change it", row[i].toString());
        }
        const QString& key = table.indexes.front().fields.front();
        fuzz::require(row[static_cast<std::size_t>(table.ordinalOf(key))].isValid(),
                      "a row has a key", key);
        ++rows;
    }
    int rows = 0;
};

/// Feeds the input to the FrameReader as pipe data, in pieces of any size.
void takeStream(fuzz::Input& input, OldStoreVisitor& visitor)
{
    FrameReader reader(visitor);
    const int size = input.takeBelow(64) + 1;
    while (!input.atEnd()) {
        QByteArray piece;
        for (int i = 0; i < size && !input.atEnd(); ++i)
            piece += input.take<char>();
        reader.take(piece);
    }
}

OldCell takeCell(fuzz::Input& input)
{
    const int length = input.takeBelow(130);
    if (length == 129)
        return {};
    QByteArray bytes;
    for (int i = 0; i < length; ++i)
        bytes += input.take<char>();
    return bytes;
}

/// Generates tables of the store with columns of any type and rows of any bytes.
void tellTables(fuzz::Input& input, OldStoreVisitor& visitor)
{
    visitor.opened(input.takeBelow(2) == 0 ? OldFormat::Jet3 : OldFormat::Jet4);
    const std::vector<store::TableSchema>& all = store::schema();
    for (std::size_t i = 0; i < all.size() && !input.atEnd(); ++i) {
        OldTable table{all[i].name, input.takeBelow(4), {}, {}};
        const bool asMade = input.takeBelow(2) == 0;
        for (const dao::FieldInfo& field : all[i].fields) {
            const auto type = asMade ? static_cast<quint8>(field.type) : input.take<quint8>();
            if (type != 0)
                table.columns.push_back({field.name, type});
        }
        visitor.table(table);
        for (int rows = input.takeBelow(4); rows > 0; --rows) {
            OldRow row(table.columns.size());
            for (OldCell& cell : row)
                cell = takeCell(input);
            visitor.row(row);
        }
        visitor.tableEnd();
    }
    visitor.end();
}

/// Counts the rows that the visitor receives.
class CountingIntake : public Intake
{
public:
    using Intake::Intake;
    void row(const OldRow& row) override
    {
        ++rows;
        Intake::row(row);
    }
    int rows = 0;
};

void takeAndCheck(const TakeOverOptions& options, const std::function<void(OldStoreVisitor&)>& tell)
{
    CheckingSink sink;
    CountingIntake intake(sink, options, {});
    try {
        tell(intake);
    } catch (const runtime::RunTimeError& error) {
        fuzz::require(error.number() == runtime::CorruptDatabase,
                      "the import stops only for damage", error.description());
        return;
    }
    fuzz::require(sink.rows == intake.rows || !intake.reports().findings.isEmpty(),
                  "a skipped row is reported", QString::number(intake.rows));
    fuzz::require(intake.reports().findings.lines().size() <= 101, "findings are bounded", {});
}

/// Writing what was read from the pipe yields the same bytes.
void checkPipe(const QByteArray& written)
{
    QBuffer again;
    again.open(QIODevice::WriteOnly);
    FrameWriter writer(again);
    FrameReader reader(writer);
    reader.take(written);
    fuzz::require(reader.isFinished(), "written data is complete", {});
    fuzz::require(again.data() == written, "written data is read unchanged", {});
}

} // namespace

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    return 0;
}

/// The first byte chooses whether texts are truncated and whether the rest is pipe data or rows.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const int choice = input.takeBelow(4);
    TakeOverOptions options;
    options.cutTexts = choice % 2 == 1;
    if (choice < 2) {
        takeAndCheck(options, [&](OldStoreVisitor& visitor) { takeStream(input, visitor); });
        return 0;
    }
    QBuffer pipe;
    pipe.open(QIODevice::WriteOnly);
    FrameWriter writer(pipe);
    tellTables(input, writer);
    checkPipe(pipe.data());
    takeAndCheck(options,
                 [&](OldStoreVisitor& visitor) { FrameReader(visitor).take(pipe.data()); });
    return 0;
}
