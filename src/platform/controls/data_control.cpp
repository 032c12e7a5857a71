#include "platform/controls/data_control.h"

#include "platform/runtime/guard.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace controls {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

/// While this object exists, the recordset has no observer, so that internal moves of the recordset
/// emit no signals.
class ObserverPause
{
public:
    ObserverPause(dao::Recordset& rows, dao::RecordsetObserver* observer)
        : rows_(rows), observer_(observer)
    {
        rows_.setObserver(nullptr);
    }
    ~ObserverPause() { rows_.setObserver(observer_); }
    ObserverPause(const ObserverPause&) = delete;
    ObserverPause& operator=(const ObserverPause&) = delete;

private:
    dao::Recordset& rows_;
    dao::RecordsetObserver* observer_;
};

/// The position of a recordset's current row. It is stored before the recordset's query runs again
/// and restored afterwards.
struct Place
{
    bool onRow = false;
    dao::RowKey key; ///< Invalid after the last row.
    int row = 0;
};

/// Returns the current position of the recordset. If the current row is deleted, the position is
/// that of the next row.
Place placeOf(dao::Recordset& rows)
{
    const std::unique_ptr<dao::RecordsetPages> pages = rows.pages();
    if (rows.isBof() || rows.isEof())
        return {};
    const dao::RowKey key = rows.currentKey();
    if (key.isValid() && pages->rowOf(key) >= 0)
        return {true, key, pages->rowOf(key)};
    rows.MoveNext();
    const dao::RowKey next = rows.currentKey();
    const int row = next.isValid() ? pages->rowOf(next) : pages->rowCount();
    return {true, next, std::max(row, 0)};
}

/// Makes the row with the stored key current. If this row has been deleted, the row that now has
/// its row number becomes current, or the last row if there are fewer rows.
void returnTo(dao::Recordset& rows, const Place& place)
{
    if (!place.onRow || rows.moveToKey(place.key))
        return;
    const std::unique_ptr<dao::RecordsetPages> pages = rows.pages();
    if (pages->rowCount() > 0)
        rows.moveToKey(pages->keyAt(std::min(place.row, pages->rowCount() - 1)));
}

} // namespace

DataControl::DataControl(const QString& name, QWidget* parent) : QWidget(parent)
{
    setObjectName(name);
    setLayoutDirection(Qt::LeftToRight);
    hide();
}

DataControl::~DataControl()
{
    if (recordset_)
        recordset_->setObserver(nullptr);
}

void DataControl::setVisible(bool visible)
{
    if (visible && layout() == nullptr)
        buildBar();
    QWidget::setVisible(visible);
}

void DataControl::buildBar()
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    addButton(u"First"_s, u"לראשון"_s, QStyle::SP_MediaSkipBackward, Step::First);
    addButton(u"Previous"_s, u"לקודם"_s, QStyle::SP_MediaSeekBackward, Step::Previous);
    auto* middle = new QFrame(this);
    middle->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    layout->addWidget(middle, 1);
    addButton(u"Next"_s, u"לבא"_s, QStyle::SP_MediaSeekForward, Step::Next);
    addButton(u"Last"_s, u"לאחרון"_s, QStyle::SP_MediaSkipForward, Step::Last);
}

void DataControl::addButton(const QString& name, const QString& text, QStyle::StandardPixmap icon,
                            Step step)
{
    auto* button = new QToolButton(this);
    button->setObjectName(objectName() + u'_' + name);
    button->setToolTip(text);
    button->setAccessibleName(text);
    button->setIcon(style()->standardIcon(icon, nullptr, this));
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    layout()->addWidget(button);
    runtime::on(button, &QToolButton::clicked, this, [this, step] { move(step); });
}

void DataControl::setRecordset(std::shared_ptr<dao::Recordset> recordset)
{
    if (recordset_)
        recordset_->setObserver(nullptr);
    recordset_ = std::move(recordset);
    if (recordset_)
        recordset_->setObserver(this);
    emit rowsReset();
}

dao::Recordset& DataControl::Recordset() const
{
    if (!recordset_)
        throw RunTimeError(runtime::ObjectNotSet);
    return *recordset_;
}

dao::Database& DataControl::Database() const
{
    return *Recordset().database();
}

void DataControl::Refresh()
{
    if (!hasRecordset())
        throw RunTimeError(runtime::ObjectNotSet);
    emit Validate();
    const std::shared_ptr<dao::Recordset> rows = recordset_;
    {
        const ObserverPause pause(*rows, this);
        const Place place = placeOf(*rows);
        rows->requeryAsFarAsReached();
        returnTo(*rows, place);
    }
    emit rowsReset();
}

void DataControl::currentAboutToChange()
{
    emit Validate();
}

void DataControl::move(Step step)
{
    if (!hasRecordset() || recordset_->RecordCount() == 0)
        return;
    if (step == Step::First) {
        recordset_->MoveFirst();
    } else if (step == Step::Last) {
        recordset_->MoveLast();
    } else {
        emit Validate();
        const std::shared_ptr<dao::Recordset> rows = recordset_;
        {
            const ObserverPause pause(*rows, this);
            stepInside(*rows, step);
        }
        emit currentChanged();
    }
}

/// Moves the recordset one row forward or back. A step beyond the first or the last row does not
/// change the current row.
void DataControl::stepInside(dao::Recordset& rows, Step step)
{
    if (step == Step::Next) {
        if (!rows.isEof())
            rows.MoveNext();
        if (rows.isEof())
            rows.MoveLast();
    } else {
        if (!rows.isBof())
            rows.MovePrevious();
        if (rows.isBof())
            rows.MoveFirst();
    }
}

} // namespace controls
