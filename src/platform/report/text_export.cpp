#include "platform/report/export.h"

#include "platform/report/report_text.h"

#include <QIODevice>
#include <QStringList>

namespace report {

namespace {

/// Vertical tolerances, in twips. A control shares a line of the exported text with the first
/// control of this line if it is at most `belowFirst` below, or at most `aboveFirst` above, that
/// control. Captions are slightly higher on the paper than the values in the same line.
constexpr int belowFirst = 90;
constexpr int aboveFirst = 15;

bool hasText(const PrintedControl& printed)
{
    const Kind kind = printed.control->design().kind;
    return kind == Kind::Label || kind == Kind::Field;
}

/// Returns the texts of one band (a printed section), line by line, followed by an empty line.
/// Lines without text are omitted, because an empty line separates bands.
QString bandText(const Band& band)
{
    QStringList lines;
    const PrintedControl* first = nullptr;
    for (const PrintedControl& printed : band.controls) {
        if (!hasText(printed))
            continue;
        const int below = first == nullptr ? 0 : printed.corner.y() - first->corner.y();
        const QString text = onOneLine(printed.text);
        if (first == nullptr || below > belowFirst || below < -aboveFirst) {
            lines += text;
            first = &printed;
        } else {
            lines.last() += u'\t' + text;
        }
    }
    lines.removeIf([](const QString& line) { return line.trimmed().isEmpty(); });
    return lines.join(u'\n') + QStringLiteral("\n\n");
}

QString pageText(const Page& page)
{
    QString text;
    for (const Band& band : page.bands) {
        if (band.role == Role::Detail || (band.role == Role::PageHeader && page.index == 0))
            text += bandText(band);
    }
    return text;
}

} // namespace

Outcome writeText(Document& document, QIODevice& device, const Progress& progress)
{
    const int total = document.pageCount();
    for (int i = 0; i < total; ++i) {
        const QByteArray bytes = pageText(*document.page(i)).toUtf8();
        if (device.write(bytes) != bytes.size())
            return Outcome::Failed;
        if (!progress(i + 1, total))
            return Outcome::Cancelled;
    }
    return Outcome::Done;
}

} // namespace report
