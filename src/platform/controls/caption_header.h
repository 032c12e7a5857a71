#pragma once

#include <QHeaderView>

namespace controls {

/// Column headers with the grid's caption in a band above them. Captions written from right to left
/// are drawn so, whatever the direction of the view.
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
