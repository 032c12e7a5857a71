#pragma once

#include "tools/store/old_store/old_format.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace storetooltest {

/// A table of a Jet 3 file. Texts and memos (that lie in the row) are of varying length, the others
/// are fixed; the bytes of a Boolean are one, 0 or 1.
struct Jet3Table
{
    QByteArray name;
    std::vector<storetools::OldColumn> columns;
    std::vector<storetools::OldRow> rows;
};

/// The pages from this one on hold the loose rows of a file, one each.
constexpr quint32 firstLoosePage = 5;

/// The whole file with these tables, as far as reading needs it: no indexes, one usage map for each
/// table. Memos may lie in loose rows.
QByteArray jet3File(const std::vector<Jet3Table>& tables,
                    const std::vector<QByteArray>& looseRows = {});

/// The cipher of encoded files; the same once more gives back what was.
QByteArray rc4(const QByteArray& bytes, quint32 key);

} // namespace storetooltest
