#include "platform/report/export.h"

#include "platform/report/text_shaper.h"
#include "platform/runtime/twips.h"

#include <QBuffer>
#include <QIODevice>

#include <algorithm>
#include <cmath>

namespace report {

using namespace Qt::StringLiterals;

namespace {

/// Width of a border in twips. On paper, half of the border is inside the control. In CSS, the
/// whole border is inside the control.
constexpr double borderWidth = runtime::twipsPerPixel;
/// Share of the available width that a text may occupy in HTML. The browser may use a wider font
/// than this computer.
constexpr double safeShare = 0.9;

/// Converts twips to a CSS length in points.
QString points(double twips)
{
    return QString::number(twips / runtime::twipsPerPoint) + u"pt"_s;
}

/// The CSS values for a control's alignment: `text` for the property text-align and `box` for the
/// property justify-content. flex-start is the left edge, because a section is left-to-right.
struct Alignment
{
    QString text;
    QString box;
};

Alignment alignment(Align align)
{
    switch (align) {
    case Align::Left:
        return {u"left"_s, u"flex-start"_s};
    case Align::Right:
        return {u"right"_s, u"flex-end"_s};
    case Align::Centre:
        break;
    }
    return {u"center"_s, u"center"_s};
}

/// Returns the CSS padding that keeps the text of a control away from borders and other controls. A
/// centred text gets the same padding left and right, because a text that is too wide overflows
/// equally on both sides.
QString padding(const ControlDesign& design, const TextFrame& frame)
{
    const double border = (design.style & Style::Boxed) != 0 ? borderWidth : 0;
    const double side = (frame.width - frame.available()) / 2;
    const bool isCentred = frame.align == Align::Centre;
    const double left = isCentred ? side : frame.free.left;
    const double right = isCentred ? side : frame.width - frame.free.right;
    return u"padding:0 %1 0 %2;"_s.arg(points(std::max(0.0, right - border)),
                                       points(std::max(0.0, left - border)));
}

/// Returns the CSS rule of a control. The CSS class has the name of the control.
QString controlRule(const ControlDesign& design, TextShaper& shaper)
{
    QString rule = u".%1{left:%2;top:%3;width:%4;height:%5;"_s.arg(
        design.name, points(design.left), points(design.top), points(design.width),
        points(design.height));
    if (design.kind == Kind::Line)
        rule += design.height == 0 ? u"border-top:.75pt solid;"_s : u"border-left:.75pt solid;"_s;
    if (design.points > 0) {
        const Alignment align = alignment(design.align);
        rule += u"font-size:%1pt;justify-content:%2;text-align:%3;transform-origin:%3;"_s.arg(
            QString::number(design.points), align.box, align.text);
        rule += padding(design, shaper.frame(design));
    }
    if ((design.style & Style::Bold) != 0)
        rule += u"font-weight:bold;"_s;
    if ((design.style & Style::Underlined) != 0)
        rule += u"text-decoration:underline;"_s;
    if ((design.style & Style::Boxed) != 0)
        rule += u"border:.75pt solid;"_s;
    return rule + u"}\n"_s;
}

QString head(const Document& document, TextShaper& shaper)
{
    const ReportDesign& design = document.design();
    QString head =
        u"<!DOCTYPE html>\n<html lang=\"he\" dir=\"rtl\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<title>%1</title>\n<style>\n"
        "body{margin:1em auto;width:%2;font-family:'%3','%3 CLM',serif;line-height:1.05}\n"
        "section{position:relative;direction:ltr;break-inside:avoid}\n"
        "section>*{position:absolute;box-sizing:border-box;white-space:pre;display:flex;"
        "align-items:center}\n"
        "section span{flex:none;transform-origin:inherit}\n"
        "section>img{object-fit:contain}\n"_s.arg(document.title().toHtmlEscaped(),
                                                  points(design.width), design.fontFamily);
    for (const SectionDesign& section : design.sections) {
        head += u".%1{height:%2}\n"_s.arg(section.name, points(section.height));
        for (const ControlDesign& control : section.controls)
            head += controlRule(control, shaper);
    }
    return head + u"</style>\n</head>\n<body>\n"_s;
}

QString picture(const ControlDesign& design, const QImage& image)
{
    if (image.isNull())
        return {};
    QByteArray bytes;
    QBuffer buffer(&bytes);
    constexpr int jpegQuality = 92;
    if (image.hasAlphaChannel())
        image.save(&buffer, "PNG");
    else
        image.save(&buffer, "JPG", jpegQuality);
    const QString type = image.hasAlphaChannel() ? u"png"_s : u"jpeg"_s;
    return u"<img class=\"%1\" alt=\"\" src=\"data:image/%2;base64,%3\">\n"_s.arg(
        design.name, type, QString::fromLatin1(bytes.toBase64()));
}

/// Returns the CSS that condenses a text and reduces its size in the same way as on paper. A text
/// that needs almost all of its space is condensed a little more than on paper, because the browser
/// may replace the font by a wider one.
QString fitStyle(const ShapedText& text, double available)
{
    const double size = text.fit.vertical();
    const double room = safeShare * available / (text.naturalWidth * size);
    const double stretch = std::min(text.fit.stretch / 100.0, std::floor(room * 100) / 100);
    QString style;
    if (stretch < 1)
        style += u"transform:scaleX(%1);"_s.arg(stretch);
    if (size < 1)
        style += u"font-size:%1em;"_s.arg(size);
    return style.isEmpty() ? QString() : u" style=\"%1\""_s.arg(style);
}

QString textElement(const ControlDesign& design, const QString& text, TextShaper& shaper)
{
    const ShapedText& shaped = shaper.shaped(design, text);
    QStringList lines;
    for (const ShapedLine& line : shaped.lines)
        lines += line.text.toHtmlEscaped();
    const QString direction = shaped.rightToLeft ? u"rtl"_s : u"ltr"_s;
    const QString style =
        text.isEmpty() ? QString() : fitStyle(shaped, shaper.frame(design).available());
    return u"<div class=\"%1\"><span dir=\"%2\"%3>%4</span></div>\n"_s.arg(
        design.name, direction, style, lines.join(u'\n'));
}

QString element(const PrintedControl& printed, TextShaper& shaper)
{
    const ControlDesign& design = printed.control->design();
    switch (design.kind) {
    case Kind::Image:
        return picture(design, printed.control->Picture());
    case Kind::Line:
        return u"<div class=\"%1\"></div>\n"_s.arg(design.name);
    case Kind::Label:
    case Kind::Field:
        break;
    }
    return textElement(design, printed.text, shaper);
}

QString pageHtml(const Document& document, const Page& page, TextShaper& shaper)
{
    QString html;
    for (const Band& band : page.bands) {
        if (band.role != Role::Detail && (band.role != Role::PageHeader || page.index != 0))
            continue;
        html += u"<section class=\"%1\">\n"_s.arg(sectionOf(document.design(), band.role)->name);
        for (const PrintedControl& printed : band.controls)
            html += element(printed, shaper);
        html += u"</section>\n"_s;
    }
    return html;
}

bool write(QIODevice& device, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return device.write(bytes) == bytes.size();
}

} // namespace

Outcome writeHtml(Document& document, QIODevice& device, const Progress& progress)
{
    TextShaper shaper(document.design().fontFamily, document.design().sections);
    if (!write(device, head(document, shaper)))
        return Outcome::Failed;
    const int total = document.pageCount();
    for (int i = 0; i < total; ++i) {
        if (!write(device, pageHtml(document, *document.page(i), shaper)))
            return Outcome::Failed;
        if (!progress(i + 1, total))
            return Outcome::Cancelled;
    }
    return write(device, u"</body>\n</html>\n"_s) ? Outcome::Done : Outcome::Failed;
}

} // namespace report
