#include "crash/states.h"

#include "crash/disk.h"

#include <array>
#include <cstdlib>

namespace crash {

namespace {

std::size_t numberFrom(const char* variable, std::size_t otherwise)
{
    const char* text = std::getenv(variable);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

std::size_t hashOf(const Image& image, std::size_t phase)
{
    std::size_t hash = phase;
    for (const auto& [path, bytes] : image) {
        hash = hash * 31 + std::hash<std::string>()(path);
        hash = hash * 31 + std::hash<std::string>()(bytes);
    }
    return hash;
}

constexpr std::array<std::pair<Loss, const char*>, 4> plainLosses{{
    {Loss::Everything, "all that was not synced is lost"},
    {Loss::Nothing, "nothing is lost"},
    {Loss::Entries, "contents that were not synced are lost"},
    {Loss::Contents, "changes of folders that were not synced are lost"},
}};

} // namespace

int randomStates()
{
    constexpr std::size_t usual = 8;
    return static_cast<int>(numberFrom("ZOMREL_CRASHES", usual));
}

int forEachState(const Record& record, const std::function<std::size_t(std::size_t)>& phaseOf,
                 const std::function<void(const State&)>& visit)
{
    Disk disk(record);
    std::set<std::size_t> seen;
    int visited = 0;
    const auto show = [&](std::size_t position, const Image& files, const std::string& loss) {
        if (!seen.insert(hashOf(files, phaseOf(position))).second)
            return;
        const bool isEnd = position == record.steps.size();
        ++visited;
        visit({position,
               "at step " + std::to_string(position) + ", before: " +
                   (isEnd ? "the end" : describe(record.steps[position])) + "; " + loss,
               files});
    };
    const std::size_t seed = numberFrom("ZOMREL_SEED", 1);
    for (std::size_t position = 0; position <= record.steps.size(); ++position) {
        if (position > 0)
            disk.apply(record.steps[position - 1]);
        std::mt19937_64 random(seed * 1000003 + position);
        for (const auto& [loss, name] : plainLosses)
            show(position, disk.afterPowerCut(loss, random), name);
        for (int i = 0; i < randomStates() && !disk.isSettled(); ++i)
            show(position, disk.afterPowerCut(Loss::Some, random),
                 "random loss " + std::to_string(i) + " of seed " + std::to_string(seed));
    }
    return visited;
}

} // namespace crash
