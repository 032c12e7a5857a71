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
    // A closed editor is forgotten at once, because the base class deletes it later and editor()
    // must not return it in the meantime.
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
