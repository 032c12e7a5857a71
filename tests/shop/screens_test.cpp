#include "shop/bar_table.h"
#include "shop/order_source.h"
#include "shop/paper/labels.h"
#include "shop/paper/sheet_document.h"
#include "shop/screens/planning_progress.h"
#include "shop/screens/remake_dialog.h"
#include "shop/screens/settings_dialog.h"
#include "shop/screens/shop_documents.h"
#include "shop/shop_lines.h"
#include "support/doors.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QProgressDialog>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <random>

using namespace shop;
using namespace shop::screens;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

const GroupKey whiteFrame{Part::Frame, u"משקוף"_s, u"לבן"_s};
constexpr int barLengthColumn = 3;
constexpr int kerfColumn = 4;
constexpr int trimColumn = 5;

void clickButton(const QDialog& dialog, const QString& name)
{
    QTest::mouseClick(child<QPushButton>(dialog, name), Qt::LeftButton);
}

/// Clicks a button of the next modal dialog, after it was prepared.
void answerDialog(const QString& button, const std::function<void(QDialog&)>& prepare = {})
{
    QTimer::singleShot(0, qApp, [button, prepare] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return answerDialog(button, prepare);
        if (prepare)
            prepare(*dialog);
        clickButton(*dialog, button);
    });
}

/// Calls the function as soon as a window with the name is visible.
void whenShown(const QString& name, const std::function<void(QWidget&)>& act)
{
    QTimer::singleShot(10, qApp, [name, act] {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (each->objectName() == name && each->isVisible())
                return act(*each);
        }
        whenShown(name, act);
    });
}

/// Returns pieces of many groups and different lengths, whose planning takes many seconds.
std::vector<Piece> hardPieces(int count)
{
    std::mt19937 engine(20261122);
    std::vector<Piece> pieces;
    for (int i = 0; i < count; ++i) {
        const QString profile = QString::number(i % 20);
        const double length = 50 + static_cast<double>(engine() % 20000) / 100;
        pieces.push_back({7, 1, Side::Width, {Part::Frame, profile, {}}, length});
    }
    return pieces;
}

/// Adds order 7 with 1024 lines whose frames have 20 profiles and different sizes. Planning them
/// takes many seconds.
void fillWithHardLines(TemporaryStore& store)
{
    store.addOrder(7);
    store.addLine(7, 1);
    for (int lines = 1; lines < 1024; lines *= 2)
        store.execute(u"INSERT INTO Cuts (Order_Num, NUM, Name, MyWidth, MYHeight, Kind, "
                      "Glass_W, Mahkof_Count) SELECT Order_Num, NUM + ?, Name, MyWidth, MYHeight, "
                      "Kind, Glass_W, Mahkof_Count FROM Cuts"_s,
                      {lines});
    store.execute(u"UPDATE Cuts SET Kanaf_Kind = 'ללא', Glass_Kind = 'ללא', Reshet_Kind = 'ללא', "
                  "Mashkof_W = 50 + (NUM * 7919 % 20000) / 100.0, "
                  "Mashkof_H = 50 + (NUM * 104729 % 20000) / 100.0"_s);
    for (int profile = 0; profile < 20; ++profile)
        store.execute(u"UPDATE Cuts SET Mashof_Kind = ? WHERE NUM % 20 = ?"_s,
                      {QString::number(profile), profile});
}

/// Returns the texts of the first sheet of a document.
QStringList textsOf(const std::shared_ptr<report::PrintedDocument>& document)
{
    QStringList texts;
    const auto page = document->page(0);
    for (const report::PrintedControl& each : page->bands.front().controls)
        texts.append(each.text);
    return texts;
}

} // namespace

class ShopScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void settingsDialog_returnsTheChangedRows()
    {
        SettingsDialog dialog({{whiteFrame, fixedGroup(Part::Slat)}, {}});
        auto* table = child<QTableWidget>(dialog, u"Settings"_s);
        QCOMPARE(table->rowCount(), 2);
        QCOMPARE(table->item(0, barLengthColumn)->text(), u"600"_s);
        // The names of the group cannot be edited and do not look like boxes.
        const QTableWidgetItem* name = table->item(0, 0);
        QVERIFY(!name->flags().testFlag(Qt::ItemIsEditable));
        QVERIFY(name->background().color() != table->palette().color(QPalette::Base));
        table->item(0, barLengthColumn)->setText(u"650"_s);
        clickButton(dialog, u"SaveSettings"_s);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        BarSettings expected = defaultSettings(Part::Frame);
        expected.barLength = 650;
        QCOMPARE(dialog.changed().size(), std::size_t(1));
        QVERIFY(dialog.changed().at(whiteFrame) == expected);
    }

    void settingsDialog_withAnInvalidNumber_staysOpen()
    {
        RecordedBoxes boxes;
        boxes.answer(runtime::vbOK);
        SettingsDialog dialog({{whiteFrame}, {}});
        auto* table = child<QTableWidget>(dialog, u"Settings"_s);
        table->item(0, kerfColumn)->setText(u"-1"_s);
        clickButton(dialog, u"SaveSettings"_s);
        QCOMPARE(boxes.shown().size(), std::size_t(1));
        QCOMPARE(boxes.shown()[0].text, u"ערך לא תקין: עובי חיתוך"_s);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QVERIFY(dialog.changed().empty());
    }

    void settingsDialog_withTrimsThatUseUpTheBar_staysOpen()
    {
        RecordedBoxes boxes;
        boxes.answer(runtime::vbOK);
        SettingsDialog dialog({{fixedGroup(Part::Slat), whiteFrame}, {}});
        auto* table = child<QTableWidget>(dialog, u"Settings"_s);
        table->item(1, barLengthColumn)->setText(u"100"_s);
        table->item(1, trimColumn)->setText(u"50"_s);
        clickButton(dialog, u"SaveSettings"_s);
        QCOMPARE(boxes.shown().size(), std::size_t(1));
        QCOMPARE(boxes.shown()[0].text, u"ערך לא תקין: קיצוץ קצה"_s);
        QCOMPARE(table->currentRow(), 1);
        QCOMPARE(table->currentColumn(), trimColumn);
        QVERIFY(dialog.changed().empty());
        table->item(1, trimColumn)->setText(u"49.5"_s);
        clickButton(dialog, u"SaveSettings"_s);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }

    void remakeChoices_arePartsOfLines()
    {
        const Pieces pieces = piecesOf({shoptest::window(), shoptest::door()}, {});
        const std::vector<RemakeChoice> choices = remakeChoices(pieces);
        const std::vector<RemakeChoice> expected{
            {7, 1, Part::Frame}, {7, 1, Part::Sash}, {7, 1, Part::Mesh}, {7, 1, Part::Glass}};
        QVERIFY(choices == expected);
    }

    void documents_ofAStoredOrder()
    {
        TemporaryStore store;
        store.addOrder(7);
        store.addLine(7, 1);
        const report::FurtherDocuments further = documentsOf(store.path(), 7);
        QStringList titles;
        for (const report::FurtherDocument& each : further.documents)
            titles.append(each.title);
        QCOMPARE(titles,
                 (QStringList{u"רשימת חיתוך"_s, u"תוכנית מוטות"_s, u"רשימת זכוכית"_s,
                              u"רשימת רשתות"_s, u"מדבקות"_s, u"איך חושב"_s, u"קריאה חוזרת"_s}));
        QCOMPARE(further.commands.size(), std::size_t(1));
        QWidget window;
        const report::MadeDocument cuts = further.documents[0].make(&window, 0);
        QVERIFY(textsOf(cuts.document).contains(u"119.4"_s));
        QVERIFY(cuts.data().contains("119.4"));
        QVERIFY(textsOf(further.documents[4].make(&window, 0).document).contains(u"7-1-frame-1"_s));
        const report::MadeDocument computed = further.documents[5].make(&window, 0);
        QVERIFY(textsOf(computed.document).contains(u"119.4"_s));
        QVERIFY(computed.data().contains("7,1,סדרה,120,100,frame,width,119.4,"));
    }

    void labels_haveThreePapers()
    {
        TemporaryStore store;
        store.addOrder(7);
        store.addLine(7, 1);
        const report::FurtherDocument labels = documentsOf(store.path(), 7).documents[4];
        QCOMPARE(labels.variants.name, u"LabelPaper"_s);
        QCOMPARE(labels.variants.titles,
                 (QStringList{u"דפי A4 (3 × 8)"_s, u"מדפסת מדבקות 203 dpi"_s,
                              u"מדפסת מדבקות 300 dpi"_s}));
        QWidget window;
        QCOMPARE(labels.make(&window, 0).document->paper(), report::a4Portrait);
        for (const int variant : {1, 2})
            QCOMPARE(labels.make(&window, variant).document->paper(), paper::labelPaper);
    }

    void remakeSlip_isChosenInADialog()
    {
        TemporaryStore store;
        store.addOrder(7);
        store.addLine(7, 1);
        const report::FurtherDocument remake = documentsOf(store.path(), 7).documents[6];
        QWidget window;
        answerDialog(u"CancelRemake"_s);
        QVERIFY(remake.make(&window, 0).document == nullptr);
        answerDialog(u"ShowRemake"_s);
        const report::MadeDocument slip = remake.make(&window, 0);
        QVERIFY(textsOf(slip.document).contains(u"קריאה חוזרת"_s));
        QVERIFY(slip.data().contains(R"("part":"frame")"));
        QVERIFY(!slip.data().contains(R"("part":"sash")"));
        const report::MadeDocument again = slip.again(&window);
        QCOMPARE(again.data(), slip.data());
    }

    void dataOfADocument_stayAfterItCannotBeMadeAgain()
    {
        RecordedBoxes boxes;
        boxes.answer(runtime::vbOK);
        TemporaryStore store;
        store.addOrder(7);
        store.addLine(7, 1);
        const report::FurtherDocuments further = documentsOf(store.path(), 7);
        QWidget window;
        const report::MadeDocument cuts = further.documents[0].make(&window, 0);
        const QByteArray before = cuts.data();
        answerDialog(u"SaveSettings"_s, [](QDialog& dialog) {
            child<QTableWidget>(dialog, u"Settings"_s)->item(0, barLengthColumn)->setText(u"650"_s);
        });
        QVERIFY(further.commands[0].run(&window));
        store.execute(u"DELETE FROM Orders"_s);
        QVERIFY(further.documents[0].make(&window, 0).document == nullptr);
        QCOMPARE(boxes.shown().size(), std::size_t(1));
        QCOMPARE(cuts.data(), before);
    }

    void cancelledPlanning_givesTheBestPlanSoFar()
    {
        const std::vector<Piece> pieces = hardPieces(6000);
        QWidget window;
        bool wasModal = false;
        whenShown(u"PlanningProgress"_s, [&wasModal](QWidget& dialog) {
            wasModal = dialog.windowModality() == Qt::ApplicationModal;
            QTest::mouseClick(dialog.findChild<QPushButton*>(), Qt::LeftButton);
        });
        const ProgressedPlan plan = planWithProgress(pieces, {}, &window);
        QVERIFY(wasModal);
        QVERIFY(!plan.isComplete);
        std::size_t planned = 0;
        for (const GroupPlan& group : plan.groups) {
            for (const GroupBars& bars : group.bars)
                planned += bars.pieces.size();
        }
        QCOMPARE(planned, pieces.size());
    }

    /// A plan that was stopped is not the best one, so the next document is planned anew.
    void stoppedPlan_isMadeAgainForTheNextDocument()
    {
        TemporaryStore store;
        fillWithHardLines(store);
        const report::FurtherDocuments further = documentsOf(store.path(), 7);
        QWidget window;
        const auto dialogs = std::make_shared<int>(0);
        for (int document = 0; document < 2; ++document) {
            whenShown(u"PlanningProgress"_s, [dialogs](QWidget& dialog) {
                ++*dialogs;
                QTest::mouseClick(dialog.findChild<QPushButton*>(), Qt::LeftButton);
            });
            QVERIFY(further.documents[0].make(&window, 0).document != nullptr);
            QCOMPARE(*dialogs, document + 1);
        }
    }

    void endOfTheProgram_endsThePlanning()
    {
        const std::vector<Piece> pieces = hardPieces(6000);
        QWidget window;
        std::optional<ProgressedPlan> plan;
        QTimer::singleShot(0, qApp, [&] {
            QTimer::singleShot(50, qApp, [] { QCoreApplication::exit(); });
            plan = planWithProgress(pieces, {}, &window);
        });
        QCoreApplication::exec();
        QVERIFY(plan.has_value());
        QVERIFY(!plan->isComplete);
    }

    void quickPlanning_isComplete()
    {
        QWidget window;
        const ProgressedPlan plan =
            planWithProgress(piecesOf({shoptest::window()}, {}).pieces, {}, &window);
        QVERIFY(plan.isComplete);
        QCOMPARE(plan.groups.size(), std::size_t(3)); // Frame, sash and mesh.
    }

    void cancelledSettings_changeNothing()
    {
        TemporaryStore store;
        store.addOrder(7);
        const report::FurtherDocuments further = documentsOf(store.path(), 7);
        QWidget window;
        answerDialog(u"CancelSettings"_s);
        QVERIFY(!further.commands[0].run(&window));
        answerDialog(u"SaveSettings"_s); // Without a change.
        QVERIFY(!further.commands[0].run(&window));
    }

    void missingOrder_isToldInABox()
    {
        RecordedBoxes boxes;
        boxes.answer(runtime::vbOK);
        const TemporaryStore store;
        QWidget window;
        const report::FurtherDocuments further = documentsOf(store.path(), 7);
        QVERIFY(further.documents[0].make(&window, 0).document == nullptr);
        QCOMPARE(boxes.shown().size(), std::size_t(1));
        QCOMPARE(boxes.shown()[0].text, u"ההזמנה אינה קיימת עוד.\n\nThere is no order 7."_s);
    }
};

ZOMREL_QTEST_MAIN(ShopScreensTest)
#include "screens_test.moc"
