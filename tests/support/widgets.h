#pragma once

#include "driving/controls.h"
#include "support/test_failure.h"

#include <QApplication>
#include <QStringList>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <type_traits>

class QMessageBox;
class QTableView;

namespace testsupport {

using driving::cellText;

/// Returns the child with this object name. If there is none, the test fails with the existing
/// names.
template <typename Widget>
Widget* child(const QObject& parent, const QString& name)
{
    return &driving::control<Widget>(parent, name);
}

/// Returns the object names of the visible and enabled widgets in the order in which Tab reaches
/// them, starting at `first`, for one complete round.
QStringList tabOrderFrom(QWidget* first);

/// Shows a window and waits until it is the active window and receives the keyboard input.
bool showActive(QWidget& window);

/// Returns the object name of the focus widget, or an empty text if there is none.
QString focusName();

/// Click into a cell with the left button, and double-click it.
void clickCell(QTableView& view, int row, int column);
void doubleClickCell(QTableView& view, int row, int column);

/// Replaces the text of the current cell of an editable grid and presses Enter. Works for text of
/// any script.
void typeIntoCell(QTableView& view, const QString& text);

/// Returns the visible message box, or nullptr if there is none.
QMessageBox* shownMessageBox();

/// Runs an action on the next message box that opens during the object's lifetime, inside the box's
/// event loop. The action must close the box.
class NextMessageBox
{
public:
    explicit NextMessageBox(std::function<void(QMessageBox&)> action);
    /// Returns true after a box has opened.
    bool hasCome() const { return hasCome_; }

private:
    QTimer poll_;
    bool hasCome_ = false;
};

/// Set the platform, the locale, the style and the layout direction of the tests. ZOMREL_QTEST_MAIN
/// calls the first function before the application object is created and the second one afterwards.
void beforeApplication();
void afterApplication();

/// Runs all tests of the class. Returns the exit status after the application object and everything
/// that it left behind have been destroyed. Application is QApplication, or QCoreApplication for
/// tests without windows.
template <typename TestClass, typename Application>
int runTests(int argc, char** argv)
{
    beforeApplication();
    int status = 0;
    {
        Application application(argc, argv);
        if constexpr (std::is_same_v<Application, QApplication>)
            afterApplication();
        TestClass test;
        status = QTest::qExec(&test, argc, argv);
    }
    return exitStatus(status);
}

} // namespace testsupport

#define ZOMREL_QTEST_MAIN(TestClass)                                                               \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return testsupport::runTests<TestClass, QApplication>(argc, argv);                         \
    }

#define ZOMREL_GUILESS_QTEST_MAIN(TestClass)                                                       \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return testsupport::runTests<TestClass, QCoreApplication>(argc, argv);                     \
    }
