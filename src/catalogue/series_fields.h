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
namespace Module1 {
class MeasureBox;
class SignBox;
} // namespace Module1

namespace catalogue {

/// The frame FrameOrder with the fields of one series, and the two ways between them and a record.
/// Nothing is checked here: what the store does not take, it refuses.
class SeriesFields : public QGroupBox
{
    Q_OBJECT

public:
    explicit SeriesFields(QWidget* parent = nullptr);

    /// With Save false, loads the current record of Source into the fields, as it stands in the
    /// store at this moment. With Save true, writes the fields to that record by Edit and Update.
    /// Raises 94 for a Null (but Rem may be Null), 380 for a track or sash count outside its list,
    /// 3421 for a deduction that is no number, 3021 and 3167 where there is no such record.
    void ExchangeSeriesFields(bool Save, controls::DataControl& Source);
    /// Writes the fields to the record that the caller has opened for assignment.
    void PutSeriesFields(controls::DataControl& Source);

    /// Empties the fields for a new series. The signs stay: the next series mostly has them too.
    void clear();
    /// The fields, in the order in which Tab goes through them.
    QList<QWidget*> inTabOrder();
    /// Puts the focus into the name.
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
    /// The two boxes of a deduction (0 to 7) stand side by side in TextNum.
    Module1::MeasureBox*& whole(int index) { return TextNum[std::size_t(index) * 2]; }
    Module1::MeasureBox*& hundredths(int index) { return TextNum[std::size_t(index) * 2 + 1]; }

    QLineEdit* TextName = nullptr;
    QComboBox* ComboLane = nullptr;
    QComboBox* ComboWing = nullptr;
    std::array<Module1::SignBox*, deductionCount> TextSign{};
    std::array<Module1::MeasureBox*, std::size_t{2} * deductionCount> TextNum{};
    QLineEdit* TextRem = nullptr;
};

} // namespace catalogue
