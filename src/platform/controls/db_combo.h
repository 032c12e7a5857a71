#pragma once

#include <QComboBox>

namespace controls {

class DataControl;

/// An editable combo box with completion. It lists the values of one field of its data control's
/// rows. Its text is empty at first. The list is filled when a recordset is bound. A name that is
/// stored later appears in the list only after the form binds a recordset again.
class DBCombo : public QComboBox
{
    Q_OBJECT

public:
    explicit DBCombo(const QString& name, QWidget* parent = nullptr);
    void setRowSource(DataControl* source, const QString& listField);
    /// Sets the name that screen readers announce for the combo box and for its input box.
    void setSpokenName(const QString& name);

private:
    void listRows(DataControl& source, const QString& listField);
};

} // namespace controls
