#include "platform/controls/db_combo.h"

#include "platform/controls/data_control.h"
#include "platform/controls/field_text.h"
#include "platform/controls/wheel_guard.h"
#include "platform/runtime/guard.h"

#include <QLineEdit>

namespace controls {

DBCombo::DBCombo(const QString& name, QWidget* parent) : QComboBox(parent)
{
    setObjectName(name);
    setEditable(true);
    guardFromWheel(*this);
    setInsertPolicy(QComboBox::NoInsert);
    setDuplicatesEnabled(true);
    setCurrentIndex(-1);
}

void DBCombo::setRowSource(DataControl* source, const QString& listField)
{
    runtime::on(source, &DataControl::rowsReset, this,
                [this, source, listField] { listRows(*source, listField); });
    listRows(*source, listField);
}

void DBCombo::setSpokenName(const QString& name)
{
    setAccessibleName(name);
    lineEdit()->setAccessibleName(name);
}

void DBCombo::listRows(DataControl& source, const QString& listField)
{
    const QString typed = currentText();
    clear();
    if (source.hasRecordset())
        addItems(fieldTexts(source.Recordset(), listField));
    setCurrentIndex(-1);
    setEditText(typed);
}

} // namespace controls
