#pragma once

#include <QHeaderView>

namespace controls {

/// The column header of a grid, with a band above it that shows the caption of the grid. A
/// right-to-left caption is drawn right-to-left, independent of the view's layout direction.
class CaptionHeader : public QHeaderView
{
    Q_OBJECT

public:
    explicit CaptionHeader(QWidget* parent = nullptr);

    const QString& caption() const { return caption_; }
    void setCaption(const QString& caption);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

private:
    QFont captionFont() const;
    int bandHeight() const;

    QString caption_;
};

} // namespace controls
