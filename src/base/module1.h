#pragma once

#include "platform/runtime/file_system_object.h"

#include <QString>
#include <QVariant>

#include <array>
#include <cstdint>
#include <memory>

/// The program's shared variables. They are accessed only on the user-interface thread.
namespace Module1 {

/// Full path of the store file. It is set once at start.
extern QString StorePath;
/// Full path of the logo picture that the report prints.
extern QString LogoPath;
extern std::unique_ptr<runtime::FileSystemObject> FileSys;

/// Number of the order that the order form shows.
extern std::int16_t CurrentOrderNum;
/// Scratch variable for query texts. A routine stores its query in this variable and runs the query
/// at once.
extern QString SqlText;

/// The shared variables of the calculation. They keep their values after a form is closed. A
/// QVariant variable contains a number or a text. The store converts it to the type of the field to
/// which it is assigned.
extern std::int16_t SelectedSerialNum; ///< 0 if no series has been chosen.
extern bool IsMonoblock;
extern bool IsDoorFrame;
extern QVariant MonoWidthDeduct;
extern double MonoHeightDeduct;
extern QVariant ShalavWidthDeduct;
extern QVariant MyWidth;
extern QVariant MYHeight;
extern QVariant MyWidth_2;
extern double MYHeight_2;
extern QVariant U_Thick;
extern QVariant U_Cut;
extern QVariant U_Vasa;
extern QVariant Shalav_Thick;
extern QVariant Shalav_Width;
extern double Shalav_Count;
extern QVariant Argaz_Width;
extern double Argaz_Height;
extern double DoorOpenWidth;
extern QString KindCaption;
extern std::array<double, 12> CutValues;

} // namespace Module1
