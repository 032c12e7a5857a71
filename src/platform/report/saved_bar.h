#pragma once

#include <QToolBar>

class QAction;
class QLabel;

namespace report {

/// The bar below the pages of the preview that confirms a saved file. The bar shows the name of the
/// file and has a button that opens the folder of the file. The bar is hidden until a file has been
/// saved.
class SavedBar : public QToolBar
{
    Q_OBJECT

public:
    explicit SavedBar(QWidget* parent);

    /// Shows the bar for the saved file at this path.
    void confirm(const QString& path);

private:
    QLabel* text_;
    QAction* openFolder_;
    QString folder_;
};

} // namespace report
