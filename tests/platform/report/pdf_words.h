#pragma once

#include "platform/report/export.h"

#include <QRectF>
#include <QStringList>

namespace testsupport {

/// A document written as PDF and read back by an independent reader: its words and where they
/// stand, in twips from the corner of the sheet.
class PdfWords
{
public:
    /// The reader takes a word to be so many times as high as its size.
    static double lineHeight();

    explicit PdfWords(report::Document& document);
    PdfWords(report::Document& document, const std::vector<int>& pages);
    explicit PdfWords(const QString& path);

    int pageCount() const { return static_cast<int>(pages_.size()); }
    QSizeF paper() const { return paper_; }
    /// What stands in a control's box, in the vertical middle of it, its words in reading order,
    /// parted by blanks; pages from 0.
    QString at(int page, const QRect& box) const;
    /// Where these words stand; empty where there are none.
    QRectF placeAt(int page, const QRect& box) const;
    /// Where the word stands first on the page; empty where it does not.
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
    std::vector<std::vector<Word>> pages_;  ///< As the reader gives them.
    std::vector<std::vector<Word>> sorted_; ///< From the top of the page downwards.
};

} // namespace testsupport
