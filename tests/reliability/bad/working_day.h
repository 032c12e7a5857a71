#pragma once

#include "base/input_boxes.h"
#include "calculation/opening_panel.h"
#include "orders/fr_order.h"
#include "platform/controls/form.h"
#include "platform/dao/database.h"
#include "shell/start.h"
#include "support/doors.h"
#include "support/widgets.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QToolBar>

/// One working day in this process: the program starts, an order is opened, a series is chosen and
/// a line is added, as far as the store permits. A run-time error box ends the day.
class WorkingDay
{
public:
    WorkingDay() { dao::DBEngine::instance().Workspaces(0).setLockWait(lockWait); }
    ~WorkingDay()
    {
        leave();
        dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::seconds(5));
    }
    WorkingDay(const WorkingDay&) = delete;
    WorkingDay& operator=(const WorkingDay&) = delete;

    bool start(const QString& folder)
    {
        window_ = shell::openMainWindow(folder);
        return goesOn() && window_ != nullptr;
    }
    bool openOrder()
    {
        trigger(QStringLiteral("Order"));
        return goesOn() && form() != nullptr;
    }
    bool chooseSeries()
    {
        click(QStringLiteral("CmdPicSerial"));
        if (!goesOn())
            return false;
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (each->objectName() == u"FormSelectSerial" && each->isVisible())
                testsupport::child<QPushButton>(*each, QStringLiteral("CmdPic"))->click();
        }
        return goesOn();
    }
    bool addLine()
    {
        const std::array opening{QStringLiteral("120"), QStringLiteral("00"), QStringLiteral("100"),
                                 QStringLiteral("00")};
        for (std::size_t i = 0; i < opening.size(); ++i)
            form()->opening().TextNum[i]->setText(opening[i]);
        click(QStringLiteral("CmdAdd"));
        return goesOn();
    }
    void click(const QString& button) { click(*form(), button); }
    static void click(const QWidget& on, const QString& button)
    {
        testsupport::child<QPushButton>(on, button)->click();
    }
    /// Triggers the toolbar command with this tag.
    void trigger(const QString& tag)
    {
        for (QAction* each :
             testsupport::child<QToolBar>(*window_, QStringLiteral("Toolbar1"))->actions()) {
            if (each->data().toString() == tag)
                each->trigger();
        }
    }
    /// Returns the child window of this type, or nullptr if there is none.
    template <typename Form>
    Form* child() const
    {
        return window_->findChild<Form*>();
    }
    orders::FrOrder* form() const { return window_->findChild<orders::FrOrder*>(); }

    /// Returns false once the program has ended.
    bool goesOn() const { return !end.exitStatus().has_value(); }
    /// Returns true if the program ended with exit status 1 and the last box shows an error.
    bool endedWithABox()
    {
        boxes.takeUnexpected(); // The last box is checked below.
        return end.exitStatus() == 1 && !boxes.shown().empty() &&
               (boxes.shown().back().flags & runtime::vbCritical) != 0 &&
               (boxes.shown().back().text.startsWith(u"Run-time error '") ||
                boxes.shown().back().text.startsWith(u"שגיאה מספר: (3260)"));
    }
    QString lastBox() const
    {
        return boxes.shown().empty() ? QString() : boxes.shown().back().text;
    }

    /// Closes every window and connection, as the end of the process does.
    void leave()
    {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (each->objectName() == u"FormSelectSerial" || each->objectName() == u"FormView" ||
                each->objectName() == u"DataReport1")
                each->close();
        }
        if (window_ != nullptr && form() != nullptr)
            form()->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window_.reset();
    }

    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;

private:
    static constexpr std::chrono::milliseconds lockWait{20};

    testsupport::FixedToday today_{QDate(2026, 3, 1)};
    std::unique_ptr<shell::MDIZomrel> window_;
};
