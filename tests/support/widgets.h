#pragma once

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

/// Names of all named children, for the message of a finder that found nothing.
QString namesBelow(const QObject& parent);

/// The child with the object name; the test fails with the names that exist where there is none.
template <typename Widget>
Widget* child(const QObject& parent, const QString& name)
{
    auto* found = parent.findChild<Widget*>(name);
    if (found == nullptr)
        qFatal("no child %s; there are: %s", qPrintable(name), qPrintable(namesBelow(parent)));
    return found;
}

/// Object names in the order in which Tab reaches them from `first`, visible and enabled ones,
/// until it comes round.
QStringList tabOrderFrom(QWidget* first);

/// Shows a window and waits until it is the active one, so that its focus is the keyboard's.
bool showActive(QWidget& window);

/// Object name of the widget that has the keyboard; empty where none has.
QString focusName();

/// The text of a cell, and a click of the left button into it.
QString cellText(const QTableView& view, int row, int column);
void clickCell(QTableView& view, int row, int column);
void doubleClickCell(QTableView& view, int row, int column);

/// Types over the current cell of an editable grid and ends with Enter; any script.
void typeIntoCell(QTableView& view, const QString& text);

/// The message box in sight, null where there is none.
QMessageBox* shownMessageBox();

/// Runs an action on the next message box that comes up while it lives, from inside the box's own
/// loop. The action has to close the box.
class NextMessageBox
{
public:
    explicit NextMessageBox(std::function<void(QMessageBox&)> action);
    /// True once a box has come up.
    bool hasCome() const { return hasCome_; }

private:
    QTimer poll_;
    bool hasCome_ = false;
};

/// Sets the environment, the platform, the locale, the style and the direction that tests run
/// under, and makes each message box that no test watches a failure. Called before and after the
/// application is made.
void beforeApplication();
void afterApplication();

/// Runs all tests of the class and gives the exit status, once the application and all that it left
/// behind have gone. The application is a QApplication, or a QCoreApplication for tests that have
/// no windows of their own.
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
