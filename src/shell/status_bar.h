#pragma once

#include <QStatusBar>

class QLabel;

namespace shell {

/// The main window's status bar. It has five panels: the date, its caption, the time, its caption,
/// and the name and purpose of the product. Date and time come from the system clock and update
/// automatically.
class StatusBar : public QStatusBar
{
    Q_OBJECT

public:
    explicit StatusBar(QWidget* parent);

private:
    QLabel* addPanel(int index, const QString& text, int twips);
    void showNow();

    QLabel* date_;
    QLabel* time_;
};

} // namespace shell
