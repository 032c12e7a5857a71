#pragma once

#include "tools/store/old_store/old_format.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace storetooltest {

/// A table of a Jet 3 file. Texts and inline memos have a variable length, all other types a fixed
/// length. A Boolean is one byte, 0 or 1.
struct Jet3Table
{
    QByteArray name;
    std::vector<storetools::OldColumn> columns;
    std::vector<storetools::OldRow> rows;
};

/// The first of the pages that each hold one overflow row of a memo.
constexpr quint32 firstLoosePage = 5;

/// Returns a Jet 3 file with these tables, reduced to the parts needed for reading: no indexes and
/// one usage map per table. Memos may be stored in overflow rows.
QByteArray jet3File(const std::vector<Jet3Table>& tables,
                    const std::vector<QByteArray>& looseRows = {});

/// The RC4 cipher of encoded files. Encryption and decryption are the same operation.
QByteArray rc4(const QByteArray& bytes, quint32 key);

} // namespace storetooltest
