#pragma once

#include "platform/runtime/file_system_object.h"

#include <QString>
#include <QVariant>

#include <array>
#include <cstdint>
#include <memory>

/// The program's shared variables. One user-interface thread reads and writes them.
namespace Module1 {

/// Full path of the store, set once at start: the only place where the path is kept.
extern QString StorePath;
/// Full path of the report's logo picture.
extern QString LogoPath;
extern std::unique_ptr<runtime::FileSystemObject> FileSys;

/// The order that the order form works on.
extern std::int16_t CurrentOrderNum;
/// Scratch text of the query being built: each routine builds its own and uses it at once.
extern QString SqlText;

/// The shared calculation state. It outlives all forms. A QVariant slot keeps what was put in it, a
/// number or a text; when it goes to a field the store converts it.
extern std::int16_t SelectedSerialNum; ///< 0 while no series has been chosen.
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
