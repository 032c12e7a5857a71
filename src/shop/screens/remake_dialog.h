#pragma once

#include "shop/tables.h"

#include <QDialog>

class QListWidget;

namespace shop::screens {

/// A choice in the remake dialog: one part of one order line, whose pieces can be made again.
struct RemakeChoice
{
    int order;
    int line;
    Part part;

    bool operator==(const RemakeChoice&) const = default;
};

/// Returns the parts of order lines for which pieces or panes exist, in the order of the lines.
std::vector<RemakeChoice> remakeChoices(const Pieces& pieces);

/// A dialog in which the user chooses one part of one order line, whose pieces are to be made
/// again.
class RemakeDialog : public QDialog
{
    Q_OBJECT

public:
    explicit RemakeDialog(const Pieces& pieces, QWidget* parent = nullptr);

    /// Returns the user's choice if the dialog was accepted.
    std::optional<RemakeChoice> choice() const;

private:
    const std::vector<RemakeChoice> choices_;
    QListWidget* list_;
};

} // namespace shop::screens
