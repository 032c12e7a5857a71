#pragma once

#include <QHeaderView>

namespace controls {

/// A grid's column header with the grid's caption in a band above it. Right-to-left captions are
/// drawn right-to-left, independent of the view's layout direction.
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
