#pragma once

#include "platform/report/design.h"
#include "platform/report/pagination.h"

#include <QImage>
#include <QRect>
#include <QString>

#include <vector>

/// The printed documents of the shop pack. All positions and sizes on a sheet are in twips from the
/// top left corner of the sheet.
namespace shop::paper {

/// A text that is printed inside a rectangle. The text uses as many lines as the rectangle can
/// contain.
struct TextItem
{
    QRect place;
    QString text;
    double points = 10;
    bool bold = false;
    report::Align align = report::Align::Right;
    bool rightToLeft = true; ///< Reading direction, independent of the alignment.

    bool looksLike(const TextItem& other) const
    {
        return place.size() == other.place.size() && text == other.text && points == other.points &&
               bold == other.bold && align == other.align && rightToLeft == other.rightToLeft;
    }
};

enum class Fill { None, Light, Medium, Dark };

struct BoxItem
{
    QRect place;
    Fill fill = Fill::None;
    bool hasBorder = true;
};

/// A QR code. The picture has one pixel per module of the code and is drawn without smoothing.
struct CodeItem
{
    QRectF place;
    QImage picture;
};

/// The contents of one sheet.
struct Sheet
{
    std::vector<BoxItem> boxes;
    std::vector<CodeItem> codes;
    std::vector<TextItem> texts;
};

} // namespace shop::paper
