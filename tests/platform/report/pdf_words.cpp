#include "platform/report/pdf_words.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <algorithm>

namespace testsupport {

using namespace Qt::StringLiterals;

namespace {

constexpr double twipsPerPoint = 20;
/// Maximum distance, in twips, between the expected and the actual middle of a line.
constexpr double tolerance = 15;
/// A box of this height, in twips, holds two lines.
constexpr int twoLines = 500;

bool isHebrew(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c.direction() == QChar::DirR; });
}

/// Reverses a Hebrew word, because the PDF reader returns letters in visual order from the left.
QString inReadingOrder(QString word)
{
    if (isHebrew(word))
        std::reverse(word.begin(), word.end());
    return word;
}

double number(const QXmlStreamReader& xml, const QString& name)
{
    return xml.attributes().value(name).toDouble() * twipsPerPoint;
}

} // namespace

double PdfWords::lineHeight()
{
    return 1.05; // David's ascent is 0.8 and its descent 0.25.
}

PdfWords::PdfWords(report::PrintedDocument& document)
    : PdfWords(document, report::allPages(document))
{
}

PdfWords::PdfWords(report::PrintedDocument& document, const std::vector<int>& pages)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"report.pdf"_s);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || report::writePdf(document, pages, file, [](int, int) {
                                                return true;
                                            }) != report::Outcome::Done)
        qFatal("the PDF could not be written");
    file.close();
    read(path);
}

PdfWords::PdfWords(const QString& path)
{
    read(path);
}

void PdfWords::read(const QString& path)
{
    QProcess reader;
    reader.start(u"pdftotext"_s, {u"-bbox"_s, path, u"-"_s});
    constexpr int patience = 120000; // Milliseconds.
    if (!reader.waitForFinished(patience) || reader.exitCode() != 0)
        qFatal("pdftotext, of the package poppler-utils, cannot read %s", qUtf8Printable(path));
    QXmlStreamReader xml(reader.readAllStandardOutput());
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == u"page") {
            paper_ = {number(xml, u"width"_s), number(xml, u"height"_s)};
            pages_.emplace_back();
        } else if (xml.name() == u"word") {
            const QRectF place(QPointF(number(xml, u"xMin"_s), number(xml, u"yMin"_s)),
                               QPointF(number(xml, u"xMax"_s), number(xml, u"yMax"_s)));
            pages_.back().push_back({inReadingOrder(xml.readElementText()), place});
        }
    }
    sorted_ = pages_;
    for (std::vector<Word>& words : sorted_) {
        std::stable_sort(words.begin(), words.end(), [](const Word& a, const Word& b) {
            return a.place.center().y() < b.place.center().y();
        });
    }
}

std::vector<PdfWords::Word> PdfWords::wordsAt(int page, const QRect& box) const
{
    const double middleLine = box.top() + box.height() / 2.0;
    const double reach = box.height() < twoLines ? tolerance : box.height() / 4.0;
    const auto& words = sorted_.at(static_cast<std::size_t>(page));
    const auto first = std::partition_point(words.begin(), words.end(), [&](const Word& word) {
        return word.place.center().y() < middleLine - reach;
    });
    std::vector<Word> found;
    for (auto word = first; word != words.end(); ++word) {
        const QPointF middle = word->place.center();
        if (middle.y() > middleLine + reach)
            break;
        if (middle.x() >= box.left() && middle.x() <= box.left() + box.width())
            found.push_back(*word);
    }
    return found;
}

QString PdfWords::at(int page, const QRect& box) const
{
    std::vector<Word> found = wordsAt(page, box);
    const bool hebrew = std::any_of(found.begin(), found.end(),
                                    [](const Word& word) { return isHebrew(word.text); });
    std::sort(found.begin(), found.end(), [&](const Word& a, const Word& b) {
        if (qAbs(a.place.top() - b.place.top()) > 5 * tolerance)
            return a.place.top() < b.place.top();
        return hebrew ? a.place.left() > b.place.left() : a.place.left() < b.place.left();
    });
    QStringList texts;
    for (const Word& word : found)
        texts += word.text;
    return texts.join(u' ');
}

QRectF PdfWords::placeAt(int page, const QRect& box) const
{
    QRectF place;
    for (const Word& word : wordsAt(page, box))
        place |= word.place;
    return place;
}

QRectF PdfWords::placeOf(int page, const QString& word) const
{
    for (const Word& each : pages_.at(static_cast<std::size_t>(page))) {
        if (each.text == word)
            return each.place;
    }
    return {};
}

QStringList PdfWords::words(int page) const
{
    QStringList texts;
    for (const Word& word : pages_.at(static_cast<std::size_t>(page)))
        texts += word.text;
    return texts;
}

} // namespace testsupport
