#pragma once

#include <QToolBar>

class QAction;
class QLabel;

namespace report {

/// The bar below the pages that confirms a saved file. It names the file and opens its folder. It
/// is hidden until a file has been saved.
class SavedBar : public QToolBar
{
    Q_OBJECT

public:
    explicit SavedBar(QWidget* parent);

    /// Shows the bar for the file at the path.
    void confirm(const QString& path);

private:
    QLabel* text_;
    QAction* openFolder_;
    QString folder_;
};

} // namespace report
