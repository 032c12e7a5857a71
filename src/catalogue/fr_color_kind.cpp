#include "catalogue/fr_color_kind.h"

#include "catalogue/fonts.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/frame_fit.h"
#include "platform/controls/picture_button.h"
#include "platform/controls/png_icon.h"
#include "platform/controls/twips.h"
#include "platform/runtime/guard.h"
#include "store/schema.h"
#include "store/store_access.h"

#include <QCloseEvent>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace catalogue {

namespace {

struct GridPlace
{
    QString caption;
    int left; ///< In twips, like all positions on this form.
    int top;
};

/// Returns the caption and the position of each grid, by grid index. On the screen, the mesh grid
/// and the glass grid are deliberately in the opposite order of their indexes.
const std::array<GridPlace, 8>& gridPlaces()
{
    static const std::array<GridPlace, 8> places{{
        {u"סוג משקוף"_s, 9960, 1440},
        {u"סוג כנף"_s, 6720, 1440},
        {u"סוג זכוכית"_s, 240, 1440},
        {u"סוג רשת"_s, 3465, 1440},
        {u"צבע משקוף"_s, 9960, 3840},
        {u"צבע כנף"_s, 6720, 3840},
        {u"צבע זכוכית"_s, 240, 3840},
        {u"צבע רשת"_s, 3480, 3840},
    }};
    return places;
}

void bindTable(controls::DataControl& control, const QString& table)
{
    control.setRecordset(store::OpenMyDataBase()->OpenRecordset(table, dao::dbOpenTable));
}

} // namespace

FrColorKind::FrColorKind() : ChildForm(u"FrColorKind"_s, u"סוגים וצבעים"_s)
{
    setFixedSize(controls::pixels(13245), controls::pixels(8025));
    addHeading();
    addGrids();
    addCommand();
    load();
}

void FrColorKind::addHeading()
{
    QLabel* heading = controls::makeLabel(u"Label1"_s, u"סוגים וצבעים"_s, headingFont(), this);
    heading->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    heading->setGeometry(controls::twipsRect(3840, 360, 2655, 615));
}

void FrColorKind::addGrids()
{
    for (int i = 0; i < 4; ++i) {
        DataKind[i] = new controls::DataControl(u"DataKind_%1"_s.arg(i), this);
        DataColor[i] = new controls::DataControl(u"DataColor_%1"_s.arg(i), this);
    }
    for (int i = 0; i < 8; ++i) {
        const GridPlace& place = gridPlaces()[i];
        auto* grid = new controls::DBGrid(u"DBGridKind_%1"_s.arg(i), this);
        grid->setCaption(place.caption);
        grid->setColumns({{u"Code"_s, u"Code"_s}, {u"שם"_s, u"Name"_s, 1}});
        grid->setEditable(true);
        grid->setDataSource(i < 4 ? DataKind[i] : DataColor[i - 4]);
        grid->setGeometry(controls::twipsRect(place.left, place.top, 3015, 2235));
        DBGridKind[i] = grid;
    }
}

void FrColorKind::addCommand()
{
    auto* end = new controls::PictureButton(
        u"CmdEnd"_s, u"סיים"_s, controls::sharpIcon(u":/zomrel/icons/close.png"_s), this);
    end->setFont(commandFont());
    end->setGeometry(controls::twipsRect(6120, 6480, 1095, 495));
    runtime::on(end, &QPushButton::clicked, this, [this] { CmdEnd_Click(); });
    new controls::FrameFit(*this, {end});
}

void FrColorKind::load()
{
    for (int i = 0; i < 4; ++i)
        bindTable(*DataColor[i], store::partLists()[i].colorTable);
    for (int i = 0; i < 4; ++i)
        bindTable(*DataKind[i], store::partLists()[i].kindTable);
    for (controls::DBGrid* grid : DBGridKind)
        controls::SetGridFont(*grid);
}

bool FrColorKind::writeRows()
{
    bool areAllWritten = true;
    for (controls::DBGrid* grid : DBGridKind)
        areAllWritten = grid->commitEdits() && areAllWritten;
    return areAllWritten;
}

void FrColorKind::CmdEnd_Click()
{
    if (writeRows())
        Unload();
}

void FrColorKind::closeEvent(QCloseEvent* event)
{
    if (writeRows())
        ChildForm::closeEvent(event);
    else
        event->ignore();
}

} // namespace catalogue
