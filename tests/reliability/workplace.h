#pragma once

#include <QString>

#include <memory>

namespace shell {
class MDIZomrel;
}

class QTableView;
class QWidget;

namespace reliability {

/// The data of a line to add. The tag identifies the line and is used for all its kinds and
/// colours. The hundredths are 50 for the width and 25 for the height.
struct Opening
{
    QString tag;
    int width = 0;
    int height = 0;
};

/// The program's main window on the store of a folder, operated through its controls. An error of
/// the program shows its box and ends the process.
class Workplace
{
public:
    explicit Workplace(const QString& folder);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    /// Triggers the toolbar's order command. A newly loaded order form gets a customer and has no
    /// chosen series.
    void newOrder();
    /// Chooses a series in the picker, with the proposed values for a monoblock.
    void chooseSeries(const QString& name, bool monoblock);
    bool hasSeries() const;
    /// Adds the opening as a line of the current order and returns the line's number.
    int addLine(const Opening& opening);
    int lineCount() const;
    /// Moves the order's grid to its last line.
    void goToLastLine();
    /// Returns the tag of the grid's current line.
    QString currentTag() const;
    void deleteLine();
    void deleteAllLines();
    void print();
    void closeOrder();
    void viewLine();
    void findOrder();
    /// Loads the order with the search form.
    void takeOrder(int number);
    void closePreview();
    void closeOrderForm();
    int currentOrder() const;

    /// Adds a series whose remark is `number` and whose eight deductions are all -number.25.
    void addSeries(const QString& name, int number);
    /// Changes the series' remark and deductions to another number.
    void changeSeries(const QString& name, int number);
    void deleteSeries(const QString& name);
    void closeSeriesForm();

    /// Types a name into the blank last row of a kind or colour grid, given by the grid's index,
    /// leaves the row and returns the new code.
    int addName(int list, const QString& name);
    /// Replaces the name in the row with this code and leaves the row.
    void changeName(int list, int code, const QString& name);
    /// Deletes the row with this code by keyboard.
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

/// Answers every question with Yes and any other box with OK, and writes other boxes to the
/// standard error stream, one line each.
void answerBoxes();

/// Returns the customer's name that the workplace gives to an order.
QString customerOf(int order);

} // namespace reliability
