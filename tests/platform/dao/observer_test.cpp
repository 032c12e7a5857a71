#include "platform/dao/fixture.h"

#include <QStringList>

using namespace daotest;

namespace {

/// Writes down what it hears, with the count and the row as they are at that moment.
class Recorder final : public dao::RecordsetObserver
{
public:
    explicit Recorder(dao::Recordset& recordset) : recordset_(recordset)
    {
        recordset_.setObserver(this);
    }
    ~Recorder() override { recordset_.setObserver(nullptr); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    void currentAboutToChange() override { note(u"about"_s); }
    void currentChanged() override { note(u"changed"_s); }
    void rowAdded(const dao::RowKey& key) override { note(u"added "_s + key.toString()); }
    void rowUpdated(const dao::RowKey& key) override { note(u"updated "_s + key.toString()); }
    void rowDeleted(const dao::RowKey& key) override { note(u"deleted "_s + key.toString()); }

    QStringList take() { return std::exchange(heard_, {}); }

private:
    void note(const QString& what)
    {
        const QString row = recordset_.hasCurrent() ? recordset_.Fields(0).Value().toString()
                            : recordset_.isEof()    ? u"eof"_s
                            : recordset_.isBof()    ? u"bof"_s
                                                    : u"none"_s;
        heard_.append(u"%1 @%2 of %3"_s.arg(what, row).arg(recordset_.RecordCount()));
    }

    dao::Recordset& recordset_;
    QStringList heard_;
};

class ObserverTest : public ItemsTest
{
protected:
    void SetUp() override
    {
        ItemsTest::SetUp();
        for (int code : {1, 2, 3, 4})
            add(code, 10 * code);
    }
};

TEST_F(ObserverTest, everyMove_isReportedBeforeAndAfter)
{
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    Recorder recorder(*rows);
    rows->MoveFirst();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @1 of 1"_s, u"changed @1 of 1"_s}));
    rows->MoveNext();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @1 of 1"_s, u"changed @2 of 2"_s}));
    rows->Move(0);
    EXPECT_EQ(recorder.take(), (QStringList{u"about @2 of 2"_s, u"changed @2 of 2"_s}));
    rows->MovePrevious();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @2 of 2"_s, u"changed @1 of 2"_s}));
    rows->MovePrevious();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @1 of 2"_s, u"changed @bof of 2"_s}));
}

TEST_F(ObserverTest, moveLast_isReportedAfterAllRowsAreCounted)
{
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    Recorder recorder(*rows);
    rows->MoveLast();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @1 of 4"_s, u"changed @4 of 4"_s}));
    rows->MoveLast();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @4 of 4"_s, u"changed @4 of 4"_s}));
    rows->MoveNext();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @4 of 4"_s, u"changed @eof of 4"_s}));
}

TEST_F(ObserverTest, refusedMove_isNotReported)
{
    const auto rows = dynaset(u"SELECT * FROM Items WHERE Num = 999"_s);
    Recorder recorder(*rows);
    EXPECT_EQ(errorOf([&] { rows->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveLast(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3021);
    EXPECT_FALSE(rows->moveToKey(1));
    EXPECT_EQ(recorder.take(), QStringList());
}

TEST_F(ObserverTest, deletion_isReportedBeforeAndAfter)
{
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    rows->MoveLast();
    rows->MoveFirst();
    Recorder recorder(*rows);
    rows->Delete();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @1 of 4"_s, u"deleted 1 @none of 3"_s}));
    rows->MoveNext();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @none of 3"_s, u"changed @2 of 3"_s}));
}

TEST_F(ObserverTest, addedAndChangedRows_areReported)
{
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    Recorder recorder(*rows);
    rows->AddNew();
    rows->Fields(u"Num"_s).SetValue(5);
    EXPECT_EQ(recorder.take(), QStringList());
    rows->Update();
    EXPECT_EQ(recorder.take(), (QStringList{u"added 5 @1 of 2"_s}));
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(6);
    rows->Update();
    EXPECT_EQ(recorder.take(), (QStringList{u"updated 1 @1 of 2"_s}));
    rows->Edit();
    rows->Update();
    EXPECT_EQ(recorder.take(), QStringList()) << "nothing was changed";
}

TEST_F(ObserverTest, firstRowAdded_isReportedAsCurrent)
{
    sql(u"DELETE FROM Items"_s);
    const auto rows = dynaset(u"SELECT * FROM Items"_s);
    Recorder recorder(*rows);
    rows->AddNew();
    rows->Fields(u"Code"_s).SetValue(7);
    rows->Update();
    const QString key = rows->currentKey().toString();
    EXPECT_EQ(recorder.take(), (QStringList{u"added %1 @7 of 1"_s.arg(key), u"changed @7 of 1"_s}));
}

TEST_F(ObserverTest, moveToAKey_isReported)
{
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    const dao::RowKey key = [&] {
        const auto other = dynaset(u"SELECT * FROM Items WHERE Num = 30"_s);
        return other->currentKey();
    }();
    Recorder recorder(*rows);
    EXPECT_TRUE(rows->moveToKey(key));
    EXPECT_EQ(recorder.take(), (QStringList{u"about @1 of 1"_s, u"changed @3 of 3"_s}));
    EXPECT_TRUE(rows->moveToKey(key));
    EXPECT_EQ(recorder.take(), (QStringList{u"about @3 of 3"_s, u"changed @3 of 3"_s}));
    EXPECT_FALSE(rows->moveToKey(dao::RowKey()));
    EXPECT_FALSE(rows->moveToKey(999));
    EXPECT_EQ(recorder.take(), QStringList());
}

TEST_F(ObserverTest, movesOfATable_areReported)
{
    const auto rows = table(u"Items"_s);
    Recorder recorder(*rows);
    rows->SetIndex(u"ByNum"_s);
    EXPECT_EQ(recorder.take(), (QStringList{u"changed @1 of 4"_s}));
    rows->Seek(u"="_s, 30);
    EXPECT_EQ(recorder.take(), (QStringList{u"about @1 of 4"_s, u"changed @3 of 4"_s}));
    rows->Seek(u"="_s, 31);
    EXPECT_EQ(recorder.take(), (QStringList{u"about @3 of 4"_s, u"changed @none of 4"_s}));
    rows->MoveLast();
    EXPECT_EQ(recorder.take(), (QStringList{u"about @none of 4"_s, u"changed @4 of 4"_s}));
    EXPECT_TRUE(rows->moveToKey(2));
    EXPECT_EQ(recorder.take(), (QStringList{u"about @4 of 4"_s, u"changed @2 of 4"_s}));
}

TEST_F(ObserverTest, requery_reportsTheCurrentRow)
{
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    rows->MoveLast();
    add(9, 1);
    Recorder recorder(*rows);
    rows->Requery();
    EXPECT_EQ(recorder.take(), (QStringList{u"changed @9 of 1"_s}));
}

TEST_F(ObserverTest, observerThatReleasesOrClosesTheRecordset_isSafe)
{
    class LastWord final : public dao::RecordsetObserver
    {
    public:
        explicit LastWord(std::function<void()> word) : word_(std::move(word)) {}
        void currentAboutToChange() override { word_(); }
        void currentChanged() override {}
        void rowAdded(const dao::RowKey&) override {}
        void rowUpdated(const dao::RowKey&) override {}
        void rowDeleted(const dao::RowKey&) override {}

    private:
        std::function<void()> word_;
    };
    auto rows = dynaset(u"SELECT * FROM Items"_s);
    LastWord release([&] { rows.reset(); });
    rows->setObserver(&release);
    rows->MoveNext();
    EXPECT_EQ(rows, nullptr);
    rows = dynaset(u"SELECT * FROM Items"_s);
    rows->setObserver(&release);
    rows->Delete();
    EXPECT_EQ(rows, nullptr);
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 3);
    rows = dynaset(u"SELECT * FROM Items"_s);
    LastWord close([&] { rows->database()->Close(); });
    rows->setObserver(&close);
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3420);
}

TEST_F(ObserverTest, exceptionInTheObserver_preventsTheMove)
{
    class Refusal final : public dao::RecordsetObserver
    {
    public:
        void currentAboutToChange() override { throw runtime::RunTimeError(13); }
        void currentChanged() override {}
        void rowAdded(const dao::RowKey&) override {}
        void rowUpdated(const dao::RowKey&) override {}
        void rowDeleted(const dao::RowKey&) override {}
    } refusal;
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    rows->setObserver(&refusal);
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 13);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 13);
    EXPECT_EQ(rows->Fields(0).Value(), 1);
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 4);
    rows->setObserver(nullptr);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(0).Value(), 2);
}

} // namespace
