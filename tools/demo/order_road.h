#pragma once

#include "demo/openings.h"

#include <QString>

#include <memory>

class QWidget;

namespace shell {
class MDIZomrel;
}

namespace demo {

/// The reason why an opening was not added.
struct Refused
{
    QString reason;
};

/// Drives the program's real forms through one order. It presses buttons and fills boxes as a user
/// does, and saves a picture of each screen.
class OrderRoad
{
public:
    /// Takes the program folder, which contains the store and the logo, and the output folder for
    /// the pictures.
    OrderRoad(const QString& folder, const QString& out);
    ~OrderRoad();

    void openOrder();
    /// Chooses the opening's series, enters its measures and adds the line. Throws Refused if a
    /// form refuses the opening or does not offer a value that it names; nothing is stored in that
    /// case.
    void addOpening(const Opening& opening);
    void viewLine();
    /// Opens the order's print preview and saves the report as PDF, HTML and text, and the
    /// documents that are listed after it as PDF.
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
