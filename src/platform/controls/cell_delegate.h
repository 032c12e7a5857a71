#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

namespace controls {

/// Draws a cell's text at its right edge, in the direction in which the text reads, and edits it in
/// a line of its own.
class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// The editor that stands open, null where there is none.
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
