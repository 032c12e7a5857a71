#include "support/doors.h"

namespace testsupport {

RecordedBoxes::RecordedBoxes()
    : former_(
          runtime::messageBoxDoor().replace([this](const auto& request) { return take(request); }))
{
}

RecordedBoxes::~RecordedBoxes()
{
    runtime::messageBoxDoor().replace(std::move(former_));
}

void RecordedBoxes::clear()
{
    answers_.clear();
    shown_.clear();
    unexpected_.clear();
}

runtime::MessageBoxAnswer RecordedBoxes::take(const runtime::MessageBoxRequest& request)
{
    shown_.push_back(request);
    if (answers_.empty()) {
        unexpected_.append(request.text);
        return (request.flags & runtime::vbYesNo) != 0 ? runtime::vbNo : runtime::vbOK;
    }
    const runtime::MessageBoxAnswer next = answers_.front();
    answers_.pop_front();
    return next;
}

RecordedEnd::RecordedEnd()
    : former_(runtime::endProcessDoor().replace([this](int exitStatus) {
          if (!exitStatus_)
              exitStatus_ = exitStatus;
          throw runtime::ProcessEnded{exitStatus};
      }))
{
}

RecordedEnd::~RecordedEnd()
{
    runtime::endProcessDoor().replace(std::move(former_));
}

FixedToday::FixedToday(const QDate& day)
    : former_(runtime::clockDoor().replace([day] { return day; }))
{
}

FixedToday::~FixedToday()
{
    runtime::clockDoor().replace(std::move(former_));
}

} // namespace testsupport
