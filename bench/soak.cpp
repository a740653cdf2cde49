// SPDX-License-Identifier: MIT
// Fetches, searches, saves and loads through a window, many times, and prints what the process
// holds: resident memory and open descriptors. Fails when either has grown after the first rounds.
// Usage: soak [ROUNDS], with QT_QPA_PLATFORM=offscreen where there is no display.
#include "mainwindow/contentview.h"
#include "platform/demonstrationstore.h"
#include "support/fakeplatform.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

struct Held
{
    qint64 kibibytes = 0;
    qsizetype descriptors = 0;
};

Held held()
{
    QFile statistics(u"/proc/self/statm"_s);
    if (!statistics.open(QIODevice::ReadOnly))
        std::abort();
    const qint64 pages = statistics.readAll().split(' ').value(1).toLongLong();
    const auto descriptors =
        QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
    return {pages * sysconf(_SC_PAGESIZE) / 1024, descriptors.size()};
}

/// One window over a demonstration store, with panels that answer at once.
class Soak
{
public:
    Soak()
    {
        const QString store = m_platform.folder.filePath(u"store"_s);
        const qint64 end = m_platform.clock.currentTime.toMSecsSinceEpoch() * 1'000'000;
        if (!DemonstrationStore(store.toStdString()).writeUntil(end))
            std::abort();
        m_platform.logStores.localPath = store;
        m_window.state().theStartDate = m_platform.clock.currentTime.addSecs(-60);
        m_window.state().period = u"60"_s;
        m_window.show();
    }

    void round()
    {
        ContentState& state = m_window.state();
        const QString path = m_platform.folder.filePath(u"list.tessel"_s);
        state.getLog();
        state.runSearch(u"network"_s);
        QCoreApplication::processEvents();
        state.endSearch();
        state.saveJSON();
        m_platform.panels.confirm(path);
        state.readJSON();
        m_platform.panels.confirm(path);
        QCoreApplication::processEvents();
        if (state.logger().logList().size() < 100 || !m_platform.alerts.shown.isEmpty())
            std::abort();
        m_platform.panels.openRequests.clear();
        m_platform.panels.saveRequests.clear();
        m_platform.logStores.opened.clear();
    }

private:
    FakePlatform m_platform;
    ContentView m_window{
        m_platform.platform, [](const QString&) {},
        [](const PredicateFormat&) -> Result<std::shared_ptr<const logstore::EntryFilter>> {
            return nullptr;
        }};
};

} // namespace

int main(int argc, char* argv[])
{
    constexpr int warmUp = 100;
    constexpr qint64 tolerance = 2048; // KiB, of an allocator that keeps what it was given
    const QApplication application(argc, argv);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 10'000;
    Soak soak;
    Held first;
    Held most;
    for (int i = 1; i <= rounds; ++i) {
        soak.round();
        if (i % warmUp != 0)
            continue;
        const Held now = held();
        if (i == warmUp)
            first = now;
        most = {std::max(most.kibibytes, now.kibibytes),
                std::max(most.descriptors, now.descriptors)};
        if (i % (10 * warmUp) == 0 || i == warmUp)
            std::printf("%6d rounds: %lld KiB, %lld descriptors\n", i, qlonglong(now.kibibytes),
                        qlonglong(now.descriptors));
        std::fflush(stdout);
    }
    const bool isFlat =
        most.kibibytes <= first.kibibytes + tolerance && most.descriptors <= first.descriptors;
    std::printf("%s\n", isFlat ? "Nothing has grown." : "Memory or descriptors have grown.");
    return isFlat ? EXIT_SUCCESS : EXIT_FAILURE;
}
