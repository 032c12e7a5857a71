#pragma once

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace driving {

/// The object names of the windows and controls that are operated by the functions of the namespace
/// driving.
namespace names {
inline const QString orderForm = QStringLiteral("FrOrder");
inline const QString openPicker = QStringLiteral("CmdPicSerial");
inline const QString addLine = QStringLiteral("CmdAdd");
inline const QString picker = QStringLiteral("FormSelectSerial");
inline const QString seriesGrid = QStringLiteral("DBGrid1");
inline const QString monoblock = QStringLiteral("CheckKind");
inline const QString takeSeries = QStringLiteral("CmdPic");
inline const QString closePicker = QStringLiteral("CmdClose");
inline const QString preview = QStringLiteral("DataReport1");

/// Returns the object name of an input box for a measure. The order form and the series picker
/// number these boxes from 0. Each measure has two boxes: the whole part, and then the hundredths.
QString measureBox(int index);
} // namespace names

/// The index of the column with the series' name in the grid of the series picker.
inline constexpr int seriesNameColumn = 2;

/// The texts of a measure's two input boxes: the whole part and the hundredths. If the text of the
/// whole part is empty, neither box is changed.
struct Boxes
{
    QString whole;
    QString hundredths;
};

/// The values that the order form needs for one opening.
struct Opening
{
    Boxes width;
    Boxes height;
    std::array<QString, 4> kinds;   ///< The kinds of the frame, the sash, the glass and the mesh.
    std::array<QString, 4> colours; ///< The colours of the frame, the sash, the glass and the mesh.
    std::optional<Boxes> doorThickness;
};

/// The object name of a control and the text to enter into the control.
struct Entry
{
    QString control;
    QString text;
};

/// Returns the names of a measure's two input boxes, each with the text to enter, or nothing if the
/// text of the whole part is empty. `wholeBox` is the index of the box for the whole part; the next
/// box is for the hundredths.
std::vector<Entry> measureEntries(int wholeBox, const Boxes& boxes);
/// Returns the names of the input boxes for the width, the height and the door thickness of the
/// opening, each with the text to enter.
std::vector<Entry> measureEntries(const Opening& opening);
/// Returns the names of the combo boxes for kinds and colours, part by part, each with the text to
/// enter.
std::vector<Entry> listEntries(const Opening& opening);

} // namespace driving
