#pragma once

#include <QDialog>

#include <array>

class QLabel;
class QPushButton;

namespace dao {
class Recordset;
}

namespace output {

/// The form that shows one order line. It consists of labels that the caller fills, either from a
/// stored line (fillFromLine) or from values that are not stored yet. The form never writes to the
/// store.
///
/// formView() returns the single instance. Its first call creates the form with blank labels.
/// Closing the form deletes it, so that no text remains when the form is shown again.
class FormView : public QDialog
{
    Q_OBJECT

public:
    explicit FormView();

    QLabel* LabelName = nullptr;
    QLabel* LabelDate = nullptr;
    QLabel* LabelOpenWidth = nullptr;
    QLabel* LabelOpenHeight = nullptr;
    /// The labels of the parts. The index is the part: 0 frame, 1 sash, 2 glass, 3 mesh.
    std::array<QLabel*, 4> LabelWidth{};
    std::array<QLabel*, 4> LabelHeight{};
    std::array<QLabel*, 4> LabelCount{};
    std::array<QLabel*, 4> LabelKind{};
    std::array<QLabel*, 4> LabelColor{};

    /// Shows the form, or raises it if it is already open, and returns immediately.
    void ShowModeless();
    /// Shows the form modally and returns after the form has been closed. A form that is already
    /// open as a modeless window becomes modal.
    void ShowModal();
    /// Closes the form. The object is deleted when control returns to the event loop, but
    /// isFormViewLoaded() returns false immediately.
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

/// Returns the single instance of the form, and creates it if it is not loaded.
FormView& formView();
bool isFormViewLoaded();

/// Fills the form from the current row of `line`, a recordset of order lines. The columns are
/// accessed by their position in the table Cuts. Throws InvalidUseOfNull (94) if an opening size,
/// cut size or count is Null, and NoCurrentRecord (3021) if there is no current row. A Null name,
/// kind or colour leaves its label blank.
void fillFromLine(FormView& view, dao::Recordset& line);

} // namespace output
