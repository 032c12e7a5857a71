#pragma once

#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/sample_store.h"
#include "support/widgets.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QVBoxLayout>

namespace controlstest {

inline constexpr int nameColumn = 1;
inline constexpr int sizeColumn = 2;

/// A form with an editable grid on the lines of the store, and a box that can take the focus from
/// the grid.
class EditForm : public QWidget
{
public:
    explicit EditForm(SampleStore& store)
        : grid(new controls::DBGrid(QStringLiteral("DBGridKind_0"), this)),
          data(new controls::DataControl(QStringLiteral("DataKind_0"), this)),
          other(new QLineEdit(this))
    {
        auto* column = new QVBoxLayout(this);
        column->addWidget(grid);
        column->addWidget(other);
        grid->setColumns({{QStringLiteral("Code"), QStringLiteral("Code")},
                          {QStringLiteral("שם"), QStringLiteral("Name"), 2},
                          {QStringLiteral("גודל"), QStringLiteral("Size"), 1}});
        grid->setEditable(true);
        grid->setDataSource(data);
        data->setRecordset(store.table());
        resize(320, 320);
        if (!testsupport::showActive(*this))
            qFatal("the form is not active");
        grid->setFocus();
    }

    /// Returns the open editor, or nullptr if none is open. A closed editor is hidden and exists
    /// until control returns to the event loop.
    QLineEdit* editor() const
    {
        for (auto* each : grid->viewport()->findChildren<QLineEdit*>())
            if (each->isVisible())
                return each;
        return nullptr;
    }
    int rowCount() const { return grid->model()->rowCount(); }

    /// Types into the current cell by key events. The first key opens the editor.
    void type(const QString& text) const
    {
        for (const QChar each : text) {
            QWidget* target = editor() != nullptr ? static_cast<QWidget*>(editor()) : grid;
            QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, QString(each),
                                Qt::NoModifier);
        }
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QWidget* target = editor() != nullptr ? static_cast<QWidget*>(editor()) : grid;
        QTest::keyClick(target, key, modifiers);
        if (key == Qt::Key_Return)
            QTRY_VERIFY(editor() == nullptr); // The editor closes after the key event.
    }

    controls::DBGrid* grid;
    controls::DataControl* data;
    QLineEdit* other;
    QAbstractItemModelTester tester{grid->model(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace controlstest
