// Walks every form as a screen reader does.

#include "driving/opening.h"
#include "driving/order_form.h"
#include "platform/controls/accessibility.h"
#include "platform/controls/db_grid.h"
#include "shell/appearance.h"
#include "shell/help_window.h"
#include "shell/mdi_zomrel.h"
#include "shop/screens/remake_dialog.h"
#include "support/doors.h"
#include "support/screen_reader.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>

using namespace Qt::StringLiterals;
using driving::inNextModal;
using testsupport::child;
using testsupport::ScreenReader;
using testsupport::speechFaults;

class AccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void orderForm_isNamed();
    void orderForm_announcesEachTabStop();
    void picker_isNamed();
    void searchAndLineView_areNamed();
    void catalogueForms_areNamed();
    void preview_isNamed();
    void settingsDialogs_areNamed();
    void help_isNamed();
    void mainWindowsToolbar_isAnnounced();

private:
    QWidget& formInFrame(const QString& name) const;
    QWidget& openOrder() const;
    static QWidget& openPreview(const QWidget& order);

    std::unique_ptr<testsupport::TemporaryStore> store_;
    std::unique_ptr<testsupport::RecordedBoxes> boxes_;
    std::unique_ptr<testsupport::RecordedEnd> end_;
    std::unique_ptr<ScreenReader> reader_;
    std::unique_ptr<shell::MDIZomrel> window_;
};

namespace {

const QString series = u"בלגי 7000"_s;

QString spokenName(const QWidget& form, const QString& name)
{
    return QAccessible::queryAccessibleInterface(child<QWidget>(form, name))
        ->text(QAccessible::Name);
}

/// Returns the names of the headers that a screen reader finds in a grid. Fails if the number of
/// children does not fit to the headers and rows.
QStringList spokenHeaders(const QWidget& form, const QString& grid)
{
    auto* view = child<controls::DBGrid>(form, grid);
    const QAccessibleInterface& whole = *QAccessible::queryAccessibleInterface(view);
    QStringList headers;
    for (int i = 0; i < whole.childCount(); ++i) {
        if (whole.child(i)->role() == QAccessible::ColumnHeader)
            headers.append(whole.child(i)->text(QAccessible::Name));
    }
    if (whole.childCount() != headers.size() * (view->model()->rowCount() + 1))
        qFatal("%s has %d children", qPrintable(grid), whole.childCount());
    return headers;
}

QString faultsOf(QWidget& form)
{
    return speechFaults(form).join(u'\n');
}

} // namespace

void AccessibilityTest::initTestCase()
{
    shell::setUpAppearance(*qApp);
    controls::installAccessibility();
}

void AccessibilityTest::init()
{
    store_ = std::make_unique<testsupport::TemporaryStore>(
        testsupport::TemporaryStore::Contents::Delivered);
    boxes_ = std::make_unique<testsupport::RecordedBoxes>();
    end_ = std::make_unique<testsupport::RecordedEnd>();
    store_->addSeries(series, {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, 2, 2);
    store_->addOrder(1);
    store_->addLine(1, 1, series);
    reader_ = std::make_unique<ScreenReader>();
    window_ = std::make_unique<shell::MDIZomrel>(store_->folder());
    window_->resize(1366, 728);
    QVERIFY(testsupport::showActive(*window_));
}

void AccessibilityTest::cleanup()
{
    QCOMPARE(boxes_->unexpected(), QStringList());
    driving::closeWindow(driving::names::preview);
    window_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    reader_.reset();
    end_.reset();
    boxes_.reset();
    store_.reset();
}

QWidget& AccessibilityTest::formInFrame(const QString& name) const
{
    return *child<QWidget>(*window_->findChild<QMdiArea*>(), name);
}

QWidget& AccessibilityTest::openOrder() const
{
    window_->GetOrder(1);
    return formInFrame(driving::names::orderForm);
}

QWidget& AccessibilityTest::openPreview(const QWidget& order)
{
    driving::click(order, u"CmdPrint"_s);
    QWidget* preview = driving::shownWindow(driving::names::preview);
    if (preview == nullptr || !QTest::qWaitForWindowActive(preview))
        qFatal("no preview");
    return *preview;
}

void AccessibilityTest::orderForm_isNamed()
{
    QWidget& order = openOrder();
    QCOMPARE(faultsOf(order), QString());
    QCOMPARE(spokenName(order, u"TextNum_0"_s), u"רוחב, שלם"_s);
    QCOMPARE(spokenName(order, u"TextNum_1"_s), u"רוחב, מאיות"_s);
    QCOMPARE(spokenName(order, u"TextNum_2"_s), u"גובה, שלם"_s);
    QCOMPARE(spokenName(order, u"TextNum_3"_s), u"גובה, מאיות"_s);
    QCOMPARE(spokenName(order, u"TextNum_5"_s), u"עובי משקוף דלת, מאיות"_s);
    const QStringList parts{u"משקוף"_s, u"כנף"_s, u"זכוכית"_s, u"רשת"_s};
    for (int part = 0; part < 4; ++part) {
        const QString kind = u"DBComboKind_%1"_s.arg(part);
        child<QComboBox>(order, kind)->setEditText(u"רגיל"_s);
        QCOMPARE(spokenName(order, kind), parts[part] + u", סוג"_s);
        QCOMPARE(spokenName(order, u"DBComboColor_%1"_s.arg(part)), parts[part] + u", צבע"_s);
    }
    QCOMPARE(spokenName(order, u"DBGrid1"_s), u"שורות בהזמנה"_s);
    QCOMPARE(spokenHeaders(order, u"DBGrid1"_s),
             QStringList({u"גובה פתח"_s, u"רוחב פתח"_s, u"שם סדרה"_s, u"סוג חלון"_s, u"מס' "_s}));
    QCOMPARE(spokenName(order, u"CmdAdd"_s), u"הוסף להזמנה"_s);
}

/// Presses Tab until the focus has gone round. Each stop is announced by the name of its control.
void AccessibilityTest::orderForm_announcesEachTabStop()
{
    const QWidget& order = openOrder();
    auto* first = child<QWidget>(order, u"CmdPicSerial"_s);
    first->setFocus();
    QCoreApplication::processEvents();
    reader_->takeFocused();
    int stops = 0;
    do {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget* now = QApplication::focusWidget();
        const QString name = QAccessible::queryAccessibleInterface(now)->text(QAccessible::Name);
        QVERIFY(!name.isEmpty());
        QStringList expected{name};
        if (auto* grid = qobject_cast<controls::DBGrid*>(now))
            expected.append(grid->currentIndex().data().toString());
        QStringList heard;
        const auto lastHeard = [&] {
            heard += reader_->takeFocused();
            return heard.mid(heard.size() - expected.size()).join(u'|');
        };
        QTRY_COMPARE(lastHeard(), expected.join(u'|'));
        ++stops;
    } while (QApplication::focusWidget() != first && stops < 100);
    // The series, four measures, three commands, eight lists, the grid, three boxes of the customer
    // and seven commands that are enabled.
    QCOMPARE(stops, 27);
}

void AccessibilityTest::picker_isNamed()
{
    const QWidget& order = openOrder();
    bool hasCome = false;
    QVERIFY(driving::chooseSeries(order, series, [&](QWidget& picker) {
        hasCome = true;
        child<QAbstractButton>(picker, u"CheckKind"_s)->setChecked(true);
        QCOMPARE(faultsOf(picker), QString());
        QCOMPARE(spokenHeaders(picker, u"DBGrid1"_s),
                 QStringList({u"מס. כנף"_s, u"מס. נתיב"_s, u"שם סדרה"_s}));
        QCOMPARE(spokenName(picker, u"TextNum_0"_s), u"הורדה מהרוחב, שלם"_s);
        QCOMPARE(spokenName(picker, u"ComboMonoBlock"_s), u"סוג: מונו בלוק : 10"_s);
        QCOMPARE(spokenName(picker, u"Combo_U_Thick"_s), u"עובי U: 6.5"_s);
    }));
    QVERIFY(hasCome);
}

void AccessibilityTest::searchAndLineView_areNamed()
{
    const QWidget& order = openOrder();
    int come = 0;
    inNextModal([&](QDialog& search) {
        ++come;
        QCOMPARE(faultsOf(search), QString());
        QCOMPARE(spokenHeaders(search, u"DBGrid1"_s),
                 QStringList(
                     {u"מס' טלפון"_s, u"כתובת"_s, u"שם לקוח"_s, u"תאריך הזמנה"_s, u"מס' הזמנה"_s}));
        QCOMPARE(spokenHeaders(search, u"DBGrid2"_s).size(), 4);
    });
    driving::click(order, u"CmdFindOrder"_s);
    inNextModal([&](QDialog& view) {
        ++come;
        QCOMPARE(faultsOf(view), QString());
    });
    driving::click(order, u"CmdView"_s);
    QCOMPARE(come, 2);
}

void AccessibilityTest::catalogueForms_areNamed()
{
    window_->GetOrder(2);
    QWidget& serials = formInFrame(u"FrSerials"_s);
    driving::click(serials, u"CmdNew"_s); // Enables the boxes.
    QCOMPARE(faultsOf(serials), QString());
    QCOMPARE(spokenName(serials, u"TextSign_1"_s), u"משקוף מהגובה, סימן"_s);
    QCOMPARE(spokenName(serials, u"ComboLane"_s), u"מספר נתיבים: 1 נתיב"_s);
    QCOMPARE(spokenHeaders(serials, u"DBGrid1"_s),
             QStringList({u"מס. כנף"_s, u"מס.  נתיב"_s, u"שם סדרה"_s}));
    window_->GetOrder(3);
    QWidget& kinds = formInFrame(u"FrColorKind"_s);
    QCOMPARE(faultsOf(kinds), QString());
    for (int list = 0; list < 8; ++list)
        QCOMPARE(spokenHeaders(kinds, u"DBGridKind_%1"_s.arg(list)), QStringList{u"שם"_s});
    QCOMPARE(spokenName(kinds, u"DBGridKind_6"_s), u"צבע זכוכית"_s);
}

void AccessibilityTest::preview_isNamed()
{
    QWidget& preview = openPreview(openOrder());
    QTest::keyClick(&preview, Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(faultsOf(preview), QString());
    QCOMPARE(spokenName(preview, u"Documents"_s), u"מסמך: דוח הזמנה"_s);
    QCOMPARE(spokenName(preview, u"EditPageNumber"_s), u"מספר דף"_s);
    QCOMPARE(spokenName(preview, u"ComboZoom"_s), u"גודל התצוגה"_s);
    QCOMPARE(spokenName(preview, u"EditFind"_s), u"חיפוש"_s);
    QCOMPARE(spokenName(preview, u"PreviewPages"_s), u"דפי המסמך"_s);
    QCOMPARE(child<QWidget>(preview, u"PreviewPages"_s)->accessibleDescription(), u"דף 1 מתוך 1"_s);
    // Each document has its lists, and the cutting list has papers to choose from.
    auto* documents = child<QComboBox>(preview, u"Documents"_s);
    for (int each = 1; each < documents->count() - 1; ++each) {
        documents->setCurrentIndex(each);
        emit documents->activated(each); // Waits until the document is made.
        QCOMPARE(faultsOf(preview), QString());
    }
}

void AccessibilityTest::settingsDialogs_areNamed()
{
    QWidget& preview = openPreview(openOrder());
    int come = 0;
    inNextModal([&](QDialog& settings) {
        ++come;
        QCOMPARE(faultsOf(settings), QString());
        QCOMPARE(spokenName(settings, u"Settings"_s), u"הגדרות מוטות"_s);
    });
    child<QAction>(preview, u"ActionBarSettings"_s)->trigger();
    QCOMPARE(come, 1);
    shop::screens::RemakeDialog remake({}, &preview);
    remake.show();
    QCOMPARE(faultsOf(remake), QString());
    QCOMPARE(spokenName(remake, u"Parts"_s), u"חלקים"_s);
}

void AccessibilityTest::help_isNamed()
{
    shell::HelpWindow help(nullptr);
    help.setAttribute(Qt::WA_DeleteOnClose, false);
    QVERIFY(testsupport::showActive(help));
    QCOMPARE(faultsOf(help), QString());
}

void AccessibilityTest::mainWindowsToolbar_isAnnounced()
{
    QTest::keyClick(window_.get(), Qt::Key_F10);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    const QStringList heard = reader_->takeFocused();
    QCOMPARE(heard.mid(heard.size() - 2), QStringList({u"הזמנות"_s, u"סדרות"_s}));
    QCOMPARE(spokenName(*window_, u"Toolbar1"_s), u"פקודות"_s);
}

ZOMREL_QTEST_MAIN(AccessibilityTest)
#include "accessibility_test.moc"
