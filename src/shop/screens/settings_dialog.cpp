#include "shop/screens/settings_dialog.h"

#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"
#include "shop/paper/words.h"

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>

namespace shop::screens {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstNumber = 3;     ///< The columns before it name the group.
constexpr int roomAroundText = 16; ///< Device-independent pixels.
constexpr int trimColumn = 5;      ///< Trims must not use up the whole bar.

const QStringList& headings()
{
    static const QStringList texts{u"חלק"_s,       u"סוג"_s,           u"צבע"_s,
                                   u"אורך מוט"_s,  u"עובי חיתוך"_s,    u"קיצוץ קצה"_s,
                                   u"זווית"_s,     u"שארית לשמירה"_s,  u"מקדם רוחב"_s,
                                   u"מקדם גובה"_s, u"מקדם רוחב דלת"_s, u"מקדם גובה דלת"_s};
    return texts;
}

/// Returns an item that cannot be edited and does not look like an input box.
QTableWidgetItem* fixedItem(const QString& text)
{
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setBackground(QGuiApplication::palette().window());
    return item;
}

} // namespace

SettingsDialog::SettingsDialog(const StoredBars& bars, QWidget* parent)
    : QDialog(parent), bars_(bars), table_(new QTableWidget(this))
{
    setObjectName(u"BarSettings"_s);
    setWindowTitle(u"הגדרות מוטות"_s);
    setLayoutDirection(Qt::RightToLeft);
    resize(QSize(1150, 560).boundedTo(screen()->availableSize() * 9 / 10));
    table_->setObjectName(u"Settings"_s);
    table_->setAccessibleName(windowTitle());
    addRows();
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* accept = buttons->addButton(u"שמור"_s, QDialogButtonBox::AcceptRole);
    accept->setObjectName(u"SaveSettings"_s);
    QPushButton* cancel = buttons->addButton(u"ביטול"_s, QDialogButtonBox::RejectRole);
    cancel->setObjectName(u"CancelSettings"_s);
    auto* column = new QVBoxLayout(this);
    column->addWidget(table_);
    column->addWidget(buttons);
    runtime::on(accept, &QPushButton::clicked, this, [this] { save(); });
    runtime::on(cancel, &QPushButton::clicked, this, [this] { reject(); });
}

void SettingsDialog::addRows()
{
    table_->setColumnCount(static_cast<int>(headings().size()));
    table_->setHorizontalHeaderLabels(headings());
    table_->setRowCount(static_cast<int>(bars_.groups.size()));
    int row = 0;
    for (const GroupKey& group : bars_.groups) {
        const BarSettings settings = settingsOf(bars_.settings, group);
        table_->setItem(row, 0, fixedItem(paper::partWord(group.part)));
        table_->setItem(row, 1, fixedItem(paper::kindWord(group.profile)));
        table_->setItem(row, 2, fixedItem(group.colour));
        int column = firstNumber;
        for (const SettingColumn& each : settingColumns())
            table_->setItem(row, column++, new QTableWidgetItem(numberText(each.get(settings))));
        ++row;
    }
    table_->resizeColumnsToContents();
    for (int column = 0; column < table_->columnCount(); ++column)
        table_->setColumnWidth(column, table_->columnWidth(column) + roomAroundText);
    table_->verticalHeader()->hide();
}

std::optional<BarSettings> SettingsDialog::settingsIn(int row)
{
    BarSettings settings;
    int column = firstNumber;
    for (const SettingColumn& each : settingColumns()) {
        bool isNumber = false;
        const double value = table_->item(row, column)->text().trimmed().toDouble(&isNumber);
        if (!isNumber || !isAllowed(each, value)) {
            refuse(row, column);
            return {};
        }
        each.set(settings, value);
        ++column;
    }
    if (settings.usable() <= 0) {
        refuse(row, trimColumn);
        return {};
    }
    return settings;
}

void SettingsDialog::refuse(int row, int column)
{
    table_->setCurrentCell(row, column);
    table_->setFocus();
    runtime::MsgBox(u"ערך לא תקין: %1"_s.arg(headings()[column]), runtime::refusalFlags);
}

void SettingsDialog::save()
{
    SettingsByGroup changed;
    for (int row = 0; row < table_->rowCount(); ++row) {
        const GroupKey& group = bars_.groups[static_cast<std::size_t>(row)];
        const std::optional<BarSettings> settings = settingsIn(row);
        if (!settings)
            return;
        if (!(*settings == settingsOf(bars_.settings, group)))
            changed[group] = *settings;
    }
    changed_ = std::move(changed);
    accept();
}

} // namespace shop::screens
