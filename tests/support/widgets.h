#pragma once

#include <QApplication>
#include <QStringList>
#include <QTest>
#include <QWidget>

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

/// Sets the platform, the locale, the style and the direction that tests run under. Called by
/// ZOMREL_QTEST_MAIN before and after the application is made.
void beforeApplication();
void afterApplication();

} // namespace testsupport

#define ZOMREL_QTEST_MAIN(TestClass)                                                               \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        testsupport::beforeApplication();                                                          \
        QApplication application(argc, argv);                                                      \
        testsupport::afterApplication();                                                           \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
