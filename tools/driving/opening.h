#pragma once

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace driving {

/// The object names of the windows and controls that the steps use.
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

/// Returns the name of an input box for measures. The order form and the picker number their boxes
/// from 0; each whole box is followed by its hundredths box.
QString measureBox(int index);
} // namespace names

/// Index of the column of the picker's grid that holds the name of the series.
inline constexpr int seriesNameColumn = 2;

/// The texts of the whole box and the hundredths box of one measure. If the whole text is empty,
/// the boxes keep their contents.
struct Boxes
{
    QString whole;
    QString hundredths;
};

/// An opening as the order form takes it.
struct Opening
{
    Boxes width;
    Boxes height;
    std::array<QString, 4> kinds;   ///< The kinds of the frame, the sash, the glass and the mesh.
    std::array<QString, 4> colours; ///< The colours of the frame, the sash, the glass and the mesh.
    std::optional<Boxes> doorThickness;
};

/// A control and the text to put into it.
struct Entry
{
    QString control;
    QString text;
};

/// Returns the entries of one measure, whose whole box has the index `wholeBox`.
std::vector<Entry> measureEntries(int wholeBox, const Boxes& boxes);
/// Returns the entries of the opening's width, height and door thickness, in this order.
std::vector<Entry> measureEntries(const Opening& opening);
/// Returns the entries of the kind and colour lists, part by part.
std::vector<Entry> listEntries(const Opening& opening);

} // namespace driving
