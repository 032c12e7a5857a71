// Finding a row of a grid by typing the beginning of a name.

#include "platform/controls/db_grid.h"
#include "platform/controls/db_grid_model.h"

#include <QApplication>

namespace controls {

void DBGrid::keyboardSearch(const QString& search)
{
    // Without a search column the grid does not search, because the search would read the whole
    // table.
    if (searchColumn_ < 0 || search.isEmpty() || model_->recordCount() == 0)
        return;
    const bool goesOn =
        sinceTyped_.isValid() && !sinceTyped_.hasExpired(QApplication::keyboardInputInterval());
    sinceTyped_.start();
    typed_ = goesOn ? typed_ + search : search;
    // A first letter moves on to the next name. Further letters may leave the current name.
    const int first = currentIndex().isValid() ? currentIndex().row() + (goesOn ? 0 : 1) : 0;
    const QModelIndex start = model_->index(first % model_->recordCount(), searchColumn_);
    const QModelIndexList found =
        model_->match(start, Qt::DisplayRole, typed_, 1, Qt::MatchStartsWith | Qt::MatchWrap);
    if (!found.isEmpty())
        goTo(found.first().row());
}

} // namespace controls
