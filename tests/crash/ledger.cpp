#include "crash/ledger.h"

#include "crash/recorder.h"

namespace crash {

Ledger::Ledger(Contents before) : changes_{{.isAcknowledged = true, .contents = std::move(before)}}
{
}

void Ledger::make(const std::function<void()>& change, const Contents& after)
{
    const Recorder& recorder = Recorder::instance();
    changes_.push_back({.begin = recorder.position(), .contents = after});
    change();
    changes_.back().end = recorder.position();
    changes_.back().isAcknowledged = true;
}

const Ledger::Change& Ledger::acknowledged() const
{
    return changes_.back().isAcknowledged ? changes_.back() : changes_[changes_.size() - 2];
}

/// The number of changes that were acknowledged, doubled, plus one if another is under way.
std::size_t Ledger::phaseAt(std::size_t position) const
{
    std::size_t phase = 0;
    for (const Change& change : changes_) {
        if (change.end <= position)
            phase += 2;
        else if (change.begin < position)
            phase += 1;
    }
    return phase;
}

std::string Ledger::findingAt(std::size_t position, const Contents& found) const
{
    const std::size_t phase = phaseAt(position);
    const Change* const underWay = phase % 2 == 1 ? &changes_[phase / 2] : nullptr;
    return compare(changes_[phase / 2 - 1], underWay, found);
}

std::string Ledger::findingNow(const Contents& found) const
{
    const Change* const underWay = changes_.back().isAcknowledged ? nullptr : &changes_.back();
    return compare(acknowledged(), underWay, found);
}

std::string Ledger::compare(const Change& last, const Change* underWay, const Contents& found)
{
    const std::string finding = difference(last.contents, found);
    if (finding.empty() || (underWay != nullptr && difference(underWay->contents, found).empty()))
        return {};
    return finding;
}

} // namespace crash
