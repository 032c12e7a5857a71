#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <optional>

namespace shop {

/// Returns the rows as CSV by RFC 4180, in UTF-8 with a byte order mark. Each row ends with CRLF.
/// Only cells that need quotes have them.
QByteArray csvText(const QList<QStringList>& rows);

/// Parses a CSV text with or without a byte order mark and with any line ends. Returns nothing if
/// the text is not valid UTF-8, if a quote is not closed, or if a cell that is not enclosed in
/// quotes contains a quote.
std::optional<QList<QStringList>> readCsv(const QByteArray& text);

/// Returns the CSV cell for a text. A text that a spreadsheet would read as a formula gets a
/// leading apostrophe.
QString textCell(const QString& text);

} // namespace shop
