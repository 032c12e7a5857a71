#pragma once

#include <QIODevice>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

namespace demo {

/// A measure as its two boxes take it.
struct Boxes
{
    QString whole;
    QString hundredths;
};

/// The data of a monoblock: the entry of the type's list, from 0, and what goes into the boxes.
struct Monoblock
{
    int type = 0;
    Boxes widthDeduction;
    Boxes heightDeduction;
    QString uThickness;
    Boxes slatThickness;
};

/// One row of the table of openings.
struct Opening
{
    int lineNumber = 0; ///< Where it stands in the file, from 1.
    QString series;
    Boxes width;
    Boxes height;
    std::array<QString, 4> kinds;   ///< Frame, sash, glass, mesh.
    std::array<QString, 4> colours; ///< Likewise.
    std::optional<Monoblock> monoblock;
    std::optional<Boxes> doorThickness;
};

/// A row that cannot be typed in, and why.
struct BadRow
{
    int lineNumber = 0;
    QString reason;
};

struct Openings
{
    std::vector<Opening> rows;
    std::vector<BadRow> bad;
};

/// The columns of the table, in their order; the file's first line names them.
QStringList columns();

/// Reads comma-separated openings in UTF-8, texts in double quotes where they hold a comma. A
/// measure has at most 3 digits and, behind a point, at most 2. Empty monoblock columns mean an
/// ordinary window; of a monoblock the deductions, the U and the slat may be left empty and stay as
/// its type proposes them. A row that does not fit is told with its line number and left out; so is
/// a missing or wrong first line.
Openings readOpenings(QIODevice& file);

} // namespace demo
