#include "platform/controls/cell_delegate.h"

#include "platform/controls/field_text.h"

namespace controls {

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& index) const
{
    editor_ = new QLineEdit(parent);
    editor_->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    editor_->setFrame(false);
    editor_->setAccessibleName(
        index.model()->headerData(index.column(), Qt::Horizontal).toString());
    return editor_;
}

void CellDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const
{
    // The pointer to a closed cell editor is cleared at once, so that editor() no longer returns
    // it. The base class deletes the editor later.
    if (editor_ == editor)
        editor_.clear();
    QStyledItemDelegate::destroyEditor(editor, index);
}

void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->displayAlignment |= Qt::AlignAbsolute;
    option->direction = readsRightToLeft(option->text) ? Qt::RightToLeft : Qt::LeftToRight;
}

} // namespace controls
