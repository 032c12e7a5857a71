#pragma once

#include "calculation/opening_panel.h"
#include "support/doors.h"
#include "support/temporary_store.h"

#include <QList>
#include <QString>
#include <QVariant>
#include <QWidget>

/// An order form of a panel alone, on a store of its own, with the doors to the outside watched.
/// The shared state starts as at the program's start, with order 1 as the current one.
class PanelHost
{
public:
    PanelHost();
    ~PanelHost();
    PanelHost(const PanelHost&) = delete;
    PanelHost& operator=(const PanelHost&) = delete;

    testsupport::TemporaryStore store;
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    testsupport::FixedToday today{QDate(2026, 3, 1)};

    calculation::OpeningPanel& panel() { return *panel_; }
    QWidget& window() { return window_; }
    /// Takes the panel away, as leaving the order form does.
    void leaveOrderForm();

    /// Adds the series of the worked examples and chooses it, as the picker does.
    int chooseExample(int kanafNum, const QVariant& sign = {});
    void choose(int autoNum, const QString& name, bool isDoor);
    /// The monoblock data of the worked examples.
    void takeMonoblock();

    /// Fills the boxes without leaving any of them.
    void type(const QString& width, const QString& widthHundredths, const QString& height,
              const QString& heightHundredths);
    void add();
    /// Presses CmdAdd, whose run has to end with the run-time error.
    void addFailing(int errorNumber);
    /// Checks that one run-time box was shown and the process ended.
    void expectEnded(int errorNumber);

    /// The cell of the last line that was stored.
    QVariant stored(const QString& field);
    int lineCount();
    QStringList boxTexts() const;

private:
    QWidget window_;
    calculation::OpeningPanel* panel_;
};
