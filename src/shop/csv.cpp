#include "shop/csv.h"

#include <QStringDecoder>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace shop {

namespace {

constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF", 3);

QString quoted(const QString& cell)
{
    const bool needsQuotes = std::any_of(cell.begin(), cell.end(), [](QChar each) {
        return each == u',' || each == u'"' || each == u'\r' || each == u'\n';
    });
    if (!needsQuotes)
        return cell;
    QString inner = cell;
    return u'"' + inner.replace(u'"', u"\"\""_s) + u'"';
}

/// Parses a CSV text character by character.
class CsvReader
{
public:
    std::optional<QList<QStringList>> read(QStringView text)
    {
        for (const QChar each : text) {
            if (!take(each))
                return {};
        }
        if (state_ == State::InQuotes)
            return {};
        if (state_ != State::AtCell || !row_.isEmpty())
            endRow();
        return rows_;
    }

private:
    enum class State { AtCell, InCell, InQuotes, AfterQuote };

    bool take(QChar character)
    {
        const bool isAfterReturn = std::exchange(afterReturn_, false);
        if (state_ == State::InQuotes) {
            if (character == u'"')
                state_ = State::AfterQuote;
            else
                cell_.append(character);
            return true;
        }
        if (character == u'\n' && isAfterReturn)
            return true;
        if (character == u'\r' || character == u'\n') {
            endRow();
            afterReturn_ = character == u'\r';
            return true;
        }
        if (character == u',') {
            endCell();
            return true;
        }
        return takeText(character);
    }

    bool takeText(QChar character)
    {
        if (character == u'"') {
            if (state_ == State::InCell)
                return false;
            if (state_ == State::AfterQuote)
                cell_.append(character);
            state_ = State::InQuotes;
            return true;
        }
        if (state_ == State::AfterQuote)
            return false;
        state_ = State::InCell;
        cell_.append(character);
        return true;
    }

    void endCell()
    {
        row_.append(std::exchange(cell_, {}));
        state_ = State::AtCell;
    }

    void endRow()
    {
        endCell();
        rows_.append(std::exchange(row_, {}));
    }

    State state_ = State::AtCell;
    bool afterReturn_ = false;
    QString cell_;
    QStringList row_;
    QList<QStringList> rows_;
};

} // namespace

QByteArray csvText(const QList<QStringList>& rows)
{
    QByteArray text = byteOrderMark.toByteArray();
    for (const QStringList& row : rows) {
        QStringList cells;
        for (const QString& cell : row)
            cells.append(quoted(cell));
        text += cells.join(u',').toUtf8() + "\r\n";
    }
    return text;
}

std::optional<QList<QStringList>> readCsv(const QByteArray& text)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString decoded = decoder.decode(text);
    if (decoder.hasError())
        return {};
    return CsvReader().read(decoded);
}

QString textCell(const QString& text)
{
    static const QString formulas = u"=+-@\t\r"_s;
    return !text.isEmpty() && formulas.contains(text.front()) ? u'\'' + text : text;
}

} // namespace shop
