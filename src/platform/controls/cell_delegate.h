#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

namespace controls {

/// Draws the text of a cell right-aligned and in the text's own reading direction. The editor of a
/// cell is a line edit.
class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Returns the open cell editor, or nullptr if no cell editor is open.
    QLineEdit* editor() const { return editor_; }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    mutable QPointer<QLineEdit> editor_;
};

} // namespace controls
