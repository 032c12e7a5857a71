#include "base/module1.h"

namespace Module1 {

QString StorePath;
QString LogoPath;
std::unique_ptr<runtime::FileSystemObject> FileSys;

std::int16_t CurrentOrderNum = 0;
QString SqlText;

std::int16_t SelectedSerialNum = 0;
bool IsMonoblock = false;
bool IsDoorFrame = false;
QVariant MonoWidthDeduct = 0.0;
double MonoHeightDeduct = 0;
QVariant ShalavWidthDeduct = 0.0;
QVariant MyWidth = 0.0;
QVariant MYHeight = 0.0;
QVariant MyWidth_2 = 0.0;
double MYHeight_2 = 0;
QVariant U_Thick = 0.0;
QVariant U_Cut = 0.0;
QVariant U_Vasa = 0.0;
QVariant Shalav_Thick = 0.0;
QVariant Shalav_Width = 0.0;
double Shalav_Count = 0;
QVariant Argaz_Width = 0.0;
double Argaz_Height = 0;
double DoorOpenWidth = 0;
QString KindCaption;
std::array<double, 12> CutValues{};

} // namespace Module1
