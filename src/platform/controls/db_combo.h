#pragma once

#include <QComboBox>

namespace controls {

class DataControl;

/// A combo that lists one field of its data control's rows and also takes typed text; typing finds
/// the entry. Opens empty. The rows are listed when a recordset is bound; a name added later
/// reaches the list only when the form binds its rows again.
class DBCombo : public QComboBox
{
    Q_OBJECT

public:
    explicit DBCombo(const QString& name, QWidget* parent = nullptr);
    void setRowSource(DataControl* source, const QString& listField);

private:
    void listRows(DataControl& source, const QString& listField);
};

} // namespace controls
