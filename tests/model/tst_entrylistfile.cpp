// SPDX-License-Identifier: MIT
#include "model/entrylistfile.h"
#include "support/sampleentries.h"
#include "support/testcase.h"

#include <QBuffer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// Gives its bytes in pieces of one size, as a slow medium may.
class Piecemeal : public QBuffer
{
public:
    Piecemeal(const QByteArray& bytes, qint64 pieceSize) : m_pieceSize(pieceSize)
    {
        setData(bytes);
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char* data, qint64 size) override
    {
        return QBuffer::readData(data, std::min(size, m_pieceSize));
    }

private:
    qint64 m_pieceSize;
};

QByteArray json(const QList<LogEntry>& entries)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return writeEntryList(entries, buffer) ? buffer.data() : QByteArray();
}

Result<QList<LogEntry>> fromJson(const QByteArray& bytes)
{
    Piecemeal from(bytes, bytes.size() + 1);
    return readEntryList(from);
}

/// An entry whose members a test can change before it is written.
QJsonObject entryObject()
{
    return QJsonDocument::fromJson(json({sampleLogMessage()})).array().first().toObject();
}

QByteArray listOf(const QJsonObject& entry)
{
    return QJsonDocument(QJsonArray{entry}).toJson(QJsonDocument::Compact);
}

/// A list of one good entry in which `member` stands as spelt here.
QByteArray listWith(const char* member, const char* value)
{
    QJsonObject entry = entryObject();
    entry.remove(QLatin1String(member));
    return listOf(entry).replace("[{", "[{\""_ba + member + "\":" + value + ',');
}

QString errorOf(const QByteArray& bytes)
{
    const auto entries = fromJson(bytes);
    return entries ? u"none"_s : QString::fromStdString(entries.error().description);
}

} // namespace

class TestEntryListFile : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void comesBackAsItWas()
    {
        QList<LogEntry> entries = sampleEntries();
        entries[0].userNote = Text();
        entries[0].composedMessage = u"quotes \" \\ / and controls \u0001\b\f\n\r\t"_s
                                     + QChar(u'\0') + u", déjà \U0001F4CD \u2028"_s;
        entries[2].type = std::numeric_limits<qint64>::min();
        entries[3].type = std::numeric_limits<qint64>::max();
        const auto loaded = fromJson(json(entries));
        QVERIFY2(loaded, loaded ? "" : loaded.error().description.c_str());
        QCOMPARE(loaded->size(), entries.size());
        for (qsizetype i = 0; i < entries.size(); ++i)
            QCOMPARE(firstDifference(loaded->at(i), entries.at(i)), QString());
        QVERIFY(loaded->at(0).userNote.has_value());
        QVERIFY(!loaded->at(2).userNote.has_value());
    }

    void emptyListIsAnEmptyArray()
    {
        QCOMPARE(QJsonDocument::fromJson(json({})), QJsonDocument(QJsonArray()));
        for (const char* empty : {"[]", " [ ] \n", "\xEF\xBB\xBF[]"}) {
            const auto entries = fromJson(empty);
            QVERIFY(entries && entries->isEmpty());
        }
    }

    void writesTheNamedMembers()
    {
        LogEntry entry = sampleSignpost();
        entry.id = QUuid(u"{0a1b2c3d-4e5f-4789-abcd-ef0123456789}"_s);
        entry.userNote = Text(u"look"_s);
        const QJsonObject expected{
            {u"id"_s, u"0A1B2C3D-4E5F-4789-ABCD-EF0123456789"_s},
            {u"type"_s, 4},
            {u"activityIdentifier"_s, u"0"_s},
            {u"category"_s, u"rendering"_s},
            {u"composedMessage"_s, u""_s},
            {u"date"_s, u"2024-03-07 14:05:11.500000+0100"_s},
            {u"level"_s, u""_s},
            {u"parentActivityIdentifier"_s, u""_s},
            {u"process"_s, u"quillond"_s},
            {u"processIdentifier"_s, u"311"_s},
            {u"sender"_s, u"QuillonKit"_s},
            {u"signpostIdentifier"_s, u"18446744073709551614"_s},
            {u"signpostName"_s, u"layout"_s},
            {u"signpostType"_s, u"1"_s},
            {u"storeCategory"_s, u"3"_s},
            {u"subsystem"_s, u"org.tessel.demo"_s},
            {u"threadIdentifier"_s, u"90210"_s},
            {u"userNote"_s, u"look"_s},
        };
        QCOMPARE(QJsonDocument::fromJson(json({entry})).array().first().toObject(), expected);
    }

    void writesWhatOthersCanRead()
    {
        // Longer than the writer's buffer, so that texts and escapes lie across its borders.
        const QList<LogEntry> entries = manyEntries(3000);
        QJsonParseError error{};
        const QJsonArray array = QJsonDocument::fromJson(json(entries), &error).array();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(array.size(), entries.size());
        for (qsizetype i = 0; i < entries.size(); ++i)
            QCOMPARE(array.at(i)[u"composedMessage"_s].toString(),
                     entries.at(i).composedMessage.toString());
    }

    void reads_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("message"); // of the one entry
        QTest::addColumn<qint64>("type");
        const QString plain = sampleLogMessage().composedMessage.toString();
        const auto row = [&](const char* name, const QByteArray& bytes, const QString& message,
                             qint64 type = 1) { QTest::newRow(name) << bytes << message << type; };
        row("escapes", listWith("composedMessage", R"("\"\\\/\b\f\n\r\tA")"),
            u"\"\\/\b\f\n\r\tA"_s);
        row("surrogate escapes", listWith("composedMessage", R"("\uD83D\udcdd")"), u"\U0001F4DD"_s);
        row("escaped zero", listWith("composedMessage", R"("a\u0000b")"),
            u"a"_s + QChar(u'\0') + u"b"_s);
        row("escaped name",
            listWith(R"(\u0063omposedMessage)", R"("x")")
                .replace("\"composedMessage\":", "\"other\":"),
            u"x"_s);
        row("byte-order mark", "\xEF\xBB\xBF" + listWith("level", "\"info\""), plain);
        row("white space everywhere",
            QJsonDocument(QJsonArray{entryObject()}).toJson(QJsonDocument::Indented), plain);
        row("lower-case identity", listWith("id", "\"0a1b2c3d-4e5f-4789-abcd-ef0123456789\""),
            plain);
        row("null note", listWith("userNote", "null"), plain);
        row("last of two members counts",
            listOf(entryObject()).replace("[{", "[{\"composedMessage\":\"first\","), plain);
        row("greatest type", listWith("type", "9223372036854775807"), plain,
            std::numeric_limits<qint64>::max());
        row("least type", listWith("type", "-9223372036854775808"), plain,
            std::numeric_limits<qint64>::min());
        row("whole number with a fraction", listWith("type", "4.0"), plain, 4);
        row("whole number with an exponent", listWith("type", "10e0"), plain, 10);
        row("negative zero", listWith("type", "-0"), plain, 0);
        for (const char* extra :
             {"null", "true", "\"text\"", "-1.5e300", "123456789012345678901234567890", "[]", "{}",
              R"([{"id":1,"type":[{}]},[["x"]],null])", R"({"sender":{"sender":7}})"})
            row(qPrintable(u"extra member "_s + QLatin1String(extra)), listWith("extra", extra),
                plain);
        row("extra member nested deeply",
            listWith("extra", QByteArray(490, '[') + QByteArray(490, ']')), plain);
    }

    void reads()
    {
        QFETCH(QByteArray, bytes);
        const auto entries = fromJson(bytes);
        QVERIFY2(entries, entries ? "" : entries.error().description.c_str());
        QCOMPARE(entries->size(), 1);
        QTEST(entries->first().composedMessage.toString(), "message");
        QTEST(entries->first().type, "type");
        QCOMPARE(entries->first().sender.toString(), sampleLogMessage().sender.toString());
        QVERIFY(!entries->first().userNote);
    }

    void readsMembersInAnyOrder()
    {
        const LogEntry entry = sampleSignpost();
        const QJsonObject object =
            QJsonDocument::fromJson(json({entry})).array().first().toObject();
        QByteArrayList members;
        for (auto it = object.begin(); it != object.end(); ++it)
            members.append(QJsonDocument(QJsonObject{{it.key(), it.value()}})
                               .toJson(QJsonDocument::Compact)
                               .chopped(1)
                               .mid(1));
        for (int turn = 0; turn < members.size(); ++turn) {
            members.append(members.takeFirst());
            std::reverse(members.begin() + 1, members.end());
            const auto entries = fromJson("[{" + members.join(',') + "}]");
            QVERIFY2(entries, entries ? "" : entries.error().description.c_str());
            QCOMPARE(firstDifference(entries->first(), entry), QString());
        }
    }

    void readsAcrossEveryBorderOfItsBuffers()
    {
        QList<LogEntry> entries = sampleEntries();
        entries[1].composedMessage = u"é \U0001F4DD \n \"quoted\""_s;
        const QByteArray bytes =
            "\xEF\xBB\xBF" + json(entries).replace("é", R"(\u00e9\ud83d\udcdd)");
        const auto whole = fromJson(bytes);
        QVERIFY(whole);
        for (qint64 size = 1; size < 64; ++size) {
            Piecemeal from(bytes, size);
            const auto pieced = readEntryList(from);
            QVERIFY2(pieced, pieced ? "" : pieced.error().description.c_str());
            QCOMPARE(pieced->size(), whole->size());
            for (qsizetype i = 0; i < whole->size(); ++i)
                QCOMPARE(firstDifference(pieced->at(i), whole->at(i)), QString());
        }
    }

    void refuses_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("error");
        const QString noList = u"It does not hold a list of entries."_s;
        const QString noObject = u"Entry 1 is not an object."_s;
        for (const char* other : {"{}", "\"text\"", "7", "null", "true"})
            QTest::addRow("%s instead of a list", other) << QByteArray(other) << noList;
        for (const char* other : {"[7]", "[[]]", "[\"text\"]", "[null]", "[false]", "[1e9]"})
            QTest::addRow("%s instead of entries", other) << QByteArray(other) << noObject;
        const auto member = [](const char* name, const char* value, const QString& error) {
            QTest::addRow("%s as %s", value, name)
                << listWith(name, value)
                << u"In entry 1 the member “%1” %2."_s.arg(QLatin1String(name), error);
        };
        for (const char* value : {"7", "null", "true", "[]", "{}", "[\"text\"]"})
            member("sender", value, u"is not a string"_s);
        for (const char* value : {"7", "false", "[]", "{}"})
            member("userNote", value, u"is not a string"_s);
        for (const char* value :
             {"\"1\"", "null", "true", "1.5", "9223372036854775808", "-9223372036854775809",
              "18446744073709551615", "1e30", "[1]", "{}"})
            member("type", value, u"is not a whole number of 64 bits"_s);
        for (const char* value : {"7", "null", "\"\"", "\"0A1B2C3D4E5F4789ABCDEF0123456789\"",
                                  "\"0A1B2C3D-4E5F-4789-ABCD-EF012345678\"",
                                  "\"0A1B2C3D-4E5F-4789-ABCD-EF01234567890\"",
                                  "\"0A1B2C3D-4E5F-4789-ABCD-EF012345678G\"",
                                  "\"0A1B2C3D-4E5F-4789-ABCDE-F0123456789\"",
                                  "\"0A1B2C3D-4E5F-4789-ABCD--F0123456789\"",
                                  "\"{A1B2C3D-4E5F-4789-ABCD-EF012345678}\""})
            member("id", value, u"is not a UUID"_s);
        QTest::newRow("nested too deeply")
            << listWith("extra", QByteArray(100'000, '[')) << u"Entry 1 is nested too deeply."_s;
        QTest::newRow("wrong even where another counts")
            << listOf(entryObject()).replace("[{", "[{\"sender\":null,")
            << u"In entry 1 the member “sender” is not a string."_s;
    }

    void refuses()
    {
        QFETCH(QByteArray, bytes);
        QTEST(errorOf(bytes), "error");
    }

    void refusesEveryShorterText()
    {
        const QByteArray bytes = json({sampleSignpost()}).trimmed();
        for (qsizetype length = 0; length < bytes.size(); ++length)
            QVERIFY2(errorOf(bytes.first(length)).startsWith(u"It is not JSON"_s),
                     qPrintable(QString::number(length)));
    }

    void memberMustBeThere_data()
    {
        QTest::addColumn<bool>("isRequired");
        const QStringList members = entryObject().keys();
        QCOMPARE(members.size(), 17);
        for (const QString& member : members)
            QTest::newRow(qPrintable(member)) << true;
        QTest::newRow("userNote") << false;
    }

    void memberMustBeThere()
    {
        QFETCH(bool, isRequired);
        const QString member = QString::fromLatin1(QTest::currentDataTag());
        QJsonObject entry = entryObject();
        entry.insert(u"userNote"_s, u"note"_s);
        entry.remove(member);
        QCOMPARE(errorOf(listOf(entry)),
                 isRequired ? u"In entry 1 the member “%1” is missing."_s.arg(member) : u"none"_s);
    }

    void namesTheEntryAtFault()
    {
        QJsonArray list;
        for (int i = 0; i < 5; ++i)
            list.append(entryObject());
        QJsonObject bad = entryObject();
        bad.remove(u"process"_s);
        list[3] = bad;
        QCOMPARE(errorOf(QJsonDocument(list).toJson()),
                 u"In entry 4 the member “process” is missing."_s);
        list[3] = 7;
        QCOMPARE(errorOf(QJsonDocument(list).toJson()), u"Entry 4 is not an object."_s);
    }

    void equalTextsAreShared()
    {
        const auto entries = fromJson(json({sampleLogMessage(), sampleLogMessage()}));
        QVERIFY(entries);
        for (const auto field : {&LogEntry::process, &LogEntry::sender, &LogEntry::subsystem,
                                 &LogEntry::category, &LogEntry::threadIdentifier})
            QVERIFY((entries->at(0).*field).utf8().data() == (entries->at(1).*field).utf8().data());
    }

    void keepsThePermissionsOfTheOldFile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"list.tessel"_s);
        QVERIFY(saveEntryList(sampleEntries(), path));
        const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
        QVERIFY(QFile::setPermissions(path, permissions));
        QVERIFY(saveEntryList({sampleBoundary()}, path));
        QCOMPARE(QFile::permissions(path) & ~QFile::Permissions(QFile::ReadUser | QFile::WriteUser),
                 permissions);
        const auto loaded = loadEntryList(path);
        QVERIFY(loaded);
        QCOMPARE(loaded->size(), 1);
    }

    void failedWriteLeavesTheOldFile()
    {
        // A device that is always full.
        QFile full(u"/dev/full"_s);
        if (!full.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            QSKIP("this machine has no /dev/full");
        QVERIFY(!writeEntryList(manyEntries(2000), full));
        QVERIFY(!full.errorString().isEmpty());
    }

    void failedReadNamesTheFile_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no file
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << QByteArray() << u"No such file or directory."_s;
        QTest::newRow("empty") << ""_ba << u"It is not JSON: incomplete JSON at byte 0."_s;
        QTest::newRow("cut short") << "[{"_ba << u"It is not JSON: incomplete JSON at byte 2."_s;
        QTest::newRow("two values") << "[] []"_ba << u"It is not JSON: extra data at byte 3."_s;
        QTest::newRow("bad text encoding")
            << "[\"\xC3\x28\"]"_ba << u"It is not JSON: syntax error at byte 2."_s;
        QTest::newRow("not an entry") << "[1]"_ba << u"Entry 1 is not an object."_s;
    }

    void failedReadNamesTheFile()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"list.tessel"_s);
        QFile file(path);
        if (!content.isNull()) {
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
            file.close();
        }
        const auto entries = loadEntryList(path);
        QVERIFY(!entries);
        QCOMPARE(QString::fromStdString(entries.error().description),
                 u"The entry list “%1” could not be read. %2"_s.arg(path, reason));
    }
};

TESSEL_TEST(TestEntryListFile)
#include "tst_entrylistfile.moc"
