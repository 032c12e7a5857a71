#pragma once

#include "platform/report/design.h"
#include "platform/report/pagination.h"

#include <QImage>
#include <QRect>
#include <QString>

#include <vector>

/// The printed documents of the shop pack. All positions and sizes are in twips from the top left
/// corner of the sheet.
namespace shop::paper {

/// A text in a rectangle, which it never leaves. It uses as many lines as the rectangle holds.
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

/// A picture of one pixel per module, drawn without smoothing.
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
