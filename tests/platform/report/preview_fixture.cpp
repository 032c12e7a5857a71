#include "platform/report/preview_fixture.h"

namespace testsupport {

using namespace report;
using namespace Qt::StringLiterals;

PreviewFixture::PreviewFixture(std::shared_ptr<MemoryRows> shown)
    : report(smallReport), formerPaper_(paperDoor().replace([] { return smallPaper; })),
      formerFile_(fileDoor().replace([this](const FileRequest& request) {
          fileRequests.push_back(request);
          return chosenFile;
      })),
      formerPrinter_(printerDoor().replace([this](QPrinter& printer, QWidget*, int pageCount) {
          return answerPrinter != nullptr && answerPrinter(printer, pageCount);
      }))
{
    report.Sections(1).Controls(u"Number"_s).setCaption(u"17"_s);
    show(std::move(shown));
}

PreviewFixture::~PreviewFixture()
{
    paperDoor().replace(std::move(formerPaper_));
    fileDoor().replace(std::move(formerFile_));
    printerDoor().replace(std::move(formerPrinter_));
}

void PreviewFixture::show(std::shared_ptr<MemoryRows> shown)
{
    rows = std::move(shown);
    report.setDataSource(rows);
    report.Show();
    if (!QTest::qWaitForWindowActive(&window()))
        qFatal("the preview is not the active window");
}

QMainWindow& PreviewFixture::window() const
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->objectName() == smallReport.name)
            return *qobject_cast<QMainWindow*>(each);
    }
    qFatal("no preview is open");
}

void PreviewFixture::click(const QString& actionName) const
{
    for (QToolBar* bar : window().findChildren<QToolBar*>()) {
        if (QWidget* button = bar->widgetForAction(&action(actionName)))
            QTest::mouseClick(button, Qt::LeftButton);
    }
}

void PreviewFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    // On a slow machine the command before this one has shown its progress in a dialog, and the
    // window becomes active again only some time after the dialog.
    window().activateWindow();
    if (!QTest::qWaitForWindowActive(&window()))
        qFatal("the preview is not the active window");
    QTest::keyClick(&window(), key, modifiers);
}

void PreviewFixture::type(const QString& editName, const QString& text) const
{
    auto* edit = child<QLineEdit>(window(), editName);
    edit->setFocus();
    edit->selectAll();
    edit->insert(text);
    QTest::keyClick(edit, Qt::Key_Return);
}

} // namespace testsupport
