#include "platform/report/export.h"

#include <QSaveFile>

#include <numeric>

namespace report {

Outcome writeFile(const QString& path, const Writer& writer)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Outcome::Failed;
    const Outcome outcome = writer(file);
    if (outcome != Outcome::Done) {
        file.cancelWriting();
        return outcome;
    }
    return file.commit() ? Outcome::Done : Outcome::Failed;
}

std::vector<int> allPages(const PrintedDocument& document)
{
    std::vector<int> pages(static_cast<std::size_t>(document.pageCount()));
    std::iota(pages.begin(), pages.end(), 0);
    return pages;
}

} // namespace report
