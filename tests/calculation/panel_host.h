#pragma once

#include "calculation/opening_panel.h"
#include "support/doors.h"
#include "support/temporary_store.h"

#include <QList>
#include <QString>
#include <QVariant>
#include <QWidget>

/// A stand-in for the order form: one opening panel on a store of its own, with recorded message
/// boxes and program ends. The shared state is as at program start, with order 1 as the current
/// order.
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
    /// Destroys the panel, as unloading the order form does.
    void leaveOrderForm();

    /// Adds the series of the worked examples and chooses it, as the picker does.
    int chooseExample(int kanafNum, const QVariant& sign = {});
    void choose(int autoNum, const QString& name, bool isDoor);
    /// Sets the monoblock data of the worked examples.
    void takeMonoblock();

    /// Fills the boxes of the opening without moving the focus.
    void type(const QString& width, const QString& widthHundredths, const QString& height,
              const QString& heightHundredths);
    void add();
    /// Clicks CmdAdd and expects this run-time error.
    void addFailing(int errorNumber);
    /// Expects that one run-time error box was shown and the process ended.
    void expectEnded(int errorNumber);

    /// Returns a field of the last stored line.
    QVariant stored(const QString& field);
    int lineCount();
    QStringList boxTexts() const;

private:
    QWidget window_;
    calculation::OpeningPanel* panel_;
};
