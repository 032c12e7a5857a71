#pragma once

#include <QDialog>

#include <array>

class QLabel;
class QPushButton;

namespace dao {
class Recordset;
}

namespace output {

/// The view of one order line. It consists of labels that the caller fills, either from a stored
/// line (fillFromLine) or from values that are not stored yet. It never writes to the store.
///
/// The single instance is formView(). The first access creates it with blank labels, and closing
/// deletes it, so that no text remains for the next time.
class FormView : public QDialog
{
    Q_OBJECT

public:
    explicit FormView();

    /// Labels per part, indexed by frame, sash, glass and mesh.
    QLabel* LabelName = nullptr;
    QLabel* LabelDate = nullptr;
    QLabel* LabelOpenWidth = nullptr;
    QLabel* LabelOpenHeight = nullptr;
    std::array<QLabel*, 4> LabelWidth{};
    std::array<QLabel*, 4> LabelHeight{};
    std::array<QLabel*, 4> LabelCount{};
    std::array<QLabel*, 4> LabelKind{};
    std::array<QLabel*, 4> LabelColor{};

    /// Shows the form or raises it, and returns immediately.
    void ShowModeless();
    /// Shows the form modally, even if it is already open modelessly, and returns after it has been
    /// closed.
    void ShowModal();
    /// Closes the form. It is deleted when control returns to the event loop, but it counts as not
    /// loaded immediately.
    void Unload();

    /// Closes the form on Escape.
    void reject() override { Unload(); }

signals:
    void unloaded();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addHeading();
    void addOpening();
    void addParts();
    void addButtons();
    void load();
    void CmdPrint_Click();

    QPushButton* CmdPrint = nullptr;
    QPushButton* CmdClose = nullptr;
    QWidget* face_ = nullptr; ///< Holds the labels. It is the form itself on a large screen.
    bool isUnloaded_ = false;
};

/// Returns the single line view, creating it if it is not loaded.
FormView& formView();
bool isFormViewLoaded();

/// Fills the view from the current row of an order's lines, whose columns are taken by their
/// position in the table Cuts. Throws InvalidUseOfNull (94) if an opening size, cut size or count
/// is Null, and NoCurrentRecord (3021) without a current row. A Null name, kind or colour leaves
/// its label blank.
void fillFromLine(FormView& view, dao::Recordset& line);

} // namespace output
