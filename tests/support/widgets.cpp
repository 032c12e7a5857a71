#include "support/widgets.h"

#include "support/doors.h"
#include "support/plain_environment.h"

#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QTableView>

#include <algorithm>

namespace testsupport {

QStringList tabOrderFrom(QWidget* first)
{
    QStringList names;
    QWidget* each = first;
    do {
        if ((each->focusPolicy() & Qt::TabFocus) != 0 && each->isVisible() && each->isEnabled() &&
            !each->objectName().isEmpty() && each->focusProxy() == nullptr)
            names.append(each->objectName());
        each = each->nextInFocusChain();
    } while (each != first);
    return names;
}

bool showActive(QWidget& window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

QString focusName()
{
    const QWidget* widget = QApplication::focusWidget();
    return widget != nullptr ? widget->objectName() : QString();
}

void clickCell(QTableView& view, int row, int column)
{
    const QModelIndex cell = view.model()->index(row, column);
    view.scrollTo(cell);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(cell).center());
}

void doubleClickCell(QTableView& view, int row, int column)
{
    clickCell(view, row, column);
    const QPoint place = view.visualRect(view.model()->index(row, column)).center();
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
}

void typeIntoCell(QTableView& view, const QString& text)
{
    const auto send = [](QWidget& widget, Qt::Key key, const QString& letter = {}) {
        QTest::sendKeyEvent(QTest::Click, &widget, key, letter, Qt::NoModifier);
    };
    // The first character opens the editor of the cell, which receives the other characters.
    send(view, Qt::Key_unknown, text.left(1));
    const QList<QLineEdit*> editors = view.findChildren<QLineEdit*>();
    const auto open = std::find_if(editors.begin(), editors.end(),
                                   [](const QLineEdit* each) { return !each->isHidden(); });
    if (open == editors.end())
        qFatal("%s opens no editor", qPrintable(view.objectName()));
    QLineEdit& editor = **open;
    for (const QChar letter : text.mid(1))
        send(editor, Qt::Key_unknown, QString(letter));
    send(editor, Qt::Key_Return);
}

QMessageBox* shownMessageBox()
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        auto* box = qobject_cast<QMessageBox*>(each);
        if (box != nullptr && box->isVisible())
            return box;
    }
    return nullptr;
}

NextMessageBox::NextMessageBox(std::function<void(QMessageBox&)> action)
{
    QObject::connect(&poll_, &QTimer::timeout, &poll_, [this, action = std::move(action)] {
        QMessageBox* box = shownMessageBox();
        if (box == nullptr)
            return;
        poll_.stop();
        hasCome_ = true;
        action(*box);
    });
    poll_.start(1);
}

void beforeApplication()
{
    setPlainEnvironment();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QLocale::setDefault(QLocale::c());
    failOnUnwatchedBoxes();
}

void afterApplication()
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setLayoutDirection(Qt::RightToLeft);
}

} // namespace testsupport
