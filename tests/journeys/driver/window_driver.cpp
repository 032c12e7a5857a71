#include "driver/window_driver.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QLocalSocket>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolBar>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// Returns the widget with this name, preferring a visible one. "Form/Name" searches only inside
/// that form, because several forms have controls with the same name.
QWidget* widgetNamed(const QString& path)
{
    const QString form = path.section(u'/', 0, -2);
    const QString name = path.section(u'/', -1);
    QWidget* hidden = nullptr;
    for (QWidget* each : QApplication::allWidgets()) {
        if (each->objectName() != name)
            continue;
        const QWidget* host = each->parentWidget();
        while (!form.isEmpty() && host != nullptr && host->objectName() != form)
            host = host->parentWidget();
        if (!form.isEmpty() && host == nullptr)
            continue;
        if (each->isVisible())
            return each;
        hidden = each;
    }
    return hidden;
}

QWidget* keyTarget()
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* focus = QApplication::focusWidget())
        return focus;
    return QApplication::activeWindow();
}

QString textOf(const QWidget* widget)
{
    for (const char* property : {"text", "currentText", "caption", "title", "windowTitle"}) {
        const QVariant value = widget->property(property);
        if (value.isValid())
            return value.toString();
    }
    return {};
}

QJsonObject describe(const QWidget* widget)
{
    if (widget == nullptr)
        return {{u"exists"_s, false}};
    return {{u"exists"_s, true},
            {u"name"_s, widget->objectName()},
            {u"class"_s, QString::fromLatin1(widget->metaObject()->className())},
            {u"visible"_s, widget->isVisible()},
            {u"enabled"_s, widget->isEnabled()},
            {u"focus"_s, widget->hasFocus()},
            {u"text"_s, textOf(widget)}};
}

QJsonObject describeBox(const QMessageBox* box)
{
    if (box == nullptr)
        return {{u"exists"_s, false}};
    QJsonArray buttons;
    for (const QAbstractButton* each : box->buttons())
        buttons.append(each->text());
    return {{u"exists"_s, true},
            {u"text"_s, box->text()},
            {u"explanation"_s, box->informativeText()},
            {u"title"_s, box->windowTitle()},
            {u"icon"_s, box->icon()},
            {u"buttons"_s, buttons}};
}

QMessageBox* shownBox()
{
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

QJsonObject describeGrid(const QTableView* grid)
{
    if (grid == nullptr || grid->model() == nullptr)
        return {{u"exists"_s, false}};
    QJsonArray rows;
    const QAbstractItemModel* model = grid->model();
    for (int row = 0; row < qMin(model->rowCount(), 200); ++row) {
        QJsonArray cells;
        for (int column = 0; column < model->columnCount(); ++column)
            cells.append(model->index(row, column).data().toString());
        rows.append(cells);
    }
    return {{u"exists"_s, true},
            {u"rowCount"_s, model->rowCount()},
            {u"current"_s, grid->currentIndex().row()},
            {u"rows"_s, rows}};
}

/// Types one character. A character without a key code, such as a Hebrew letter, is sent as text
/// only, as an input method does.
void typeSign(QWidget* target, QChar sign)
{
    if (sign.unicode() < 128) {
        QTest::keyClick(target, sign.toLatin1());
        return;
    }
    for (const bool press : {true, false})
        QTest::simulateEvent(target, press, Qt::Key_unknown, Qt::NoModifier, QString(sign), false);
}

/// Queues the input, so that it runs after the answer has been sent.
void later(QObject* context, std::function<void()> input)
{
    QTimer::singleShot(0, context, std::move(input));
}

void clickWidget(QWidget* widget, bool twice)
{
    later(widget, [widget, twice] {
        const QPoint middle = widget->rect().center();
        if (twice)
            QTest::mouseDClick(widget, Qt::LeftButton, Qt::NoModifier, middle);
        else
            QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, middle);
    });
}

void clickCell(QTableView* grid, int row, int column, bool twice)
{
    later(grid, [grid, row, column, twice] {
        const QModelIndex cell = grid->model()->index(row, column);
        grid->scrollTo(cell);
        const QPoint at = grid->visualRect(cell).center();
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        if (twice)
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    });
}

/// Clicks the toolbar button whose action has this tag, or triggers the action itself if it is an
/// entry of a button's menu.
bool clickTag(const QString& tag)
{
    for (QWidget* each : QApplication::allWidgets()) {
        const auto* bar = qobject_cast<QToolBar*>(each);
        if (bar == nullptr)
            continue;
        for (QAction* action : bar->actions()) {
            if (action->data().toString() == tag) {
                clickWidget(bar->widgetForAction(action), false);
                return true;
            }
            const QMenu* menu = action->menu();
            for (QAction* entry : menu != nullptr ? menu->actions() : QList<QAction*>()) {
                if (entry->data().toString() == tag) {
                    later(entry, [entry] { entry->trigger(); });
                    return true;
                }
            }
        }
    }
    return false;
}

bool clickBoxButton(const QString& caption)
{
    QMessageBox* box = shownBox();
    for (QAbstractButton* each : box != nullptr ? box->buttons() : QList<QAbstractButton*>()) {
        if (each->text() == caption) {
            clickWidget(each, false);
            return true;
        }
    }
    return false;
}

} // namespace

WindowDriver::WindowDriver(const QString& socketName)
{
    connect(&server_, &QLocalServer::newConnection, this,
            [this] { serve(server_.nextPendingConnection()); });
    if (!server_.listen(socketName))
        qFatal("cannot listen on %s", qPrintable(socketName));
}

void WindowDriver::serve(QLocalSocket* socket)
{
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
        while (socket->canReadLine()) {
            const QJsonObject request = QJsonDocument::fromJson(socket->readLine()).object();
            socket->write(QJsonDocument(answer(request)).toJson(QJsonDocument::Compact) + '\n');
            socket->flush();
        }
    });
}

QJsonObject WindowDriver::answer(const QJsonObject& request)
{
    const QString command = request[u"do"_s].toString();
    const QString name = request[u"name"_s].toString();
    QWidget* widget = name.isEmpty() ? nullptr : widgetNamed(name);
    const bool twice = request[u"twice"_s].toBool();

    if (command == u"describe")
        return describe(widget);
    if (command == u"box")
        return describeBox(shownBox());
    if (command == u"focus")
        return describe(QApplication::focusWidget());
    if (command == u"grid")
        return describeGrid(qobject_cast<QTableView*>(widget));
    if (command == u"property")
        return {
            {u"value"_s,
             QJsonValue::fromVariant(
                 widget != nullptr ? widget->property(request[u"property"_s].toString().toLatin1())
                                   : QVariant())}};
    if (command == u"tag")
        return {{u"exists"_s, clickTag(request[u"tag"_s].toString())}};
    if (command == u"answer")
        return {{u"exists"_s, clickBoxButton(request[u"caption"_s].toString())}};
    if (command == u"screenshot") {
        QWidget* shown = widget != nullptr ? widget : QApplication::activeWindow();
        return {
            {u"exists"_s, shown != nullptr && shown->grab().save(request[u"file"_s].toString())}};
    }
    if (command == u"type" || command == u"key") {
        QWidget* target = keyTarget();
        if (target == nullptr)
            return {{u"exists"_s, false}};
        const QString text = request[u"text"_s].toString();
        const auto key = static_cast<Qt::Key>(request[u"key"_s].toInt());
        const auto modifiers = Qt::KeyboardModifiers::fromInt(request[u"modifiers"_s].toInt());
        later(target, [=] {
            if (text.isEmpty())
                QTest::keyClick(target, key, modifiers);
            else
                for (const QChar sign : text)
                    // The first character may open an editor.
                    typeSign(keyTarget(), sign);
        });
        return describe(target);
    }
    if (command == u"click" && widget != nullptr)
        clickWidget(widget, twice);
    if (command == u"cell" && widget != nullptr)
        clickCell(qobject_cast<QTableView*>(widget), request[u"row"_s].toInt(),
                  request[u"column"_s].toInt(), twice);
    return describe(widget);
}
