#include "tools/store/old_store/jet3_file.h"

#include <QtEndian>

#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace storetooltest {

namespace {

using storetools::OldCell;
using storetools::OldColumn;
using storetools::OldRow;

constexpr qsizetype pageSize = 2048;
// The first of three catalogue pages, one of which has rows.
constexpr quint32 firstCatalogPage = 2;

template <typename Number>
QByteArray bytesOf(Number number)
{
    QByteArray bytes(sizeof number, Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

void put(QByteArray& page, qsizetype place, const QByteArray& bytes)
{
    page.replace(place, bytes.size(), bytes);
}

void setBit(QByteArray& bits, std::size_t number)
{
    const auto byte = static_cast<qsizetype>(number / 8);
    bits[byte] = static_cast<char>(bits[byte] | (1 << (number % 8)));
}

bool isFixed(const OldColumn& column)
{
    return column.type != storetools::OldText && column.type != storetools::OldMemo &&
           column.type != 11;
}

qsizetype sizeOf(quint8 type)
{
    switch (type) {
    case storetools::OldBoolean:
        return 0;
    case storetools::OldByte:
        return 1;
    case storetools::OldInteger:
        return 2;
    case storetools::OldLong:
    case storetools::OldSingle:
        return 4;
    default:
        return 8;
    }
}

/// Returns the offset table after the values of variable length: the start of each value and the
/// end of the last one, the columns after which offsets continue in the next 256 bytes, and the
/// number of values.
QByteArray placesOf(const std::vector<qsizetype>& ends, qsizetype rowSoFar, qsizetype maskSize)
{
    QByteArray places;
    for (const qsizetype end : ends)
        places.prepend(static_cast<char>(end % 256));
    qsizetype jumps = 0;
    const auto length = [&] { return rowSoFar + places.size() + jumps + 1 + maskSize; };
    while ((length() - 1) / 256 > jumps)
        ++jumps;
    QByteArray table;
    for (qsizetype jump = 1; jump <= jumps; ++jump) {
        char first = '\xff'; // No value starts after this multiple of 256 bytes.
        for (std::size_t i = ends.size(); i-- > 0;) {
            if (ends[i] / 256 >= jump)
                first = static_cast<char>(i);
        }
        table.prepend(first);
    }
    return places + table + static_cast<char>(ends.size() - 1);
}

QByteArray rowBytes(const Jet3Table& table, const OldRow& row)
{
    QByteArray bytes(1, static_cast<char>(table.columns.size()));
    QByteArray mask(static_cast<qsizetype>(table.columns.size() + 7) / 8, '\0');
    for (std::size_t i = 0; i < row.size(); ++i) {
        const bool isBoolean = table.columns[i].type == storetools::OldBoolean;
        if (isBoolean ? *row[i] == QByteArray(1, '\1') : row[i].has_value())
            setBit(mask, i);
        if (isFixed(table.columns[i]) && !isBoolean)
            bytes += row[i].value_or(QByteArray(sizeOf(table.columns[i].type), '\0'));
    }
    std::vector<qsizetype> ends;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (isFixed(table.columns[i]))
            continue;
        ends.push_back(bytes.size());
        bytes += row[i].value_or(QByteArray());
    }
    ends.push_back(bytes.size());
    return bytes + placesOf(ends, bytes.size(), mask.size()) + mask;
}

/// A data page, filled from its end.
class RowPage
{
public:
    explicit RowPage(quint32 owner)
    {
        put(page_, 0, QByteArray("\1\1"));
        put(page_, 4, bytesOf(owner));
    }
    bool add(const QByteArray& row)
    {
        const qsizetype entry = 10 + 2 * rows_;
        if (end_ - row.size() < entry + 2)
            return false;
        end_ -= row.size();
        put(page_, end_, row);
        put(page_, entry, bytesOf(static_cast<quint16>(end_)));
        put(page_, 8, bytesOf(static_cast<quint16>(++rows_)));
        return true;
    }
    const QByteArray& bytes() const { return page_; }

private:
    QByteArray page_ = QByteArray(pageSize, '\0');
    qsizetype end_ = pageSize;
    int rows_ = 0;
};

QByteArray columnEntries(const Jet3Table& table)
{
    QByteArray entries;
    QByteArray names;
    int varying = 0;
    qsizetype place = 0;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const OldColumn& column = table.columns[i];
        QByteArray entry(18, '\0');
        entry[0] = static_cast<char>(column.type);
        put(entry, 1, bytesOf(static_cast<quint16>(i)));
        put(entry, 3, bytesOf(static_cast<quint16>(varying)));
        put(entry, 5, bytesOf(static_cast<quint16>(i)));
        entry[13] = isFixed(column) ? '\3' : '\2';
        put(entry, 14, bytesOf(static_cast<quint16>(place)));
        put(entry, 16, bytesOf(static_cast<quint16>(isFixed(column) ? sizeOf(column.type) : 50)));
        place += isFixed(column) ? sizeOf(column.type) : 0;
        varying += isFixed(column) ? 0 : 1;
        entries += entry;
        names += static_cast<char>(column.name.size()) + column.name.toLatin1();
    }
    return entries + names;
}

QByteArray descriptionPage(const Jet3Table& table, quint32 mapPage)
{
    QByteArray page(pageSize, '\0');
    put(page, 0, QByteArray("\2\1VC"));
    put(page, 12, bytesOf(static_cast<quint32>(table.rows.size())));
    const auto varying = std::count_if(table.columns.begin(), table.columns.end(),
                                       [](const OldColumn& column) { return !isFixed(column); });
    put(page, 23, bytesOf(static_cast<quint16>(varying)));
    put(page, 25, bytesOf(static_cast<quint16>(table.columns.size())));
    // The usage map of the table's pages and the map of pages with free space are the same here.
    for (const qsizetype map : {35, 39})
        put(page, map, bytesOf(quint32{mapPage << 8U}));
    put(page, 43, columnEntries(table));
    return page;
}

/// Returns the pages of a table: its description, its usage map and its rows.
std::vector<QByteArray> pagesOf(const Jet3Table& table, quint32 firstPage)
{
    std::vector<RowPage> rows{RowPage(firstPage)};
    for (const OldRow& row : table.rows) {
        const QByteArray bytes = rowBytes(table, row);
        if (!rows.back().add(bytes))
            rows.emplace_back(firstPage).add(bytes);
    }
    QByteArray bits(64, '\0');
    for (std::size_t i = 0; i < rows.size(); ++i)
        setBit(bits, i);
    RowPage mapPage(0);
    mapPage.add('\0' + bytesOf(quint32{firstPage + 2}) + bits);
    std::vector<QByteArray> pages{descriptionPage(table, firstPage + 1), mapPage.bytes()};
    for (const RowPage& page : rows)
        pages.push_back(page.bytes());
    return pages;
}

QByteArray headPage()
{
    constexpr qsizetype hiddenPlace = 0x18;
    constexpr qsizetype hiddenSize = 126;
    constexpr quint32 hiddenKey = 0x6b39dac7;
    QByteArray page(pageSize, '\0');
    put(page, 0, QByteArray("\0\1\0\0Standard Jet DB\0\0", 21));
    put(page, hiddenPlace, rc4(QByteArray(hiddenSize, '\0'), hiddenKey));
    return page;
}

} // namespace

QByteArray rc4(const QByteArray& bytes, quint32 key)
{
    std::array<quint8, 256> state{};
    std::iota(state.begin(), state.end(), quint8{0});
    const QByteArray keyBytes = bytesOf(key);
    quint8 j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        const auto keyByte = static_cast<quint8>(keyBytes[static_cast<qsizetype>(i % 4)]);
        j = static_cast<quint8>(j + state[i] + keyByte);
        std::swap(state[i], state[j]);
    }
    QByteArray result = bytes;
    quint8 i = 0;
    j = 0;
    for (char& byte : result) {
        i = static_cast<quint8>(i + 1);
        j = static_cast<quint8>(j + state[i]);
        std::swap(state[i], state[j]);
        byte = static_cast<char>(byte ^ state[static_cast<quint8>(state[i] + state[j])]);
    }
    return result;
}

QByteArray jet3File(const std::vector<Jet3Table>& tables, const std::vector<QByteArray>& looseRows)
{
    Jet3Table catalog{"MSysObjects",
                      {{u"Id"_s, storetools::OldLong},
                       {u"Type"_s, storetools::OldInteger},
                       {u"Flags"_s, storetools::OldLong},
                       {u"Name"_s, storetools::OldText},
                       {u"LvProp"_s, 11}},
                      {}};
    const auto list = [&](const QByteArray& name, quint32 page, quint32 flags) {
        catalog.rows.push_back(
            {bytesOf(page), bytesOf(quint16{1}), bytesOf(flags), name, std::nullopt});
    };
    constexpr quint32 systemTable = 0x80000000;
    list(catalog.name, firstCatalogPage, systemTable);
    QByteArray content;
    quint32 next = firstLoosePage;
    for (const QByteArray& row : looseRows) {
        RowPage page(0);
        page.add(row);
        content += page.bytes();
        ++next;
    }
    for (const Jet3Table& table : tables) {
        list(table.name, next, 0);
        for (const QByteArray& page : pagesOf(table, next)) {
            content += page;
            ++next;
        }
    }
    QByteArray file = headPage() + QByteArray(pageSize, '\0');
    for (const QByteArray& page : pagesOf(catalog, firstCatalogPage))
        file += page;
    return file + content;
}

} // namespace storetooltest
