// SPDX-License-Identifier: MIT
#include "platform/userdefaults.h"
#include "support/testcase.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void addTexts()
{
    QTest::addColumn<QStringList>("list");
    QTest::newRow("empty") << QStringList{u""_s};
    QTest::newRow("spaces") << QStringList{u"  a  "_s};
    QTest::newRow("only a space") << QStringList{u" "_s};
    QTest::newRow("commas") << QStringList{u"a, b,,c,"_s};
    QTest::newRow("quotation marks")
        << QStringList{u"subsystem == \"com.apple.TimeMachine\" 'x' “y”"_s};
    QTest::newRow("line ends") << QStringList{u"one\ntwo\r\nthree\rfour\n"_s};
    QTest::newRow("leading at sign") << QStringList{u"@Invalid()"_s};
    QTest::newRow("at sign and variant") << QStringList{u"@Variant(x)"_s};
    QTest::newRow("two at signs") << QStringList{u"@@"_s};
    QTest::newRow("reserved characters") << QStringList{u"[a]; #b = %20 \\n \\x41 ~"_s};
    QTest::newRow("tab and escape") << QStringList{u"\t\u001b[0m\u0007\u0001f"_s};
    QTest::newRow("all low controls") << QStringList{
        u"\u0001\u0002\u0003\u0004\u0005\u0006\u0007\b\t\n\u000b\f\r\u000e\u000f\u0010\u001f"_s};
    QTest::newRow("delete and high controls") << QStringList{u"\u007f\u0080\u0085\u009f\u00a0"_s};
    QTest::newRow("control before a hexadecimal digit") << QStringList{u"\u0001a\u00022\u0003f"_s};
    QTest::newRow("separators") << QStringList{u"\u2028\u2029\ufeff\ufffd\uffff"_s};
    QTest::newRow("leading byte-order mark") << QStringList{u"\ufeffa\ue0fe0\ue0fe1\ufeff"_s};
    QTest::newRow("byte-order mark after what is escaped") << QStringList{u"\"\ufeffa"_s};
    QTest::newRow("astral") << QStringList{u"🥎📍𐐷 a\U0010FFFD"_s};
    QTest::newRow("combining") << QStringList{u"e\u0301 ⬅\ufe0e ➤➤"_s};
    QTest::newRow("none") << QStringList();
    QTest::newRow("one with a comma") << QStringList{u"a, b"_s};
    QTest::newRow("two empty texts") << QStringList{u""_s, u""_s};
    QTest::newRow("empty last") << QStringList{u"a"_s, u""_s};
    QTest::newRow("empty first") << QStringList{u""_s, u"a"_s};
    QTest::newRow("commas and quotation marks")
        << QStringList{u"a,b"_s, u"\"c\""_s, u","_s, u"\""_s};
    QTest::newRow("at signs") << QStringList{u"@"_s, u"@@"_s, u"@Variant(x)"_s, u"a@"_s};
    QTest::newRow("byte-order marks") << QStringList{u"\ufeff@"_s, u"\ue0fe"_s};
    QTest::newRow("line ends and controls")
        << QStringList{u"a\nb"_s, u"\r"_s, u"\u0001a"_s, u"\t"_s};
    QTest::newRow("any writing") << QStringList{u"⬅\ufe0e [ … ]"_s, u"🥎"_s, u"𐐷"_s, u"é"_s};
}

} // namespace

class TestUserDefaults : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
    }

    void absentKeysHaveNoValue()
    {
        const UserDefaults defaults(path());
        QCOMPARE(defaults.string(u"period"_s), std::nullopt);
        QCOMPARE(defaults.boolean(u"fullMode"_s), std::nullopt);
        QCOMPARE(defaults.stringArray(u"predList"_s), std::nullopt);
        QVERIFY(!QFile::exists(path()));
    }

    void textsComeBackExactly_data() { addTexts(); }

    void textsComeBackExactly()
    {
        QFETCH(QStringList, list);
        {
            UserDefaults defaults(path());
            defaults.set(u"predList"_s, list);
            QCOMPARE(defaults.stringArray(u"predList"_s), list);
        }
        const UserDefaults defaults(path());
        QCOMPARE(defaults.stringArray(u"predList"_s), list);
    }

    void readsWhatTheToolkitWrote_data() { addTexts(); }

    void readsWhatTheToolkitWrote()
    {
        QFETCH(QStringList, list);
        QSettings(path(), QSettings::IniFormat).setValue(u"predList"_s, list);
        const UserDefaults defaults(path());
        QCOMPARE(defaults.stringArray(u"predList"_s), list);
    }

    void booleansComeBack()
    {
        {
            UserDefaults defaults(path());
            defaults.set(u"fullMode"_s, true);
            defaults.set(u"lightMode"_s, false);
            QCOMPARE(defaults.boolean(u"fullMode"_s), true);
        }
        const UserDefaults defaults(path());
        QCOMPARE(defaults.boolean(u"fullMode"_s), true);
        QCOMPARE(defaults.boolean(u"lightMode"_s), false);
    }

    void whatIsNoBooleanIsAbsent()
    {
        writeFile("[General]\nfullMode=perhaps\nlightMode=1\nshowSignposts=a, b\n");
        const UserDefaults defaults(path());
        QCOMPARE(defaults.boolean(u"fullMode"_s), std::nullopt);
        QCOMPARE(defaults.boolean(u"lightMode"_s), true);
        QCOMPARE(defaults.boolean(u"showSignposts"_s), std::nullopt);
        QCOMPARE(defaults.string(u"showSignposts"_s), std::nullopt);
    }

    void changedIsSentOnlyOnChange()
    {
        UserDefaults defaults(path());
        const QSignalSpy spy(&defaults, &UserDefaults::changed);

        defaults.set(u"period"_s, u""_s); // absent and empty differ
        defaults.set(u"period"_s, u""_s);
        defaults.set(u"fullMode"_s, false);
        defaults.set(u"fullMode"_s, false);
        defaults.set(u"predList"_s, QStringList());
        defaults.set(u"predList"_s, QStringList());
        defaults.set(u"predList"_s, QStringList{u""_s});

        QStringList keys;
        for (const QList<QVariant>& arguments : spy)
            keys.append(arguments.first().toString());
        QCOMPARE(keys, (QStringList{u"period"_s, u"fullMode"_s, u"predList"_s, u"predList"_s}));
    }

    void writingWaitsForAPause()
    {
        UserDefaults defaults(path());
        defaults.set(u"period"_s, u"1"_s);
        QVERIFY(!QFile::exists(path()));
        QTRY_COMPARE(fileBytes(path()), "[General]\nperiod=1\n");
        defaults.set(u"period"_s, u"2"_s);
        defaults.save();
        QCOMPARE(fileBytes(path()), "[General]\nperiod=2\n");
    }

    void storesSeeEachOther()
    {
        UserDefaults first(path());
        UserDefaults second(path());
        first.set(u"period"_s, u"7"_s);
        first.save();
        QCOMPARE(second.string(u"period"_s), u"7"_s);
        second.set(u"maxCount"_s, u"9"_s);
        first.set(u"period"_s, u"8"_s);
        first.save();
        second.save();
        QCOMPARE(first.string(u"maxCount"_s), u"9"_s);
        QCOMPARE(second.string(u"period"_s), u"8"_s);
    }

    void changesAreMadeOneAfterTheOther()
    {
        UserDefaults first(path());
        first.change([&] {
            // Nobody else writes between reading and writing.
            const QByteArray folder = QFile::encodeName(QFileInfo(path()).path());
            const int other = ::open(folder.constData(), O_RDONLY | O_CLOEXEC);
            QVERIFY(other >= 0 && ::flock(other, LOCK_SH | LOCK_NB) < 0);
            ::close(other);
            first.set(u"predNames"_s, QStringList{u"a"_s, u"b"_s});
        });
        QCOMPARE(UserDefaults(path()).stringArray(u"predNames"_s)->size(), 2);
    }

    void whatIsNotKnownStays()
    {
        const QByteArray others = "other=@Variant(\\0\\0)\n\n[later]\na\\b=\"x\"\n";
        writeFile("; by hand\r\n[General]\r\n=empty\n" + others);
        UserDefaults defaults(path());
        defaults.set(u"fullMode"_s, true);
        defaults.save();
        QCOMPARE(fileBytes(path()), "[General]\nfullMode=true\n" + others);
    }

    void damagedFileIsLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("no keys at all") << QByteArray("maxCount=9\nthis is no settings file\n");
        QTest::newRow("zero bytes") << QByteArray("maxCount=9\nperiod=\0\0\0\n", 23);
        QTest::newRow("broken UTF-8") << QByteArray("maxCount=9\nperiod=\xff\xfe\n");
        QTest::newRow("cut in a character") << QByteArray("maxCount=9\nperiod=\xe2\x9e");
    }

    void damagedFileIsLeftAlone()
    {
        QFETCH(QByteArray, bytes);
        writeFile(bytes);

        UserDefaults defaults(path());
        const QSignalSpy changed(&defaults, &UserDefaults::changed);
        const QSignalSpy failed(&defaults, &UserDefaults::failed);
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(failed.first().first().toString().contains(path()));
        QVERIFY(failed.first().first().toString().contains(u"is damaged."_s));

        QCOMPARE(defaults.string(u"maxCount"_s), u"9"_s); // what can be read is still used
        defaults.set(u"predList"_s, QStringList());
        defaults.set(u"period"_s, u"8"_s);
        defaults.save();
        QCOMPARE(defaults.string(u"period"_s), u"8"_s);
        QCOMPARE(defaults.stringArray(u"predList"_s), QStringList());
        QCOMPARE(changed.count(), 2);

        QCoreApplication::processEvents();
        QCOMPARE(failed.count(), 1);
        QCOMPARE(fileBytes(path()), bytes);
    }

    void whatIsNoFileIsNotRead()
    {
        QVERIFY(QDir(m_folder->path()).mkdir(u"Tessel"_s));
        QCOMPARE(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
        UserDefaults defaults(path());
        const QSignalSpy failed(&defaults, &UserDefaults::failed);
        defaults.set(u"period"_s, u"8"_s);
        defaults.save();
        QCOMPARE(defaults.string(u"period"_s), u"8"_s);
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(failed.first().first().toString().contains(u"cannot be read."_s));
    }

    void unwritablePlaceIsSaidOnce()
    {
        // A file where the folder should be: also the super-user cannot write below it.
        QFile inTheWay(m_folder->filePath(u"Tessel"_s));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));

        UserDefaults defaults(path());
        const QSignalSpy failed(&defaults, &UserDefaults::failed);
        for (const QString& period : {u"8"_s, u"9"_s}) {
            defaults.set(u"period"_s, period);
            defaults.save();
        }
        QCOMPARE(defaults.string(u"period"_s), u"9"_s);
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(failed.first().first().toString().contains(u"Not a directory."_s));
        QCoreApplication::processEvents();
        QCOMPARE(failed.count(), 1);
    }

    void preferencesFollowTheConfigurationFolder()
    {
        const QByteArray before = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder->path()));
        const QString found = preferencesFile();
        before.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
        QCOMPARE(found, path());
    }

private:
    QString path() const { return m_folder->filePath(u"Tessel/Tessel.conf"_s); }

    void writeFile(const QByteArray& bytes) const
    {
        QVERIFY(QDir().mkpath(QFileInfo(path()).path()));
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

TESSEL_TEST(TestUserDefaults)
#include "tst_userdefaults.moc"
