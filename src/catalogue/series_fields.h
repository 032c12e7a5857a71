#pragma once

#include "catalogue/deductions.h"

#include <QGroupBox>

#include <array>

class QComboBox;
class QLabel;
class QLineEdit;
class QVBoxLayout;

namespace controls {
class DataControl;
}
namespace dao {
class Recordset;
}
namespace base {
class MeasureBox;
class SignBox;
} // namespace base

namespace catalogue {

/// The group box FrameOrder with the input fields of one series. It loads the fields from a record
/// and writes them to a record. The fields are not validated; the store rejects invalid values.
class SeriesFields : public QGroupBox
{
    Q_OBJECT

public:
    explicit SeriesFields(QWidget* parent = nullptr);

    /// Exchanges values between the input fields and the current record of the data control Source.
    /// If Save is false, reads the record again from the store and loads it into the input fields.
    /// If Save is true, writes the input fields to the record. Throws InvalidUseOfNull (94) for a
    /// Null in any field but Rem, InvalidPropertyValue (380) for a track or sash count that its
    /// list does not contain, DataTypeConversion (3421) for a deduction that is not a number,
    /// NoCurrentRecord (3021) if there is no current record, and RecordDeleted (3167) if the record
    /// has been deleted.
    void ExchangeSeriesFields(bool Save, controls::DataControl& Source);
    /// Assigns the contents of the input fields to the record that the caller has opened with
    /// AddNew or Edit.
    void PutSeriesFields(controls::DataControl& Source);

    /// Resets the fields for a new series. The sign boxes keep their values, because consecutive
    /// series usually have the same signs.
    void clear();
    /// Returns the input fields in tab order.
    QList<QWidget*> inTabOrder();
    /// Moves the focus to the box of the series name.
    void focusName();

private:
    QLabel* addLabel(const QString& name, const QString& caption);
    QLineEdit* addTextBox(const QString& name);
    QComboBox* addList(const QString& name, const QStringList& entries);
    QWidget* addDeduction(int index);
    void addHead(QVBoxLayout& column);
    void addDeductions(QVBoxLayout& column);
    void addRemark(QVBoxLayout& column);
    void loadFrom(dao::Recordset& series);
    /// whole() and hundredths() return the whole box and the hundredths box of a deduction by its
    /// index, 0 to 7. In TextNum, the hundredths box of a deduction directly follows its whole box.
    base::MeasureBox*& whole(int index) { return TextNum[std::size_t(index) * 2]; }
    base::MeasureBox*& hundredths(int index) { return TextNum[std::size_t(index) * 2 + 1]; }

    QLineEdit* TextName = nullptr;
    QComboBox* ComboLane = nullptr;
    QComboBox* ComboWing = nullptr;
    std::array<base::SignBox*, deductionCount> TextSign{};
    std::array<base::MeasureBox*, std::size_t{2} * deductionCount> TextNum{};
    QLineEdit* TextRem = nullptr;
};

} // namespace catalogue
