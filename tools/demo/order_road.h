#pragma once

#include "demo/openings.h"

#include <QString>

#include <memory>

class QWidget;

namespace shell {
class MDIZomrel;
}

namespace demo {

/// The exception for an opening that was not added to the order, with the reason.
struct Refused
{
    QString reason;
};

/// Operates the program's forms in order to enter one order. Presses buttons and fills input boxes
/// as a user does, and saves a picture of each form.
class OrderRoad
{
public:
    /// Takes two folders: the program folder, which contains the store and the logo, and the output
    /// folder for the pictures.
    OrderRoad(const QString& folder, const QString& out);
    ~OrderRoad();

    void openOrder();
    /// Chooses the opening's series, enters the opening's measures and adds the order line. Throws
    /// Refused if a form refuses the opening, if the store lacks the opening's series, or if a door
    /// thickness is given for a series that is no door series; no order line is stored in these
    /// cases.
    void addOpening(const Opening& opening);
    void viewLine();
    /// Opens the order's print preview. Saves the report as PDF, HTML and text, and every other
    /// document in the preview's list as PDF.
    void print();

private:
    void fillPicker(QWidget& picker, const Opening& opening);
    void fillMonoblock(QWidget& picker, const Monoblock& monoblock);
    void saveShopDocuments(QWidget& preview);
    void picture(QWidget& window, const QString& name);

    QString out_;
    int pictures_ = 0;
    bool pickerShown_ = false;
    bool monoblockShown_ = false;
    std::unique_ptr<shell::MDIZomrel> window_;
};

} // namespace demo
