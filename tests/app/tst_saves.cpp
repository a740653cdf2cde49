// SPDX-License-Identifier: MIT
#include "model/entrylistfile.h"
#include "model/entryrichtext.h"
#include "platform/desktop/statefile.h"
#include "support/fakeplatform.h"
#include "support/systemfault.h"
#include "support/testcase.h"
#include "tools/diagnoser.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <cerrno>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

QString told(const Result<void>& result)
{
    return result ? QString() : QString::fromStdString(result.error().description);
}

QList<LogEntry> entries(const QString& text)
{
    LogEntry entry;
    entry.id = QUuid();
    entry.type = LogMessageEntry;
    entry.composedMessage = Text(text);
    return {entry, entry, entry};
}

// Each kind of save: puts a text of some length into a file, and returns what the user is told.

QString saveList(const QString& path, const QString& text)
{
    return told(saveEntryList(entries(text), path));
}

QString saveRich(const QString& path, const QString& text)
{
    return told(saveRichText(entries(text), path));
}

QString saveReport(const QString& path, const QString& text)
{
    FakePlatform platform;
    SystemFileManager files;
    const auto tool = Diagnoser::make(platform.platform, files);
    tool->setTheOutputText(text);
    tool->saveText();
    platform.panels.confirm(path);
    return tool->theOutputText().sliced(text.size());
}

QString saveSettings(const QString& path, const QString& text)
{
    UserDefaults defaults(path);
    const QSignalSpy failed(&defaults, &UserDefaults::failed);
    defaults.set(u"selectText"_s, text);
    defaults.save();
    QCoreApplication::sendPostedEvents(&defaults, QEvent::MetaCall);
    return failed.isEmpty() ? QString() : failed.first().first().toString();
}

QString saveState(const QString& path, const QString& text)
{
    StateFile(path).setLastFolder(text);
    return {};
}

using Save = QString (*)(const QString&, const QString&);

struct Kind
{
    const char* name;
    Save save;
};
constexpr std::array<Kind, 5> kinds{{{"entry list", saveList},
                                     {"rich text", saveRich},
                                     {"report", saveReport},
                                     {"settings", saveSettings},
                                     {"state of windows", saveState}}};

constexpr int killed = -1;

struct Case
{
    const char* name;
    SystemFault::Fault fault;
    /// Where writing fails: after this part of the new contents, in hundredths, less one byte.
    int hundredths = 0;
};
const std::array<Case, 15> cases{{
    {"full at the first byte", {SystemCall::Write, ENOSPC}},
    {"full half-way", {SystemCall::Write, ENOSPC}, 50},
    {"full at the last byte", {SystemCall::Write, ENOSPC}, 100},
    {"over quota", {SystemCall::Write, EDQUOT}, 50},
    {"error in writing", {SystemCall::Write, EIO}, 50},
    {"error in synchronising", {SystemCall::Synchronise, EIO}},
    {"full when synchronising", {SystemCall::Synchronise, ENOSPC}},
    {"error in closing", {SystemCall::Close, EIO}},
    {"error in renaming", {SystemCall::Rename, EIO}},
    {"accepted in parts", {.call = SystemCall::Write, .mostAtOnce = 4093}},
    {"interrupted", {.call = SystemCall::Write, .error = EINTR, .times = 3}},
    {"killed at the first byte", {SystemCall::Write, killed}},
    {"killed half-way", {SystemCall::Write, killed}, 50},
    {"killed when synchronising", {SystemCall::Synchronise, killed}},
    {"killed before renaming", {SystemCall::Rename, killed}},
}};

} // namespace

/// Every kind of save on disks that are full or broken: the old file is kept and the user is told
/// why, or the new file is whole.
class TestSaves : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void oldFileOrNewFile_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("number");
        for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
            for (std::size_t number = 0; number < cases.size(); ++number)
                QTest::addRow("%s, %s", kinds.at(kind).name, cases.at(number).name)
                    << static_cast<int>(kind) << static_cast<int>(number);
        }
    }

    void oldFileOrNewFile()
    {
        QFETCH(int, kind);
        QFETCH(int, number);
        const Save save = kinds.at(static_cast<std::size_t>(kind)).save;
        Case tried = cases.at(static_cast<std::size_t>(number));
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"file"_s);
        const QString text(200'000, u'n');
        QCOMPARE(save(folder.filePath(u"other"_s), text), u""_s);
        const QByteArray contents = bytesOf(folder.filePath(u"other"_s));
        QVERIFY(contents.size() >= text.size());
        QCOMPARE(save(path, u"old"_s), u""_s);
        const QByteArray old = bytesOf(path);

        if (tried.hundredths > 0)
            tried.fault.accepted = contents.size() * tried.hundredths / 100 - 1;
        if (tried.fault.error == killed) {
            kill(tried.fault, [&] { save(path, text); });
            QCOMPARE(bytesOf(path), old);
            QCOMPARE(save(path, text), u""_s);
            QCOMPARE(bytesOf(path), contents);
        } else {
            const QString alert = underFault(tried.fault, [&] { return save(path, text); });
            const bool isFailing = tried.fault.error != 0 && tried.fault.error != EINTR;
            QVERIFY(bytesOf(path) == (isFailing ? old : contents));
            const QString reason = QString::fromLocal8Bit(std::strerror(tried.fault.error));
            const bool isTold = isFailing && save != saveState; // which nobody asked to keep
            QVERIFY2(isTold ? alert.contains(reason) : alert.isEmpty(), qPrintable(alert));
        }
        QCOMPARE(
            QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            (QStringList{u"file"_s, u"other"_s}));
    }

private:
    static QString underFault(const SystemFault::Fault& fault, const std::function<QString()>& save)
    {
        const SystemFault acting(fault);
        return save();
    }

    /// Runs `save` in a process that the fault kills.
    static void kill(const SystemFault::Fault& fault, const std::function<void()>& save)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            const SystemFault acting(fault);
            save();
            ::_exit(0);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status));
    }
};

TESSEL_TEST(TestSaves)
#include "tst_saves.moc"
