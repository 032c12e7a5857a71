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

/// The main window, which contains the child windows. Form_Load sets the paths of the store and of
/// the logo and upgrades the table Orders. Each toolbar button has a tag, and the tag determines
/// the command that the button runs.
class MDIZomrel : public QMainWindow
{
    Q_OBJECT

public:
    /// Opens the store and builds the window, but does not show it. Throws any error of
    /// BuildOrdersTable.
    explicit MDIZomrel(const QString& programDirectory = QCoreApplication::applicationDirPath());
    ~MDIZomrel() override;

    /// Runs the command of the toolbar button at this index, counted from 1. The button's tag
    /// determines the command; an unknown tag does nothing. Throws IndexOutOfBounds (35600) if
    /// there is no such button, and any error of the command.
    void GetOrder(std::int16_t index);
    /// Creates the table Orders in the store at the path if it is missing, and adds missing fields.
    void BuildOrdersTable(const QString& path);

protected:
    /// Ends the process immediately, without a question and without saving anything.
    void closeEvent(QCloseEvent* event) override;

private:
    void buildToolbar();
    QAction* addButton(const QString& caption, const QString& tag, int picture);
    void addButtonMenu(QAction* button);
    void addKeys();
    void openSearch();
    void Form_Load(const QString& programDirectory);
    void Toolbar1_ButtonClick(const QAction& button);
    void Toolbar1_ButtonMenuClick(const QAction& buttonMenu);

    std::array<QIcon, 4> ImageList1;
    QToolBar* Toolbar1;
    StatusBar* StatusBar1 = nullptr;
    controls::DataControl* DataMDI;
    QMdiArea* frame_;
};

} // namespace shell
