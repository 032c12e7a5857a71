#pragma once

#include "platform/report/export.h"

#include <QRectF>
#include <QStringList>

namespace testsupport {

/// Writes a document as PDF and reads it back with an independent program. Provides the words and
/// their bounding boxes, in twips from the top left corner of the sheet.
class PdfWords
{
public:
    /// Returns the height of a word's bounding box relative to its font size.
    static double lineHeight();

    explicit PdfWords(report::PrintedDocument& document);
    PdfWords(report::PrintedDocument& document, const std::vector<int>& pages);
    explicit PdfWords(const QString& path);

    int pageCount() const { return static_cast<int>(pages_.size()); }
    QSizeF paper() const { return paper_; }
    /// Returns the words in a control's rectangle, near its vertical middle, in reading order and
    /// separated by spaces. Pages are counted from 0.
    QString at(int page, const QRect& box) const;
    /// Returns the bounding box of these words; empty if there are none.
    QRectF placeAt(int page, const QRect& box) const;
    /// Returns the bounding box of the first occurrence of the word on the page; empty if there is
    /// none.
    QRectF placeOf(int page, const QString& word) const;
    QStringList words(int page) const;

private:
    struct Word
    {
        QString text;
        QRectF place;
    };

    void read(const QString& path);
    std::vector<Word> wordsAt(int page, const QRect& box) const;

    QSizeF paper_;
    std::vector<std::vector<Word>> pages_;  ///< Words in the order of the PDF reader.
    std::vector<std::vector<Word>> sorted_; ///< Words sorted from top to bottom.
};

} // namespace testsupport
