#include "output/form_view.h"

#include "base/part_captions.h"
#include "output/fitted_label.h"
#include "output/form_print.h"
#include "platform/controls/form.h"
#include "platform/controls/makers.h"
#include "platform/controls/picture_button.h"
#include "platform/controls/png_icon.h"
#include "platform/controls/scroll_part.h"
#include "platform/controls/twips.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/process.h"
#include "store/line_columns.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace output {

namespace {

/// Alignments that Qt does not mirror in a right-to-left form.
constexpr Qt::Alignment toLeft = Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter;
constexpr Qt::Alignment toRight = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;
constexpr Qt::Alignment toCentre = Qt::AlignCenter;

enum class Style { Regular, Bold, Underlined };

/// A rectangle in twips. Its position is measured from the top left corner of the form.
struct Place
{
    int left;
    int top;
    int width;
    int height;
};

struct Look
{
    double pointSize;
    Style style;
    Qt::Alignment alignment;
};

constexpr Look heading{20.25, Style::Bold, toCentre};
constexpr Look dateLine{14.25, Style::Bold, toRight};
constexpr Look caption{14.25, Style::Regular, toLeft};
constexpr Look columnHead{14.25, Style::Underlined, toRight};
constexpr Look seriesName{14.25, Style::Regular, toRight};
constexpr Look opening{14.25, Style::Regular, toCentre};
constexpr Look cell{12, Style::Regular, toRight};

QFont fontOf(const Look& look)
{
    QFont font = controls::fontOf(u"David"_s, look.pointSize);
    font.setBold(look.style == Style::Bold);
    font.setUnderline(look.style == Style::Underlined);
    return font;
}

/// A label for a number or a date. Its text always reads left-to-right.
class NumberLabel : public FittedLabel
{
public:
    explicit NumberLabel(QWidget* parent) : FittedLabel(parent)
    {
        setLayoutDirection(Qt::LeftToRight);
    }
};

/// Adds a label at the given place. The height of the label is increased to the line height of the
/// font if the text would otherwise be clipped.
template <typename Label>
Label* addLabel(QWidget& form, const QString& name, const QString& text, const Place& place,
                const Look& look)
{
    auto* label = new Label(&form);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setFont(fontOf(look));
    label->setAlignment(look.alignment);
    QRect geometry = controls::twipsRect(place.left, place.top, place.width, place.height);
    geometry.setHeight(std::max(geometry.height(), label->fontMetrics().height()));
    label->setGeometry(geometry);
    return label;
}

QPushButton* addButton(QWidget& form, const QString& name, const QString& text, const QString& icon,
                       const Place& place)
{
    auto* button = new controls::PictureButton(name, text, controls::sharpIcon(icon), &form);
    button->setFont(fontOf(cell));
    button->setGeometry(controls::twipsRect(place.left, place.top, place.width, place.height));
    return button;
}

QString viewingDate()
{
    return runtime::Today().toString(u"dd/MM/yyyy"_s);
}

controls::DefaultInstance<FormView>& instance()
{
    static controls::DefaultInstance<FormView> form;
    return form;
}

} // namespace

// The main window is the parent of this dialog, so that the dialog stays above the main window
// while the user works with both windows.
FormView::FormView() : QDialog(controls::mainWindow())
{
    setObjectName(u"FormView"_s);
    setWindowTitle(u"הזמנה"_s);
    // The form is printed as it looks on the screen. Therefore the form is black on white under
    // every desktop theme.
    QPalette sheet = palette();
    sheet.setColor(QPalette::Window, Qt::white);
    sheet.setColor(QPalette::WindowText, Qt::black);
    setPalette(sheet);
    setFixedSize(controls::pixels(9750), controls::pixels(6750));
    addHeading();
    addOpening();
    addParts();
    addButtons();
    load();
    setGeometry(
        QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size(), screen()->geometry()));
    face_ = controls::fitIntoRoom(*this, controls::roomOnScreen(*this), {CmdPrint, CmdClose});
    if (face_ != this)
        controls::centreOnScreen(*this);
    // The close button has the focus when the form opens, so that Enter closes the form instead of
    // printing it.
    CmdClose->setDefault(true);
    CmdClose->setFocus();
}

void FormView::addHeading()
{
    addLabel<FittedLabel>(*this, u"Label1"_s, u"הזמנה"_s, {4080, 120, 2535, 615}, heading);
    addLabel<FittedLabel>(*this, u"Label17"_s, u"תאריך :"_s, {1440, 240, 855, 375}, dateLine);
    LabelDate = addLabel<NumberLabel>(*this, u"LabelDate"_s, {}, {120, 240, 1215, 375}, dateLine);
    addLabel<FittedLabel>(*this, u"Label13"_s, u"שם סדרה :"_s, {5040, 1200, 1455, 255}, caption);
    LabelName =
        addLabel<FittedLabel>(*this, u"LabelName"_s, {}, {840, 1200, 4095, 255}, seriesName);
}

void FormView::addOpening()
{
    addLabel<FittedLabel>(*this, u"Label2"_s, u"רוחב הפתח"_s, {4440, 2280, 1695, 255}, columnHead);
    addLabel<FittedLabel>(*this, u"Label3"_s, u"גובה הפתח"_s, {2280, 2280, 1455, 255}, columnHead);
    LabelOpenWidth =
        addLabel<NumberLabel>(*this, u"LabelOpenWidth"_s, {}, {4920, 2760, 1215, 375}, opening);
    LabelOpenHeight =
        addLabel<NumberLabel>(*this, u"LabelOpenHeight"_s, {}, {2520, 2760, 1215, 375}, opening);
}

void FormView::addParts()
{
    addLabel<FittedLabel>(*this, u"Label15"_s, u"פריט"_s, {7920, 3840, 735, 255}, columnHead);
    addLabel<FittedLabel>(*this, u"Label11"_s, u"רוחב"_s, {6600, 3840, 975, 255}, columnHead);
    addLabel<FittedLabel>(*this, u"Label10"_s, u"גובה"_s, {5280, 3840, 1095, 255}, columnHead);
    addLabel<FittedLabel>(*this, u"Label4"_s, u"כמות"_s, {4680, 3840, 615, 255}, columnHead);
    addLabel<FittedLabel>(*this, u"Label5"_s, u"סוג"_s, {2160, 3840, 2175, 255}, columnHead);
    addLabel<FittedLabel>(*this, u"Label14"_s, u"צבע"_s, {120, 3840, 1695, 255}, columnHead);

    for (int i = 0; i < 4; ++i) {
        const int top = 4320 + 360 * i;
        addLabel<FittedLabel>(*this, u"Label%1"_s.arg(6 + i), base::partCaptions()[std::size_t(i)],
                              {7920, top, 1455, 255}, caption);
        LabelWidth[i] = addLabel<NumberLabel>(*this, u"LabelWidth_%1"_s.arg(i), u"Label16"_s,
                                              {6480, top, 1095, 255}, cell);
        LabelHeight[i] = addLabel<NumberLabel>(*this, u"LabelHeight_%1"_s.arg(i), u"Label17"_s,
                                               {5280, top, 1095, 255}, cell);
        LabelCount[i] = addLabel<NumberLabel>(*this, u"LabelCount_%1"_s.arg(i), u"Label15"_s,
                                              {4560, top, 615, 255}, cell);
        LabelKind[i] = addLabel<FittedLabel>(*this, u"LabelKind_%1"_s.arg(i), u"Label15"_s,
                                             {2040, top, 2295, 255}, cell);
        LabelColor[i] = addLabel<FittedLabel>(*this, u"LabelColor_%1"_s.arg(i), u"Label15"_s,
                                              {120, top, 1815, 255}, cell);
    }
}

void FormView::addButtons()
{
    CmdPrint = addButton(*this, u"CmdPrint"_s, u"הדפס"_s, u":/zomrel/icons/print.png"_s,
                         {3840, 6000, 975, 495});
    CmdClose = addButton(*this, u"CmdClose"_s, u"סגור"_s, u":/zomrel/icons/close.png"_s,
                         {2040, 6000, 975, 495});
    runtime::on(CmdPrint, &QPushButton::clicked, this, [this] { CmdPrint_Click(); });
    runtime::on(CmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

void FormView::load()
{
    for (QLabel* each : {LabelName, LabelOpenWidth, LabelOpenHeight})
        each->clear();
    for (int i = 0; i < 4; ++i) {
        LabelKind[i]->clear();
        LabelColor[i]->clear();
        LabelCount[i]->clear();
        LabelWidth[i]->clear();
        // Only the label for the height of the frame is cleared. The labels for the heights of
        // sash, glass and mesh keep their initial caption until a caller sets their text.
        LabelHeight[0]->clear();
    }
    LabelDate->setText(viewingDate());
}

void FormView::ShowModeless()
{
    show();
    raise();
    activateWindow();
}

void FormView::ShowModal()
{
    hide(); // A visible window cannot become modal.
    exec();
}

void FormView::Unload()
{
    if (isUnloaded_)
        return;
    isUnloaded_ = true;
    emit unloaded();
    done(QDialog::Rejected);
    deleteLater();
}

void FormView::closeEvent(QCloseEvent* event)
{
    event->accept();
    Unload();
}

void FormView::CmdPrint_Click()
{
    CmdPrint->hide();
    CmdClose->hide();
    printForm(*face_);
    CmdPrint->show();
    CmdClose->show();
    // After printing, the close button gets the focus again, so that Enter closes the form and does
    // not print a second copy.
    CmdClose->setFocus();
}

FormView& formView()
{
    return instance()();
}

bool isFormViewLoaded()
{
    return instance().isLoaded();
}

void fillFromLine(FormView& view, dao::Recordset& line)
{
    // A Null clears the label, so that the label does not keep the text of the previous line.
    const auto fillUnlessNull = [](QLabel* label, const QVariant& value) {
        label->setText(runtime::textOrEmpty(value));
    };
    const auto fill = [&line](QLabel* label, int ordinal) {
        label->setText(runtime::toText(line.Fields(ordinal).Value()));
    };

    fillUnlessNull(view.LabelName, line.Fields(u"Name"_s).Value());
    view.LabelDate->setText(viewingDate());
    fill(view.LabelOpenWidth, store::line::openingWidth);
    fill(view.LabelOpenHeight, store::line::openingHeight);
    for (int i = 0; i < 4; ++i) {
        fill(view.LabelWidth[i], store::line::cutWidth(i));
        fill(view.LabelHeight[i], store::line::cutHeight(i));
    }
    for (int i = 0; i < 4; ++i)
        fillUnlessNull(view.LabelKind[i], line.Fields(store::line::kind(i)).Value());
    for (int i = 0; i < 4; ++i)
        fillUnlessNull(view.LabelColor[i], line.Fields(store::line::colour(i)).Value());
    for (int i = 0; i < 4; ++i)
        fill(view.LabelCount[i], store::line::count(i));
}

} // namespace output
