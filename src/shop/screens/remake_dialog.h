#pragma once

#include "shop/tables.h"

#include <QDialog>

class QListWidget;

namespace shop::screens {

/// One part of one line, which can be made again.
struct RemakeChoice
{
    int order;
    int line;
    Part part;

    bool operator==(const RemakeChoice&) const = default;
};

/// Returns the parts of the lines that have pieces or panes, in the order of the lines.
std::vector<RemakeChoice> remakeChoices(const Pieces& pieces);

/// Lets the user choose one part of one line.
class RemakeDialog : public QDialog
{
    Q_OBJECT

public:
    explicit RemakeDialog(const Pieces& pieces, QWidget* parent = nullptr);

    /// Returns the choice of an accepted dialog.
    std::optional<RemakeChoice> choice() const;

private:
    const std::vector<RemakeChoice> choices_;
    QListWidget* list_;
};

} // namespace shop::screens
