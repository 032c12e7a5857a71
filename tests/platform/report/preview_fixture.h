#pragma once

#include "platform/report/data_report.h"
#include "platform/report/doors.h"
#include "platform/report/preview_pages.h"
#include "platform/report/small_report.h"

#include "support/doors.h"
#include "support/widgets.h"

#include <QAction>
#include <QLineEdit>
#include <QMainWindow>
#include <QTest>
#include <QToolBar>

#include <functional>
#include <optional>

namespace testsupport {

/// The small report in its preview on small paper. All requests to the desktop are recorded.
class PreviewFixture
{
public:
    explicit PreviewFixture(std::shared_ptr<MemoryRows> shown = smallRows(30));
    ~PreviewFixture();
    PreviewFixture(const PreviewFixture&) = delete;
    PreviewFixture& operator=(const PreviewFixture&) = delete;

    /// Shows the rows and waits until the window is visible.
    void show(std::shared_ptr<MemoryRows> shown);
    QMainWindow& window() const;
    report::PreviewPages& pages() const
    {
        return *child<report::PreviewPages>(window(), QStringLiteral("PreviewPages"));
    }
    QAction& action(const QString& name) const { return *child<QAction>(window(), name); }
    /// Clicks the toolbar button of an action.
    void click(const QString& actionName) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    void type(const QString& editName, const QString& text) const;

    std::shared_ptr<MemoryRows> rows;
    report::DataReport report;
    RecordedBoxes boxes;
    RecordedEnd end;
    QString chosenFile; ///< The file that the file dialog returns.
    std::vector<report::FileRequest> fileRequests;
    std::function<bool(QPrinter&, int pageCount)>
        answerPrinter; ///< Fills in the print dialog; if not set, the dialog is cancelled.

private:
    report::PaperDoor::Function formerPaper_;
    report::FileDoor::Function formerFile_;
    report::PrinterDoor::Function formerPrinter_;
};

} // namespace testsupport
