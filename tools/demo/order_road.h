#pragma once

#include "demo/openings.h"

#include <QString>

#include <memory>

class QWidget;

namespace shell {
class MDIZomrel;
}

namespace demo {

/// Why an opening was not added.
struct Refused
{
    QString reason;
};

/// The road of one order through the program's real forms: it presses their buttons and fills their
/// boxes as a user does, and leaves a picture of each screen on the way.
class OrderRoad
{
public:
    /// `folder` is where the program would lie: the store and the logo are looked for in it.
    /// Pictures go to `out`.
    OrderRoad(const QString& folder, const QString& out);
    ~OrderRoad();

    void openOrder();
    /// Chooses the opening's series, types it in and adds it. Throws Refused where a form refuses
    /// it or does not offer what it names; nothing of it is stored then.
    void addOpening(const Opening& opening);
    void viewLine();
    /// Prints the order into the preview and leaves it as PDF, HTML and text.
    void print();

private:
    void chooseSeries(const Opening& opening);
    void fillMonoblock(QWidget& picker, const Monoblock& monoblock);
    void picture(QWidget& window, const QString& name);

    QString out_;
    int pictures_ = 0;
    bool pickerShown_ = false;
    bool monoblockShown_ = false;
    std::unique_ptr<shell::MDIZomrel> window_;
};

} // namespace demo
