#include "picker_host.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

using calculation::FormSelectSerial;

const QList<double> someDeductions{-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25};

FormSelectSerial& open(PanelHost& host)
{
    QTest::mouseClick(host.panel().CmdPicSerial, Qt::LeftButton);
    FormSelectSerial& picker = calculation::formSelectSerial();
    if (!QTest::qWaitForWindowActive(&picker))
        qFatal("the picker did not become active");
    return picker;
}

void choose(FormSelectSerial& picker)
{
    QTest::mouseClick(picker.CmdPic, Qt::LeftButton);
}

void closePickers()
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        auto* picker = qobject_cast<FormSelectSerial*>(each);
        if (picker != nullptr && picker->isVisible())
            picker->reject();
    }
}
