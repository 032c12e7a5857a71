#pragma once

#include "edit_form.h"
#include "support/doors.h"

#include <memory>

namespace controlstest {

/// The base of the tests of an editable grid. Each test function gets a sample store and recorded
/// message boxes, and fails if a box was unexpected.
class EditingFixture : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        boxes_.reset();
        store_ = std::make_unique<SampleStore>();
        boxes_ = std::make_unique<testsupport::RecordedBoxes>();
    }
    void cleanup()
    {
        QCOMPARE(boxes_->unexpected(), QStringList());
        boxes_.reset();
        store_.reset();
    }

protected:
    std::unique_ptr<SampleStore> store_;
    std::unique_ptr<testsupport::RecordedBoxes> boxes_;
};

} // namespace controlstest
