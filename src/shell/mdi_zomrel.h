#pragma once

#include <QCoreApplication>
#include <QMainWindow>

#include <array>
#include <cstdint>

class QAction;
class QMdiArea;
class QToolBar;

namespace controls {
class DataControl;
}

namespace shell {

class StatusBar;

/// The program's first window and the frame of its child windows: it works out where the store and
/// the logo lie, brings the table Orders up to date and then dispatches the toolbar's commands by
/// their tags.
class MDIZomrel : public QMainWindow
{
    Q_OBJECT

public:
    /// Loads the window. Raises what BuildOrdersTable raises; the window was then never shown.
    explicit MDIZomrel(const QString& programDirectory = QCoreApplication::applicationDirPath());
    ~MDIZomrel() override;

    /// Runs the command of the toolbar's button (1-based) by its tag; another tag does nothing.
    /// Raises 35600 where there is no such button, and what the command raises.
    void GetOrder(std::int16_t index);
    /// Creates or completes the table Orders of the store at the path.
    void BuildOrdersTable(const QString& path);

protected:
    /// Ends the process at once: nothing is asked, saved or closed.
    void closeEvent(QCloseEvent* event) override;

private:
    void buildToolbar();
    QAction* addButton(const QString& caption, const QString& tag, int picture);
    void addButtonMenu(QAction* button);
    void Form_Load(const QString& programDirectory);
    void Toolbar1_ButtonClick(const QAction& button);
    void Toolbar1_ButtonMenuClick(const QAction& buttonMenu);

    std::array<QIcon, 4> ImageList1;
    QToolBar* Toolbar1;
    StatusBar* StatusBar1;
    controls::DataControl* DataMDI;
    QMdiArea* frame_;
};

} // namespace shell
