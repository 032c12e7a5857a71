#pragma once

#include <QDialog>
#include <QTimer>

class QLabel;
class QPushButton;

namespace shell {

/// Says that the program waits for its store, and lets the user end the program. The window cannot
/// be closed: it disappears when the store answers, and the user must be able to choose until then.
class StallWindow : public QDialog
{
    Q_OBJECT

public:
    StallWindow(const QString& what, int seconds);

signals:
    /// The user has chosen to end the program.
    void endChosen();

protected:
    /// Called for Escape, and if the window manager closes the window.
    void reject() override {}

private:
    void countOn();
    void cmdEnd_Click();

    int seconds_;
    QTimer second_;
    QLabel* LabelWaiting;
    QLabel* LabelChoice;
    QPushButton* CmdEnd;
};

} // namespace shell
