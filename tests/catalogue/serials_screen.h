#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/fr_serials.h"

#include "support/doors.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTest>

/// Types a text of any script into the widget that has the focus.
inline void type(const QString& text)
{
    for (const QChar letter : text) {
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                            QString(letter), Qt::NoModifier);
    }
}

/// A store without series, with recorded message boxes and program ends.
struct SerialsStage
{
    int add(const QString& name, double deduction = -1)
    {
        return store.addSeries(name, QList<double>(8, deduction), 2, 3);
    }
    QStringList names()
    {
        QStringList all;
        const QString sql = QStringLiteral("SELECT Name FROM Serials ORDER BY AutoNum");
        for (const QList<QVariant>& row : store.rows(sql))
            all.append(row[0].toString());
        return all;
    }

    testsupport::TemporaryStore store;
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
};

/// The controls that are enabled in one state of the series editor.
struct SerialsState
{
    bool frame;
    bool commands;
};
inline constexpr SerialsState browsing{false, true};
inline constexpr SerialsState newSeries{true, true};
inline constexpr SerialsState editing{true, false};

/// Shows the series editor and unloads it in the destructor.
class SerialsScreen
{
public:
    SerialsScreen() : form_(&catalogue::frSerials())
    {
        form_->Show();
        if (!QTest::qWaitForWindowActive(form_))
            qFatal("the form did not become active");
    }
    ~SerialsScreen()
    {
        if (isOpen())
            form_->Unload();
        if (!QTest::qWaitFor([this] { return form_.isNull(); }))
            qFatal("the form did not close");
    }
    SerialsScreen(const SerialsScreen&) = delete;
    SerialsScreen& operator=(const SerialsScreen&) = delete;

    bool isOpen() const { return !form_.isNull() && form_->isVisible(); }
    catalogue::FrSerials& form() const { return *form_; }

    template <typename Widget = QWidget>
    Widget* find(const QString& name) const
    {
        return testsupport::child<Widget>(*form_, name);
    }
    QLineEdit* box(const QString& name) const { return find<QLineEdit>(name); }
    QLineEdit* sign(int i) const { return box(QStringLiteral("TextSign_%1").arg(i)); }
    QLineEdit* num(int i) const { return box(QStringLiteral("TextNum_%1").arg(i)); }
    QComboBox* list(const QString& name) const { return find<QComboBox>(name); }
    bool isEnabled(const char* name) const { return find(QString::fromLatin1(name))->isEnabled(); }

    bool isIn(const SerialsState& state) const
    {
        for (const char* name : {"CmdNew", "CmdAdd", "CmdDelete", "DBGrid1"}) {
            if (isEnabled(name) != state.commands)
                return false;
        }
        return isEnabled("FrameOrder") == state.frame && isEnabled("CmdUpdate") &&
               isEnabled("CmdEnd");
    }

    /// Clicks a row of the grid.
    void moveTo(int row) const
    {
        auto* grid = find<QTableView>(QStringLiteral("DBGrid1"));
        const QRect cell = grid->visualRect(grid->model()->index(row, 2));
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
        if (grid->currentIndex().row() != row)
            qFatal("the grid did not move to row %d", row);
    }

    void press(const char* button) const
    {
        QTest::mouseClick(find<QPushButton>(QString::fromLatin1(button)), Qt::LeftButton);
    }

    /// Returns the sign, the whole part and the hundredths of a deduction as one text, such as "- 2
    /// 50".
    QString deduction(int i) const
    {
        return QStringList{sign(i)->text(), num(2 * i)->text(), num(2 * i + 1)->text()}.join(
            QLatin1Char(' '));
    }
    void setDeduction(int i, const QString& text) const
    {
        const QStringList parts = text.split(QLatin1Char(' '));
        sign(i)->setText(parts[0]);
        num(2 * i)->setText(parts[1]);
        num(2 * i + 1)->setText(parts[2]);
    }

private:
    QPointer<catalogue::FrSerials> form_;
};
