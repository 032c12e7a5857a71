#pragma once

#include "driving/opening.h"

#include <QIODevice>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace demo {

using driving::Boxes;

/// The data of an opening with a roller shutter (a monoblock). `type` is the position of the
/// monoblock type in the list of the form for choosing a series, from 0. The other members are the
/// texts to enter in that form.
struct Monoblock
{
    int type = 0;
    Boxes widthDeduction;
    Boxes heightDeduction;
    QString uThickness;
    Boxes slatThickness;
};

/// One row of the openings file.
struct Opening : driving::Opening
{
    int lineNumber = 0; ///< Line number in the file, from 1.
    QString series;
    std::optional<Monoblock> monoblock;
};

/// A row of the openings file that cannot be entered, and the reason why.
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

/// Returns the column names of the openings file, in file order. The first line of the file must
/// contain exactly these names.
QStringList columns();

/// Reads openings from a comma-separated UTF-8 file. A text that contains a comma is in double
/// quotes. A measure has at most 3 digits before the decimal point and at most 2 after it. If the
/// column `monoblock` (the monoblock type) is empty, the opening is an ordinary window. Otherwise
/// the deductions, the U-profile thickness and the slat thickness may still be empty; the values
/// that the form proposes for the monoblock type are then used. An invalid row is skipped and
/// reported with its line number. A missing or wrong heading line is reported in the same way.
Openings readOpenings(QIODevice& file);

} // namespace demo
