#include "support/doors.h"

#include "support/test_failure.h"

namespace testsupport {

namespace {

/// The answer with the least effect: No if the box has that button, otherwise OK.
runtime::MessageBoxAnswer cautiousAnswer(const runtime::MessageBoxRequest& request)
{
    return (request.flags & runtime::vbYesNo) != 0 ? runtime::vbNo : runtime::vbOK;
}

} // namespace

RecordedBoxes::RecordedBoxes()
    : former_(
          runtime::messageBoxDoor().replace([this](const auto& request) { return take(request); }))
{
}

RecordedBoxes::~RecordedBoxes()
{
    runtime::messageBoxDoor().replace(std::move(former_));
    reportUnexpected();
}

void RecordedBoxes::clear()
{
    reportUnexpected();
    answers_.clear();
    shown_.clear();
    unexpected_.clear();
}

runtime::MessageBoxAnswer RecordedBoxes::take(const runtime::MessageBoxRequest& request)
{
    shown_.push_back(request);
    if (answers_.empty()) {
        unexpected_.append(request.text);
        return cautiousAnswer(request);
    }
    const runtime::MessageBoxAnswer next = answers_.front();
    answers_.pop_front();
    return next;
}

void RecordedBoxes::reportUnexpected() const
{
    for (const QString& text : unexpected_)
        reportFailure(QStringLiteral("unexpected message box: ") + text);
    if (!answers_.empty())
        reportFailure(
            QStringLiteral("expected message boxes that did not come: %1").arg(answers_.size()));
}

void failOnUnwatchedBoxes()
{
    runtime::messageBoxDoor().replace([](const runtime::MessageBoxRequest& request) {
        reportFailure(QStringLiteral("message box outside of any RecordedBoxes: ") + request.text);
        return cautiousAnswer(request);
    });
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
