#include "shop/bar_table.h"
#include "shop/order_source.h"
#include "shop/paper/sheet_document.h"
#include "shop/screens/remake_dialog.h"
#include "shop/screens/settings_dialog.h"
#include "shop/screens/shop_documents.h"
#include "shop/shop_lines.h"
#include "support/doors.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include <algorithm>

using namespace shop;
using namespace shop::screens;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

const GroupKey whiteFrame{Part::Frame, u"משקוף"_s, u"לבן"_s};
constexpr int barLengthColumn = 3;
constexpr int kerfColumn = 4;

void clickButton(const QDialog& dialog, const QString& name)
{
    QTest::mouseClick(child<QPushButton>(dialog, name), Qt::LeftButton);
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
        QCOMPARE(titles, (QStringList{u"רשימת חיתוך"_s, u"תוכנית מוטות"_s, u"רשימת זכוכית"_s,
                                      u"רשימת רשתות"_s, u"מדבקות"_s, u"מדבקות למדפסת 203"_s,
                                      u"מדבקות למדפסת 300"_s, u"איך חושב"_s}));
        QWidget window;
        QVERIFY(textsOf(further.documents[0].make(&window)).contains(u"119.4"_s));
        QVERIFY(further.documents[0].data().contains("119.4"));
        QVERIFY(textsOf(further.documents[4].make(&window)).contains(u"7-1-frame-1"_s));
        QVERIFY(textsOf(further.documents[7].make(&window)).contains(u"119.4"_s));
        QVERIFY(further.documents[7].data().contains("7,1,סדרה,120,100,frame,width,119.4,"));
    }

    void missingOrder_isToldInABox()
    {
        RecordedBoxes boxes;
        boxes.answer(runtime::vbOK);
        const TemporaryStore store;
        QWidget window;
        const report::FurtherDocuments further = documentsOf(store.path(), 7);
        QVERIFY(further.documents[0].make(&window) == nullptr);
        QCOMPARE(boxes.shown().size(), std::size_t(1));
        QCOMPARE(boxes.shown()[0].text, u"There is no order 7."_s);
    }
};

ZOMREL_QTEST_MAIN(ShopScreensTest)
#include "screens_test.moc"
