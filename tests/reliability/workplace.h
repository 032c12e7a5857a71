#pragma once

#include <QString>

#include <memory>

namespace shell {
class MDIZomrel;
}

class QTableView;
class QWidget;

namespace reliability {

/// One line to add. The tag tells the line from all others: it goes into all its kinds and colours.
/// Behind the whole width stand 50 hundredths, behind the height 25.
struct Opening
{
    QString tag;
    int width = 0;
    int height = 0;
};

/// The program's main window on the store of a folder, worked by its own controls as a user works
/// it. A failure of the program shows its box and ends the process, as it does for the user.
class Workplace
{
public:
    explicit Workplace(const QString& folder);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    /// The toolbar's order command; an order form that was not loaded gets its customer and has no
    /// series afterwards.
    void newOrder();
    /// Takes a series in the picker, with the picker's own proposals for a monoblock.
    void chooseSeries(const QString& name, bool monoblock);
    bool hasSeries() const;
    /// Adds the opening as a line of the current order and returns the number that it got.
    int addLine(const Opening& opening);
    int lineCount() const;
    /// Brings the order's grid to its last line.
    void goToLastLine();
    /// The tag of the grid's current line.
    QString currentTag() const;
    void deleteLine();
    void deleteAllLines();
    void print();
    void closeOrder();
    void viewLine();
    void findOrder();
    /// Takes the order on the search screen.
    void takeOrder(int number);
    void closePreview();
    void closeOrderForm();
    int currentOrder() const;

    /// Adds a series whose remark is `number` and whose eight deductions are all -number.25.
    void addSeries(const QString& name, int number);
    /// Gives the series another number in the same manner.
    void changeSeries(const QString& name, int number);
    void deleteSeries(const QString& name);
    void closeSeriesForm();

    /// Types a name into the blank last row of a list of kinds and colours, told by the index of
    /// its grid, leaves the row and returns the code that it got.
    int addName(int list, const QString& name);
    /// Types another name over the row with the code and leaves it.
    void changeName(int list, int code, const QString& name);
    /// Deletes the row with the code by the keyboard.
    void deleteName(int list, int code);
    void closeKinds();
    void openAndCloseKinds();

private:
    void trigger(const QString& tag);
    QWidget& order() const;
    QWidget& series() const;
    void goToSeries(const QString& name);
    QTableView& openList(int list);
    void goToName(QTableView& grid, int code);

    std::unique_ptr<shell::MDIZomrel> window_;
};

/// Answers every question with Yes and any other box with OK, and writes what is no question to
/// standard error as one line.
void answerBoxes();

/// The customer that the workplace gives to an order.
QString customerOf(int order);

} // namespace reliability
