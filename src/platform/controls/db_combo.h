#pragma once

#include <QComboBox>

namespace controls {

class DataControl;

/// An editable combo box that lists one field of its data control's rows, with completion. It
/// starts empty. The list is filled when a recordset is bound, so a name that is stored later
/// appears only after the form binds its rows again.
class DBCombo : public QComboBox
{
    Q_OBJECT

public:
    explicit DBCombo(const QString& name, QWidget* parent = nullptr);
    void setRowSource(DataControl* source, const QString& listField);
    /// Sets the name for screen readers, also of the box into which the user types.
    void setSpokenName(const QString& name);

private:
    void listRows(DataControl& source, const QString& listField);
};

} // namespace controls
