#include "platform/report/export.h"

#include "platform/runtime/twips.h"

#include <QIODevice>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace report {

namespace {

/// Forwards all data to the target device and stores whether a write has failed, because Qt's PDF
/// engine does not report failed writes.
class CheckedDevice : public QIODevice
{
public:
    explicit CheckedDevice(QIODevice& target) : target_(target) { open(QIODevice::WriteOnly); }
    bool failed() const { return failed_; }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override
    {
        failed_ = failed_ || target_.write(data, size) != size;
        return size;
    }

private:
    QIODevice& target_;
    bool failed_ = false;
};

QPageSize pageSize(Paper paper)
{
    return QPageSize(QSizeF(paper.width, paper.height) / runtime::twipsPerPoint, QPageSize::Point,
                     {}, QPageSize::FuzzyMatch);
}

Outcome drawPages(PrintedDocument& document, const std::vector<int>& pages, QPdfWriter& writer,
                  const CheckedDevice& device, const Progress& progress)
{
    QPainter painter;
    if (!painter.begin(&writer))
        return Outcome::Failed;
    const int total = static_cast<int>(pages.size());
    for (int i = 0; i < total; ++i) {
        if (i > 0 && !writer.newPage())
            return Outcome::Failed;
        document.paintPage(pages[static_cast<std::size_t>(i)], painter);
        if (device.failed())
            return Outcome::Failed;
        if (!progress(i + 1, total))
            return Outcome::Cancelled;
    }
    return painter.end() ? Outcome::Done : Outcome::Failed;
}

} // namespace

Outcome writePdf(PrintedDocument& document, const std::vector<int>& pages, QIODevice& device,
                 const Progress& progress)
{
    CheckedDevice checked(device);
    QPdfWriter writer(&checked);
    writer.setPageSize(pageSize(document.paper()));
    writer.setPageMargins(QMarginsF());
    writer.setResolution(runtime::twipsPerInch); // one device unit is one twip
    writer.setTitle(document.title());
    const Outcome outcome = drawPages(document, pages, writer, checked, progress);
    return outcome == Outcome::Done && checked.failed() ? Outcome::Failed : outcome;
}

} // namespace report
