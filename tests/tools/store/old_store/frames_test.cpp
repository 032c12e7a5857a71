#include "tools/store/old_store/frames.h"

#include "platform/runtime/run_time_error.h"
#include "support/printers.h"

#include <QBuffer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace storetools;

namespace {

/// Records its calls as lines of text.
class Listener : public OldStoreVisitor
{
public:
    void opened(OldFormat format) override
    {
        heard.append(u"opened %1"_s.arg(static_cast<int>(format)));
    }
    void foreignTable(const QString& name, bool linked) override
    {
        heard.append(u"foreign %1 %2"_s.arg(name).arg(linked));
    }
    void table(const OldTable& table) override
    {
        QString line = u"table %1 %2:"_s.arg(table.name).arg(table.recordedRows);
        for (const OldColumn& column : table.columns)
            line += u" %1/%2"_s.arg(column.name).arg(column.type);
        line += u" but"_s;
        for (const OldColumn& column : table.foreignColumns)
            line += u" %1/%2"_s.arg(column.name).arg(column.type);
        heard.append(line);
    }
    void row(const OldRow& row) override
    {
        QStringList cells;
        for (const OldCell& cell : row)
            cells.append(cell ? u'<' + QString::fromLatin1(*cell) + u'>' : u"Null"_s);
        heard.append(cells.join(u' '));
    }
    void tableEnd() override { heard.append(u"table end"_s); }
    void end() override { heard.append(u"end"_s); }

    QStringList heard;
};

QByteArray written(const std::function<void(FrameWriter&)>& write)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    FrameWriter writer(buffer);
    write(writer);
    return buffer.data();
}

void writeAll(FrameWriter& writer)
{
    writer.opened(OldFormat::Jet3);
    writer.foreignTable(u"טלפונים"_s, true);
    writer.table({u"Cuts"_s, 2, {{u"Code"_s, OldLong}, {u"Name"_s, OldText}}, {{u"Extra"_s, 11}}});
    writer.row({QByteArray("abcd"), std::nullopt});
    writer.row({std::nullopt, QByteArray("")});
    writer.tableEnd();
    writer.table({u"Orders"_s, 0, {}, {}});
    writer.tableEnd();
    writer.end();
}

const QStringList all{u"opened 3"_s,
                      u"foreign טלפונים 1"_s,
                      u"table Cuts 2: Code/4 Name/10 but Extra/11"_s,
                      u"<abcd> Null"_s,
                      u"Null <>"_s,
                      u"table end"_s,
                      u"table Orders 0: but"_s,
                      u"table end"_s,
                      u"end"_s};

int errorOf(const QByteArray& bytes)
{
    Listener listener;
    FrameReader reader(listener);
    try {
        reader.take(bytes);
    } catch (const runtime::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

} // namespace

TEST(FramesTest, ReadFramesEqualWrittenFrames)
{
    Listener listener;
    FrameReader reader(listener);
    reader.take(written(writeAll));
    EXPECT_EQ(listener.heard, all);
    EXPECT_TRUE(reader.isFinished());
}

TEST(FramesTest, AcceptPiecesOfAnySize)
{
    const QByteArray bytes = written(writeAll);
    for (const qsizetype size : {1, 2, 3, 7, 50}) {
        Listener listener;
        FrameReader reader(listener);
        for (qsizetype i = 0; i < bytes.size(); i += size) {
            EXPECT_FALSE(reader.isFinished());
            reader.take(bytes.mid(i, size));
        }
        EXPECT_EQ(listener.heard, all);
        EXPECT_TRUE(reader.isFinished());
    }
}

TEST(FramesTest, AreIncompleteUntilTheEndFrame)
{
    Listener listener;
    FrameReader reader(listener);
    const QByteArray bytes = written(writeAll);
    reader.take(bytes.chopped(1));
    EXPECT_FALSE(reader.isFinished());
    EXPECT_EQ(listener.heard.size(), all.size() - 1);
}

TEST(FramesTest, RefuseAWrongOrder)
{
    const OldTable table{u"Cuts"_s, 0, {}, {}};
    const QList<std::function<void(FrameWriter&)>> wrong{
        [&](FrameWriter& writer) { writer.table(table); },
        [&](FrameWriter& writer) { writer.end(); },
        [&](FrameWriter& writer) {
            writer.opened(OldFormat::Jet4);
            writer.opened(OldFormat::Jet4);
        },
        [&](FrameWriter& writer) {
            writer.opened(OldFormat::Jet4);
            writer.row({});
        },
        [&](FrameWriter& writer) {
            writer.opened(OldFormat::Jet4);
            writer.table(table);
            writer.end();
        },
        [&](FrameWriter& writer) {
            writer.opened(OldFormat::Jet4);
            writer.table(table);
            writer.row({std::nullopt});
        },
        [&](FrameWriter& writer) {
            writer.opened(OldFormat::Jet4);
            writer.end();
            writer.end();
        },
        [&](FrameWriter& writer) { writer.opened(OldFormat{5}); },
    };
    for (const auto& write : wrong)
        EXPECT_EQ(errorOf(written(write)), runtime::CorruptDatabase);
}

TEST(FramesTest, RefuseInvalidBytes)
{
    EXPECT_EQ(errorOf("Hello, this is no frame"), runtime::CorruptDatabase);
    EXPECT_EQ(errorOf(QByteArray("\0\0\0\0", 4)), runtime::CorruptDatabase);
    EXPECT_EQ(errorOf(QByteArray("\1\0\0\0\x63", 5)), runtime::CorruptDatabase);
    const QByteArray opened = written([](FrameWriter& writer) { writer.opened(OldFormat::Jet4); });
    EXPECT_EQ(errorOf(opened), 0);
    QByteArray longer = opened + '\0';
    longer[0] = static_cast<char>(longer[0] + 1);
    EXPECT_EQ(errorOf(longer), runtime::CorruptDatabase);
}
