#include "panel_host.h"

#include "base/input_boxes.h"
#include "base/module1.h"
#include "calculation/form_select_serial.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/run_time_error.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void resetSharedState()
{
    Module1::SqlText.clear();
    Module1::SelectedSerialNum = 0;
    Module1::IsMonoblock = false;
    Module1::IsDoorFrame = false;
    Module1::MonoWidthDeduct = 0.0;
    Module1::MonoHeightDeduct = 0;
    Module1::ShalavWidthDeduct = 0.0;
    Module1::U_Thick = 0.0;
    Module1::Shalav_Thick = 0.0;
    Module1::DoorOpenWidth = 0;
    Module1::KindCaption.clear();
    Module1::CutValues.fill(0);
    Module1::CurrentOrderNum = 1;
}

} // namespace

PanelHost::PanelHost()
{
    resetSharedState();
    store.addOrder(1);
    auto* row = new QHBoxLayout(&window_);
    panel_ = new calculation::OpeningPanel(&window_);
    row->addWidget(panel_);
    calculation::setOpeningPanelProvider(
        [this]() -> calculation::OpeningPanel& { return *panel_; });
    runtime::on(panel_, &calculation::OpeningPanel::seriesRequested, panel_,
                [] { calculation::formSelectSerial().Show(); });
    panel_->bindKindsAndColours();
    window_.show();
    window_.activateWindow();
    if (!QTest::qWaitForWindowActive(&window_))
        qFatal("the window did not become active");
}

PanelHost::~PanelHost()
{
    calculation::setOpeningPanelProvider({});
}

void PanelHost::leaveOrderForm()
{
    window_.close();
    delete panel_;
    panel_ = nullptr;
}

int PanelHost::chooseExample(int kanafNum, const QVariant& sign)
{
    const int autoNum = store.addSeries(
        u"בלגי 7000"_s, {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, kanafNum, 2, sign);
    choose(autoNum, u"בלגי 7000"_s, sign.toString() == "d2000"_L1);
    return autoNum;
}

void PanelHost::choose(int autoNum, const QString& name, bool isDoor)
{
    Module1::SelectedSerialNum = static_cast<std::int16_t>(autoNum);
    Module1::IsDoorFrame = isDoor;
    panel().LabelSerial->setText(name);
}

void PanelHost::takeMonoblock()
{
    Module1::IsMonoblock = true;
    Module1::MonoWidthDeduct = 2.5;
    Module1::MonoHeightDeduct = 18;
    Module1::U_Thick = u"6.5"_s;
    Module1::ShalavWidthDeduct = 12.7;
    Module1::Shalav_Thick = 4.5;
    panel().LabelKind->setText(u"מונובלוק : 20 מכסה 15"_s);
}

void PanelHost::type(const QString& width, const QString& widthHundredths, const QString& height,
                     const QString& heightHundredths)
{
    panel().TextNum[0]->setText(width);
    panel().TextNum[1]->setText(widthHundredths);
    panel().TextNum[2]->setText(height);
    panel().TextNum[3]->setText(heightHundredths);
}

void PanelHost::add()
{
    QTest::mouseClick(panel().CmdAdd, Qt::LeftButton);
}

void PanelHost::addFailing(int errorNumber)
{
    boxes.clear();
    boxes.answer(runtime::vbOK);
    add();
    expectEnded(errorNumber);
}

void PanelHost::expectEnded(int errorNumber)
{
    QCOMPARE(boxes.shown().size(), std::size_t{1});
    QVERIFY2(boxes.shown().front().text.startsWith(u"Run-time error '%1':"_s.arg(errorNumber)),
             qPrintable(boxes.shown().front().text));
    QCOMPARE(end.exitStatus(), std::optional<int>(1));
}

QVariant PanelHost::stored(const QString& field)
{
    return store.scalar(u"SELECT \"%1\" FROM Cuts ORDER BY Code DESC LIMIT 1"_s.arg(field));
}

int PanelHost::lineCount()
{
    return store.scalar(u"SELECT count(*) FROM Cuts"_s).toInt();
}

QStringList PanelHost::boxTexts() const
{
    QStringList texts;
    for (const base::MeasureBox* box : panel_->TextNum)
        texts.append(box->text());
    return texts;
}
