#pragma once

#include "platform/runtime/message_box.h"
#include "platform/runtime/process.h"

#include <QList>
#include <QString>

#include <deque>
#include <optional>
#include <utility>
#include <vector>

namespace testsupport {

/// Stands behind runtime::MsgBox for as long as it lives: keeps every box and gives the answers
/// laid ready. A box without an answer laid ready is kept as unexpected and answered No (or OK).
class RecordedBoxes
{
public:
    RecordedBoxes();
    ~RecordedBoxes();
    RecordedBoxes(const RecordedBoxes&) = delete;
    RecordedBoxes& operator=(const RecordedBoxes&) = delete;

    /// Expects one more box and sets up its answer.
    void answer(runtime::MessageBoxAnswer next) { answers_.push_back(next); }
    const std::vector<runtime::MessageBoxRequest>& shown() const { return shown_; }
    /// Texts of the boxes that no answer was laid ready for. A test ends by asserting that it is
    /// empty.
    const QList<QString>& unexpected() const { return unexpected_; }
    /// Gives these texts and forgets them, so that they no longer fail the test. For tests that
    /// cannot know beforehand whether a box will come; they have to check what they take.
    QList<QString> takeUnexpected() { return std::exchange(unexpected_, {}); }
    /// Forgets the boxes shown so far. Fails the test for what was not as expected up to here.
    void clear();

private:
    runtime::MessageBoxAnswer take(const runtime::MessageBoxRequest& request);
    void reportUnexpected() const;

    std::deque<runtime::MessageBoxAnswer> answers_;
    std::vector<runtime::MessageBoxRequest> shown_;
    QList<QString> unexpected_;
    runtime::MessageBoxDoor::Function former_;
};

/// Makes every box that comes while no RecordedBoxes lives fail the test. The main function of each
/// test binary calls it first.
void failOnUnwatchedBoxes();

/// Replaces runtime::EndProcess for its lifetime. It records the first exit status and leaves the
/// handler by an exception.
class RecordedEnd
{
public:
    RecordedEnd();
    ~RecordedEnd();
    RecordedEnd(const RecordedEnd&) = delete;
    RecordedEnd& operator=(const RecordedEnd&) = delete;

    std::optional<int> exitStatus() const { return exitStatus_; }
    void clear() { exitStatus_.reset(); }

private:
    std::optional<int> exitStatus_;
    runtime::EndProcessDoor::Function former_;
};

/// Fixes today's date for its lifetime.
class FixedToday
{
public:
    explicit FixedToday(const QDate& day);
    ~FixedToday();
    FixedToday(const FixedToday&) = delete;
    FixedToday& operator=(const FixedToday&) = delete;

private:
    runtime::ClockDoor::Function former_;
};

} // namespace testsupport
