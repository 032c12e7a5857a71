#include "shop/workbook.h"

#include "platform/runtime/run_time_error.h"

#include <QFile>
#include <QTemporaryDir>

#include <clocale>
#include <string>
#include <utility>
#include <xlsxwriter.h>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace shop {

namespace {

constexpr double columnWidth = 14;       // In characters.
constexpr qsizetype longestText = 32767; // The greatest number of characters of a cell.
/// The creation time in the file, 1980-01-01, is fixed so that the same contents give the same
/// bytes.
constexpr time_t creation = 315532800;

void requireDone(lxw_error error)
{
    if (error != LXW_NO_ERROR)
        throw RunTimeError(
            runtime::DiskOrNetworkError,
            u"The workbook could not be made: %1"_s.arg(QString::fromUtf8(lxw_strerror(error))));
}

/// Splits a text into parts that each fit into a cell. The text is split at spaces where possible.
QStringList cellTexts(QString text)
{
    QStringList texts;
    while (text.size() > longestText) {
        const qsizetype space = text.lastIndexOf(u' ', longestText);
        qsizetype end = space > 0 ? space : longestText;
        if (space <= 0 && text[end].isLowSurrogate())
            --end;
        texts.append(text.first(end));
        text.remove(0, end + (space > 0 ? 1 : 0));
    }
    texts.append(text);
    return texts;
}

/// Returns the table with texts that are too long for a cell split into parts. The further parts
/// are in columns that are added at the end of the table.
Table withShortTexts(Table table)
{
    const std::size_t columns = table.rows.empty() ? 0 : table.rows.front().size();
    for (std::vector<Cell>& row : table.rows) {
        for (std::size_t i = 0; i < columns; ++i) {
            const auto* text = std::get_if<QString>(&row[i]);
            if (text == nullptr || text->size() <= longestText)
                continue;
            const QStringList texts = cellTexts(*text);
            row[i] = texts.first();
            for (qsizetype more = 1; more < texts.size(); ++more)
                row.emplace_back(texts[more]);
        }
        for (qsizetype more = table.columns.size(); more < qsizetype(row.size()); ++more)
            table.columns.append(u"lines %1"_s.arg(more - qsizetype(columns) + 2));
    }
    return table;
}

/// Sets the decimal sign of the C library to a point for the lifetime of the object. The library
/// that writes the workbook formats numbers with C functions, and a workbook must not depend on the
/// user's locale.
class DecimalPoint
{
public:
    DecimalPoint() : former_(std::setlocale(LC_NUMERIC, nullptr))
    {
        std::setlocale(LC_NUMERIC, "C");
    }
    ~DecimalPoint() { std::setlocale(LC_NUMERIC, former_.c_str()); }
    DecimalPoint(const DecimalPoint&) = delete;
    DecimalPoint& operator=(const DecimalPoint&) = delete;

private:
    std::string former_;
};

/// A workbook that is being written to a file. Texts are written as texts, never as formulas.
class WorkbookFile
{
public:
    explicit WorkbookFile(const QString& path)
        : book_(workbook_new(QFile::encodeName(path).constData()))
    {
        if (book_ == nullptr)
            requireDone(LXW_ERROR_MEMORY_MALLOC_FAILED);
        heading_ = workbook_add_format(book_);
        format_set_bold(heading_);
        lxw_doc_properties properties = {};
        properties.created = creation;
        requireDone(workbook_set_properties(book_, &properties));
    }
    ~WorkbookFile()
    {
        if (book_ != nullptr)
            workbook_close(book_);
    }
    WorkbookFile(const WorkbookFile&) = delete;
    WorkbookFile& operator=(const WorkbookFile&) = delete;

    void addSheet(const QString& name, const Table& contents)
    {
        const Table table = withShortTexts(contents);
        lxw_worksheet* sheet = workbook_add_worksheet(book_, name.toUtf8().constData());
        if (sheet == nullptr)
            requireDone(LXW_ERROR_MEMORY_MALLOC_FAILED);
        worksheet_right_to_left(sheet);
        worksheet_freeze_panes(sheet, 1, 0);
        const auto lastColumn = static_cast<lxw_col_t>(table.columns.size() - 1);
        requireDone(worksheet_set_column(sheet, 0, lastColumn, columnWidth, nullptr));
        lxw_col_t column = 0;
        for (const QString& each : table.columns)
            requireDone(
                worksheet_write_string(sheet, 0, column++, each.toUtf8().constData(), heading_));
        lxw_row_t row = 0;
        for (const std::vector<Cell>& each : table.rows)
            addRow(sheet, ++row, each);
    }

    void close() { requireDone(workbook_close(std::exchange(book_, nullptr))); }

private:
    static void addRow(lxw_worksheet* sheet, lxw_row_t row, const std::vector<Cell>& cells)
    {
        lxw_col_t column = 0;
        for (const Cell& each : cells) {
            if (const auto* text = std::get_if<QString>(&each))
                requireDone(worksheet_write_string(sheet, row, column, text->toUtf8().constData(),
                                                   nullptr));
            else if (const auto* whole = std::get_if<int>(&each))
                requireDone(worksheet_write_number(sheet, row, column, *whole, nullptr));
            else
                requireDone(
                    worksheet_write_number(sheet, row, column, std::get<double>(each), nullptr));
            ++column;
        }
    }

    lxw_workbook* book_;
    lxw_format* heading_ = nullptr;
};

/// Returns the settings with which the groups of pieces were planned.
SettingsByGroup plannedSettings(const ShopPack& pack)
{
    SettingsByGroup settings;
    for (const GroupPlan& each : pack.groups)
        settings.emplace(each.group, each.settings);
    return settings;
}

} // namespace

QByteArray workbook(const ShopPack& pack)
{
    // The library writes a workbook only to a file, so the contents are written to a temporary file
    // and read from it.
    const QTemporaryDir folder;
    const DecimalPoint decimalPoint;
    QFile file(folder.filePath(u"workbook.xlsx"_s));
    WorkbookFile book(file.fileName());
    book.addSheet(u"חלקים"_s, piecesTable(pack.pieces.pieces, plannedSettings(pack)));
    book.addSheet(u"רשימת חיתוך"_s, cutListTable(pack));
    book.addSheet(u"תוכנית מוטות"_s, barPlanTable(pack));
    book.addSheet(u"רשימת זכוכית"_s, panesTable(pack.pieces.glass));
    book.addSheet(u"רשימת רשתות"_s, panesTable(pack.pieces.mesh));
    book.close();
    if (!file.open(QIODevice::ReadOnly))
        throw RunTimeError(runtime::DiskOrNetworkError,
                           u"The workbook could not be read: %1"_s.arg(file.errorString()));
    return file.readAll();
}

} // namespace shop
