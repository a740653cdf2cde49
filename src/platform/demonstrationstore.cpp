// SPDX-License-Identifier: MIT
#include "platform/demonstrationstore.h"

#include "platform/base/timeunits.h"
#include "platform/demonstration/papers.h"
#include "platform/demonstration/scenes.h"
#include "platform/logstore/writer/storefiles.h"
#include "platform/logstore/writer/tracelayout.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

namespace {

using namespace demonstration;
using namespace logstore::writer;

constexpr std::int64_t second = nanosecondsPerSecond;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t hour = 60 * minute;

/// A time between two starts of the machine.
struct Run
{
    Boot boot;
    std::int64_t end = 0;
    std::int64_t nextScene = 0; ///< when it is played
    std::size_t scenesPlayed = 0;
    bool showsStart = false;
};

/// The clock after so much running time, and how far it was set at that moment.
struct Correction
{
    std::int64_t after = 0;
    std::int64_t step = 0;
};

Run makeRun(std::uint8_t number,
            std::int64_t bootTime,
            std::int64_t end,
            const std::vector<Correction>& corrections)
{
    constexpr std::uint8_t firstBootNumber = 0x40;
    Run run;
    run.boot = {demonstrationUuid(firstBootNumber + number), 125, 3, bootTime, {}};
    run.end = end;
    std::int64_t wall = bootTime;
    std::int64_t elapsed = 0;
    for (const Correction& correction : corrections) {
        wall += correction.after - elapsed + correction.step;
        elapsed = correction.after;
        run.boot.syncs.push_back({static_cast<std::uint64_t>(elapsed) * 3 / 125, wall, 0, false});
    }
    return run;
}

/// Three runs in the last hour: one that began a day ago, a short one, and the present one, in
/// which the clock was corrected a little and once set back by more than a second.
std::vector<Run> runsOf(std::int64_t now)
{
    std::vector<Run> runs{
        makeRun(0, now - 26 * hour, now - 41 * minute,
                {{8 * second, 0}, {hour, 12'000'000}, {25 * hour, -31'000'000}}),
        makeRun(1, now - 40 * minute, now - 36 * minute, {{7 * second, 4'000'000}}),
        makeRun(2, now - 35 * minute, now,
                {{9 * second, 0}, {12 * minute, 23'000'000}, {21 * minute, -1'250'000'000}}),
    };
    runs[0].nextScene = now - 60 * minute;
    for (std::size_t i = 1; i < runs.size(); ++i) {
        runs[i].nextScene = runs[i].boot.wallTime + 10 * second;
        runs[i].showsStart = true;
    }
    return runs;
}

/// The continuous time at which the clock of this boot showed the wall time.
std::uint64_t ticksAt(const Boot& boot, std::int64_t wall)
{
    std::uint64_t ticks = 0;
    std::int64_t since = boot.wallTime;
    for (const Sync& sync : boot.syncs) {
        if (sync.wallTime > wall)
            break;
        ticks = sync.continuousTime;
        since = sync.wallTime;
    }
    return ticks + static_cast<std::uint64_t>(wall - since) * boot.denominator / boot.numerator;
}

/// The pause between two scenes: the nearer to the present, the busier.
std::int64_t pauseAt(std::int64_t time, std::int64_t now)
{
    if (time > now - 10 * second)
        return second / 12;
    return time > now - 5 * minute ? second / 4 : 4 * second;
}

/// What happens in the run up to its end, from where an earlier call has left it.
std::vector<Event> play(Run& run, std::int64_t now, Stage& stage)
{
    if (std::exchange(run.showsStart, false))
        startUp(stage, run.boot.wallTime + second);
    while (run.nextScene < run.end) {
        const auto jitter = static_cast<std::int64_t>(stage.chance(20'000'000));
        scenes()[run.scenesPlayed++ % scenes().size()](stage, run.nextScene + jitter);
        run.nextScene += pauseAt(run.nextScene, now);
    }
    std::vector<Event> events = std::exchange(stage.events(), {});
    std::erase_if(events, [&](const Event& event) { return event.time > run.end; });
    std::stable_sort(events.begin(), events.end(),
                     [](const Event& a, const Event& b) { return a.time < b.time; });
    return events;
}

std::uint8_t streamOf(Keep keep, std::uint8_t type)
{
    switch (keep) {
    case Keep::Special: return SpecialStream;
    case Keep::Signpost: return SignpostStream;
    case Keep::Live:
        return type == InfoMessage || type == DebugMessage ? MemoryStream : PersistentStream;
    default: return PersistentStream;
    }
}

/// Gives the event its place in the boot's time and adds it to the file.
void layOut(TraceLayout& layout, Event event, Keep keep, const Boot& boot)
{
    constexpr std::uint64_t lossSpan = 48'000; // 2 ms
    const std::uint64_t ticks = ticksAt(boot, event.time);
    if (auto* record = std::get_if<Record>(&event.what)) {
        record->time = ticks;
        if (record->kind == RecordKind::Loss)
            record->lost = {ticks - lossSpan, ticks, record->lost.count};
        const std::uint8_t stream = streamOf(keep, record->type);
        layout.add(*event.process, std::move(*record), stream);
    } else if (auto* state = std::get_if<StateDump>(&event.what)) {
        state->time = ticks;
        layout.add(*event.process, std::move(*state));
    } else if (auto* message = std::get_if<SimpleDump>(&event.what)) {
        message->time = ticks;
        layout.add(*event.process, std::move(*message));
    }
}

Header headerAt(std::int64_t time, const Boot& boot)
{
    Header header{.numerator = boot.numerator, .denominator = boot.denominator, .wallTime = time};
    header.continuousTime = ticksAt(boot, time);
    header.boot = boot.uuid;
    return header;
}

std::string pathOf(Keep keep, std::size_t number)
{
    switch (keep) {
    case Keep::Persist: return "Persist/" + logFileName(number, "tracev3");
    case Keep::Special: return "Special/" + logFileName(number, "tracev3");
    case Keep::Signpost: return "Signpost/" + logFileName(number, "tracev3");
    case Keep::HighVolume: return "HighVolume/" + logFileName(number, "tracev3");
    case Keep::Live: break;
    }
    return "logdata.LiveData.tracev3";
}

/// One file for each folder. What happens from `liveFrom` on is still in memory: the live file's.
void addTraceFiles(StoreFiles& store,
                   Run& run,
                   std::size_t number,
                   std::int64_t now,
                   std::int64_t liveFrom,
                   Stage& stage)
{
    std::map<Keep, TraceLayout> layouts;
    for (Event& event : play(run, now, stage)) {
        const Keep keep = event.time >= liveFrom ? Keep::Live : event.keep;
        const auto layout = layouts.try_emplace(keep, headerAt(event.time, run.boot)).first;
        layOut(layout->second, std::move(event), keep, run.boot);
    }
    for (auto& [keep, layout] : layouts)
        store.add(pathOf(keep, number), layout.finish());
}

void addStrings(StoreFiles& store, const Cast& cast)
{
    for (const UuidText& image : cast.mainImages())
        store.add(image);
    store.add(cast.extension());
    store.add(cast.sharedCache());
}

/// The daemon's texts: statistics of each run that is over, the latest in the file of number 0.
void addPapers(StoreFiles& store, const std::vector<Run>& runs)
{
    std::size_t number = runs.size() - 1;
    for (std::size_t i = 0; i + 1 < runs.size(); ++i) {
        std::vector<Rotation> rotations;
        for (const Keep keep : {Keep::Persist, Keep::Special}) {
            const std::string path = pathOf(keep, i + 1);
            rotations.push_back({path, runs[i].end, store.files[store.logPath(path)].size()});
        }
        store.addText("logdata.statistics." + std::to_string(--number) + ".txt",
                      statisticsText(rotations));
    }
    store.addText("version.plist", versionPropertyList(runs.back().boot.uuid.text()));
}

} // namespace

/// What is needed to go on with the story.
struct DemonstrationStore::Script
{
    Cast cast;
    Stage stage{cast};
    Run present;
    std::size_t filesOfPresent = 0;

    /// The store of the hour before `now`. The scenes in it use every text that there is.
    StoreFiles begin(std::int64_t now)
    {
        StoreFiles store{StoreLayout::Live, {}};
        std::vector<Run> runs = runsOf(now);
        for (std::size_t i = 0; i < runs.size(); ++i)
            addTraceFiles(store, runs[i], i + 1, now, now - 20 * second, stage);
        addStrings(store, cast);
        store.add(logFileName(1, "timesync"), {runs[0].boot, runs[1].boot});
        store.add(logFileName(2, "timesync"), std::vector<Boot>{runs[2].boot});
        addPapers(store, runs);
        filesOfPresent = runs.size();
        present = std::move(runs.back());
        return store;
    }

    /// The files of what has happened since.
    StoreFiles goOn(std::int64_t now)
    {
        StoreFiles store{StoreLayout::Live, {}};
        present.end = now;
        constexpr auto never = std::numeric_limits<std::int64_t>::max();
        addTraceFiles(store, present, ++filesOfPresent, now, never, stage);
        return store;
    }
};

DemonstrationStore::DemonstrationStore(std::filesystem::path root) : m_root(std::move(root))
{
}

DemonstrationStore::~DemonstrationStore() = default;
DemonstrationStore::DemonstrationStore(DemonstrationStore&&) noexcept = default;
DemonstrationStore& DemonstrationStore::operator=(DemonstrationStore&&) noexcept = default;

Result<void> DemonstrationStore::writeUntil(std::int64_t now)
{
    if (m_script)
        return m_script->goOn(now).write(m_root);
    for (const char* folder : {"diagnostics", "uuidtext"}) {
        std::error_code error;
        std::filesystem::remove_all(m_root / folder, error);
        if (error)
            return failure("\"" + (m_root / folder).string()
                           + "\" could not be replaced: " + error.message() + ".");
    }
    auto script = std::make_unique<Script>();
    auto written = script->begin(now).write(m_root);
    if (written)
        m_script = std::move(script);
    return written;
}
