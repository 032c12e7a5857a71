#pragma once

#include <QDialog>

#include <array>

class QLabel;
class QPushButton;

namespace dao {
class Recordset;
}

namespace output {

/// The view of one line: a sheet of labels that its caller fills, from a stored line (fillFromLine)
/// or from figures that are not stored yet. It writes nothing to the store.
///
/// There is one instance, formView(). It is loaded, and so blanked, by the first touch, and goes
/// when it is closed: nothing of one showing reaches the next.
class FormView : public QDialog
{
    Q_OBJECT

public:
    explicit FormView();

    /// The index of an array is the part: frame, sash, glass, mesh.
    QLabel* LabelName = nullptr;
    QLabel* LabelDate = nullptr;
    QLabel* LabelOpenWidth = nullptr;
    QLabel* LabelOpenHeight = nullptr;
    std::array<QLabel*, 4> LabelWidth{};
    std::array<QLabel*, 4> LabelHeight{};
    std::array<QLabel*, 4> LabelCount{};
    std::array<QLabel*, 4> LabelKind{};
    std::array<QLabel*, 4> LabelColor{};

    /// Shows the form, or brings it forward, and returns at once.
    void ShowModeless();
    /// Shows the form above all others, also where it stood open modelessly before, and returns
    /// when it has been unloaded.
    void ShowModal();
    /// Takes the form away. It is deleted when control is back in the event loop; the instance
    /// counts as not loaded at once.
    void Unload();

    /// Closed by its button or its close box alone, not by Escape.
    void reject() override {}

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
    bool isUnloaded_ = false;
};

/// The one line view, loaded by this touch if it was not.
FormView& formView();
bool isFormViewLoaded();

/// Fills the view from the current row of the lines of an order, whose columns it takes by their
/// ordinals in the table Cuts. Raises 94 for a Null in the opening, a cut size or a count, 3021
/// without a current row. A Null name, kind or colour leaves its label blank.
void fillFromLine(FormView& view, dao::Recordset& line);

} // namespace output
