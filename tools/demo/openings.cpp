#include "demo/openings.h"

#include <QRegularExpression>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace demo {

namespace {

constexpr int monoblockTypes = 3;

/// The reason why a row of the openings file is skipped. The code that parses a row throws it, and
/// readOpenings() catches it.
struct Refusal
{
    QString reason;
};

/// Splits a line of the openings file into cells. A quote at the start of a cell opens a quoted
/// cell, and two consecutive quotes in a quoted cell are one quote character. A quote anywhere else
/// is an ordinary character, as in the Hebrew abbreviation of millimetres.
QStringList cellsOf(const QString& line)
{
    QStringList cells{QString()};
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        const bool atQuote = c == u'"';
        if (atQuote && quoted && i + 1 < line.size() && line[i + 1] == u'"') {
            cells.last().append(c);
            ++i;
        } else if (atQuote && (quoted || cells.last().isEmpty())) {
            quoted = !quoted;
        } else if (c == u',' && !quoted) {
            cells.append(QString());
        } else {
            cells.last().append(c);
        }
    }
    if (quoted)
        throw Refusal{u"a quote is not closed"_s};
    return cells;
}

Boxes measure(const QString& column, const QString& text)
{
    static const QRegularExpression form(u"^(\\d{1,3})(?:\\.(\\d{1,2}))?$"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        throw Refusal{u"%1 is no measure (up to 999.99): \"%2\""_s.arg(column, text)};
    return {match.captured(1), match.captured(2).leftJustified(2, u'0')};
}

/// Reads the width or the height of an opening. The whole part must be at least 1, because the
/// order form refuses 0.
Boxes side(const QString& column, const QString& text)
{
    Boxes boxes = measure(column, text);
    if (boxes.whole.toInt() == 0)
        throw Refusal{u"%1 is below 1: \"%2\""_s.arg(column, text)};
    return boxes;
}

Boxes measureOrNothing(const QString& column, const QString& text)
{
    return text.isEmpty() ? Boxes() : measure(column, text);
}

/// The cells of one row of the openings file, accessed by column name.
class Row
{
public:
    explicit Row(const QStringList& cells) : cells_(cells)
    {
        if (cells.size() != columns().size())
            throw Refusal{u"%1 columns instead of %2"_s.arg(cells.size()).arg(columns().size())};
    }

    QString operator[](const QString& column) const
    {
        return cells_[columns().indexOf(column)].trimmed();
    }

private:
    QStringList cells_;
};

std::optional<Monoblock> monoblockOf(const Row& row)
{
    if (row[u"monoblock"_s].isEmpty())
        return {};
    bool isNumber = false;
    const int type = row[u"monoblock"_s].toInt(&isNumber);
    if (!isNumber || type < 1 || type > monoblockTypes)
        throw Refusal{u"monoblock is no type from 1 to 3: \"%1\""_s.arg(row[u"monoblock"_s])};
    const QString uThickness = row[u"u_thickness"_s];
    if (!uThickness.isEmpty() && uThickness != u"6.5" && uThickness != u"5.3")
        throw Refusal{u"u_thickness is neither 6.5 nor 5.3: \"%1\""_s.arg(uThickness)};
    return Monoblock{type - 1, measureOrNothing(u"mono_width"_s, row[u"mono_width"_s]),
                     measureOrNothing(u"mono_height"_s, row[u"mono_height"_s]), uThickness,
                     measureOrNothing(u"slat"_s, row[u"slat"_s])};
}

Opening openingOf(const QString& line, int lineNumber)
{
    const Row row(cellsOf(line));
    Opening opening;
    opening.lineNumber = lineNumber;
    opening.series = row[u"series"_s];
    if (opening.series.isEmpty())
        throw Refusal{u"no series"_s};
    opening.width = side(u"width"_s, row[u"width"_s]);
    opening.height = side(u"height"_s, row[u"height"_s]);
    const std::array<QString, 4> parts{u"frame"_s, u"sash"_s, u"glass"_s, u"mesh"_s};
    for (std::size_t part = 0; part < parts.size(); ++part) {
        opening.kinds[part] = row[parts[part] + u"_kind"_s];
        opening.colours[part] = row[parts[part] + u"_colour"_s];
    }
    opening.monoblock = monoblockOf(row);
    if (!row[u"door_thickness"_s].isEmpty())
        opening.doorThickness = measure(u"door_thickness"_s, row[u"door_thickness"_s]);
    return opening;
}

} // namespace

QStringList columns()
{
    return {u"series"_s,        u"width"_s,       u"height"_s,      u"frame_kind"_s,
            u"frame_colour"_s,  u"sash_kind"_s,   u"sash_colour"_s, u"glass_kind"_s,
            u"glass_colour"_s,  u"mesh_kind"_s,   u"mesh_colour"_s, u"monoblock"_s,
            u"mono_width"_s,    u"mono_height"_s, u"u_thickness"_s, u"slat"_s,
            u"door_thickness"_s};
}

Openings readOpenings(QIODevice& file)
{
    Openings openings;
    QTextStream text(&file);
    if (text.readLine().trimmed() != columns().join(u',')) {
        openings.bad.push_back({1, u"the first line is not: "_s + columns().join(u',')});
        return openings;
    }
    for (int lineNumber = 2;; ++lineNumber) {
        const QString line = text.readLine();
        if (line.isNull())
            break;
        if (line.trimmed().isEmpty())
            continue;
        try {
            openings.rows.push_back(openingOf(line, lineNumber));
        } catch (const Refusal& refusal) {
            openings.bad.push_back({lineNumber, refusal.reason});
        }
    }
    return openings;
}

} // namespace demo
