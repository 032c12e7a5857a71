#include "platform/report/export.h"

#include "platform/report/report_text.h"

#include <QBuffer>
#include <QIODevice>

#include <algorithm>

namespace report {

using namespace Qt::StringLiterals;

namespace {

/// Twips as the points of a style sheet.
QString points(int twips)
{
    return QString::number(twips / 20.0) + u"pt"_s;
}

QString alignment(Align align)
{
    switch (align) {
    case Align::Left:
        return u"left"_s;
    case Align::Right:
        return u"right"_s;
    case Align::Centre:
        break;
    }
    return u"center"_s;
}

bool holdsSeveralLines(const ControlDesign& design)
{
    return design.points > 0 && design.height > 2 * 20 * design.points;
}

/// The style rule of one control, named as the control is.
QString controlRule(const ControlDesign& design)
{
    QString rule = u".%1{left:%2;top:%3;width:%4;height:%5;"_s.arg(
        design.name, points(design.left), points(design.top), points(design.width),
        points(design.height));
    if (design.kind == Kind::Line)
        rule += design.height == 0 ? u"border-top:.75pt solid;"_s : u"border-left:.75pt solid;"_s;
    if (design.points > 0)
        rule += u"font-size:%1pt;text-align:%2;"_s.arg(QString::number(design.points),
                                                       alignment(design.align));
    if (design.kind == Kind::Field)
        rule += u"overflow-x:clip;"_s;
    if (holdsSeveralLines(design))
        rule += u"white-space:pre-wrap;"_s;
    if ((design.style & Style::Bold) != 0)
        rule += u"font-weight:bold;"_s;
    if ((design.style & Style::Underlined) != 0)
        rule += u"text-decoration:underline;"_s;
    if ((design.style & Style::Boxed) != 0)
        rule += u"border:.75pt solid;"_s;
    return rule + u"}\n"_s;
}

QString head(const Document& document)
{
    const ReportDesign& design = document.design();
    QString head =
        u"<!DOCTYPE html>\n<html lang=\"he\" dir=\"rtl\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<title>%1</title>\n<style>\n"
        "body{margin:1em auto;width:%2;font-family:'%3','%3 CLM',serif;line-height:1.05}\n"
        "section{position:relative;direction:ltr;break-inside:avoid}\n"
        "section>*{position:absolute;box-sizing:border-box;white-space:pre}\n"
        "section>img{object-fit:contain}\n"_s.arg(document.title().toHtmlEscaped(),
                                                  points(design.width), design.fontFamily);
    for (const SectionDesign& section : design.sections) {
        head += u".%1{height:%2}\n"_s.arg(section.name, points(section.height));
        for (const ControlDesign& control : section.controls)
            head += controlRule(control);
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

bool isHebrew(QChar c)
{
    return c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
}

/// Whether the text begins at the right, so that one too long is cut at its left.
bool beginsAtTheRight(const DisplayText& display)
{
    const QString& text = display.text;
    if (display.rightToLeft)
        return std::any_of(text.begin(), text.end(), isHebrew);
    const auto letter = std::find_if(text.begin(), text.end(), [](QChar c) {
        return isHebrew(c) || c.direction() == QChar::DirL;
    });
    return letter != text.end() && isHebrew(*letter);
}

QString textElement(const ControlDesign& design, const QString& text)
{
    const DisplayText display = displayText(text, (design.style & Style::RightToLeft) != 0);
    const auto direction = [](bool rightToLeft) { return rightToLeft ? u"rtl"_s : u"ltr"_s; };
    QString content = display.text.toHtmlEscaped();
    if (beginsAtTheRight(display) != display.rightToLeft)
        content =
            u"<span dir=\""_s + direction(display.rightToLeft) + u"\">"_s + content + u"</span>"_s;
    return u"<div class=\"%1\" dir=\"%2\">%3</div>\n"_s.arg(
        design.name, direction(beginsAtTheRight(display)), content);
}

QString element(const PrintedControl& printed)
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
    return textElement(design, printed.text);
}

QString pageHtml(const Document& document, const Page& page)
{
    QString html;
    for (const Band& band : page.bands) {
        if (band.role != Role::Detail && (band.role != Role::PageHeader || page.index != 0))
            continue;
        html += u"<section class=\"%1\">\n"_s.arg(sectionOf(document.design(), band.role)->name);
        for (const PrintedControl& printed : band.controls)
            html += element(printed);
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
    if (!write(device, head(document)))
        return Outcome::Failed;
    const int total = document.pageCount();
    for (int i = 0; i < total; ++i) {
        if (!write(device, pageHtml(document, *document.page(i))))
            return Outcome::Failed;
        if (!progress(i + 1, total))
            return Outcome::Cancelled;
    }
    return write(device, u"</body>\n</html>\n"_s) ? Outcome::Done : Outcome::Failed;
}

} // namespace report
