#pragma once

#include <QDialog>
#include <QTimer>

class QLabel;
class QPushButton;

namespace shell {

/// A window that says that the program waits for its store, and that lets the user end the program.
/// The user cannot close the window. It disappears when the store responds.
class StallWindow : public QDialog
{
    Q_OBJECT

public:
    StallWindow(const QString& what, int seconds);

signals:
    /// Emitted when the user has chosen to end the program.
    void endChosen();

protected:
    /// Does nothing, so that neither Escape nor the window manager closes the window.
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
