#include "tools/store/old_store/frames.h"

#include "tools/store/told_error.h"
#include "tools/store/words.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

enum class Kind : quint8 { Opened = 1, ForeignTable, Table, Row, TableEnd, End };

/// The maximum size in bytes of a frame, a block of data that contains at most one row of the old
/// store. The size is enough for a row with three memos (long texts) of 16 MiB, the maximum size of
/// a memo.
constexpr quint32 longestFrame = 64 * 1024 * 1024;
constexpr qsizetype lengthSize = sizeof(quint32);
/// The upper limit for the number of columns of a table. No table of the old format has more
/// columns.
constexpr quint32 mostColumns = 256;

template <typename... Values>
QByteArray frameOf(Kind kind, const Values&... values)
{
    QByteArray frame;
    QDataStream stream(&frame, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << static_cast<quint8>(kind);
    ((stream << values), ...);
    return frame;
}

QByteArray bytesOf(const std::vector<OldColumn>& columns)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << static_cast<quint32>(columns.size());
    for (const OldColumn& column : columns)
        stream << column.name << column.type;
    return bytes;
}

void requireSense(bool condition)
{
    if (!condition)
        throw ToldError(runtime::CorruptDatabase, say({u"the data read from it is not valid",
                                                       u"הנתונים שנקראו ממנו אינם תקינים"}));
}

void requireEndOf(const QDataStream& stream)
{
    requireSense(stream.status() == QDataStream::Ok && stream.atEnd());
}

std::vector<OldColumn> columnsFrom(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_0);
    quint32 count = 0;
    stream >> count;
    requireSense(count <= mostColumns);
    std::vector<OldColumn> columns(count);
    for (OldColumn& column : columns)
        stream >> column.name >> column.type;
    requireEndOf(stream);
    return columns;
}

OldTable tableFrom(QDataStream& stream)
{
    OldTable table;
    QByteArray columns;
    QByteArray foreign;
    stream >> table.name >> table.recordedRows >> columns >> foreign;
    table.columns = columnsFrom(columns);
    table.foreignColumns = columnsFrom(foreign);
    return table;
}

OldRow rowFrom(QDataStream& stream, std::size_t columns)
{
    OldRow row(columns);
    for (OldCell& cell : row) {
        bool isNull = false;
        stream >> isNull;
        if (!isNull)
            stream >> cell.emplace();
    }
    return row;
}

} // namespace

void FrameWriter::opened(OldFormat format)
{
    write(frameOf(Kind::Opened, static_cast<quint8>(format)));
}

void FrameWriter::foreignTable(const QString& name, bool linked)
{
    write(frameOf(Kind::ForeignTable, name, linked));
}

void FrameWriter::table(const OldTable& table)
{
    write(frameOf(Kind::Table, table.name, table.recordedRows, bytesOf(table.columns),
                  bytesOf(table.foreignColumns)));
}

void FrameWriter::row(const OldRow& row)
{
    QByteArray frame;
    QDataStream stream(&frame, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << static_cast<quint8>(Kind::Row);
    for (const OldCell& cell : row) {
        stream << !cell.has_value();
        if (cell)
            stream << *cell;
    }
    write(frame);
}

void FrameWriter::tableEnd()
{
    write(frameOf(Kind::TableEnd));
}

void FrameWriter::end()
{
    write(frameOf(Kind::End));
}

void FrameWriter::write(const QByteArray& frame)
{
    QByteArray bytes(lengthSize, Qt::Uninitialized);
    qToLittleEndian(static_cast<quint32>(frame.size()), bytes.data());
    bytes += frame;
    if (device_.write(bytes) != bytes.size())
        throw RunTimeError(runtime::DiskOrNetworkError, device_.errorString());
}

void FrameReader::take(const QByteArray& bytes)
{
    waiting_ += bytes;
    qsizetype start = 0;
    while (waiting_.size() - start >= lengthSize) {
        const auto length = qFromLittleEndian<quint32>(waiting_.constData() + start);
        requireSense(length <= longestFrame);
        if (waiting_.size() - start - lengthSize < qsizetype{length})
            break;
        takeFrame(waiting_.mid(start + lengthSize, length));
        start += lengthSize + qsizetype{length};
    }
    waiting_.remove(0, start);
}

void FrameReader::takeFrame(const QByteArray& frame)
{
    QDataStream stream(frame);
    stream.setVersion(QDataStream::Qt_6_0);
    quint8 kind = 0;
    stream >> kind;
    switch (Kind{kind}) {
    case Kind::Opened:
        return takeOpened(stream);
    case Kind::ForeignTable:
        return takeForeignTable(stream);
    case Kind::Table:
        return takeTable(stream);
    case Kind::Row:
        return takeRow(stream);
    case Kind::TableEnd:
        requireSense(state_ == State::InTable);
        requireEndOf(stream);
        state_ = State::BetweenTables;
        return visitor_.tableEnd();
    case Kind::End:
        requireSense(state_ == State::BetweenTables);
        requireEndOf(stream);
        state_ = State::Finished;
        return visitor_.end();
    }
    requireSense(false);
}

void FrameReader::takeOpened(QDataStream& stream)
{
    requireSense(state_ == State::Start);
    quint8 format = 0;
    stream >> format;
    requireEndOf(stream);
    requireSense(format == static_cast<quint8>(OldFormat::Jet3) ||
                 format == static_cast<quint8>(OldFormat::Jet4));
    state_ = State::BetweenTables;
    visitor_.opened(OldFormat{format});
}

void FrameReader::takeForeignTable(QDataStream& stream)
{
    requireSense(state_ == State::BetweenTables);
    QString name;
    bool linked = false;
    stream >> name >> linked;
    requireEndOf(stream);
    visitor_.foreignTable(name, linked);
}

void FrameReader::takeTable(QDataStream& stream)
{
    requireSense(state_ == State::BetweenTables);
    const OldTable table = tableFrom(stream);
    requireEndOf(stream);
    columns_ = table.columns.size();
    state_ = State::InTable;
    visitor_.table(table);
}

void FrameReader::takeRow(QDataStream& stream)
{
    requireSense(state_ == State::InTable);
    const OldRow row = rowFrom(stream, columns_);
    requireEndOf(stream);
    visitor_.row(row);
}

} // namespace storetools
