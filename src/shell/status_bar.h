#pragma once

#include <QStatusBar>

class QLabel;

namespace shell {

/// The frame's status bar: the date, the time and the product line in five panels. Date and time
/// are the system's and run on by themselves.
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
