// This file contains the search for a row of a grid by typing the beginning of a name.

#include "platform/controls/db_grid.h"
#include "platform/controls/db_grid_model.h"

#include <QApplication>

namespace controls {

void DBGrid::keyboardSearch(const QString& search)
{
    // A grid without a search column does not search, because the search would read the whole
    // table.
    if (searchColumn_ < 0 || search.isEmpty() || model_->recordCount() == 0)
        return;
    const bool goesOn =
        sinceTyped_.isValid() && !sinceTyped_.hasExpired(QApplication::keyboardInputInterval());
    sinceTyped_.start();
    typed_ = goesOn ? typed_ + search : search;
    // The first typed letter starts the search at the row after the current row. Further letters
    // start the search at the current row.
    const int first = currentIndex().isValid() ? currentIndex().row() + (goesOn ? 0 : 1) : 0;
    const QModelIndex start = model_->index(first % model_->recordCount(), searchColumn_);
    const QModelIndexList found =
        model_->match(start, Qt::DisplayRole, typed_, 1, Qt::MatchStartsWith | Qt::MatchWrap);
    if (!found.isEmpty())
        goTo(found.first().row());
}

} // namespace controls
