// SPDX-License-Identifier: MIT
#include "platform/logstore/store.h"
#include "platform/logstore/strings/sharedcache.h"
#include "platform/logstore/strings/uuidtext.h"
#include "platform/logstore/trace/unpack.h"
#include "support/entryjson.h"
#include "support/samples.h"
#include "support/testcase.h"

#include <QCryptographicHash>
#include <QtTest>

#include <fstream>
#include <rapidjson/document.h>
#include <sstream>
#include <zlib.h>

using logstore::SharedCache;
using logstore::Store;
using logstore::TextPool;
using logstore::Uuid;
using logstore::UuidText;

namespace {

/// The lines of a compressed file.
std::vector<std::string> linesOf(const std::filesystem::path& path)
{
    std::string text;
    gzFile file = gzopen(path.c_str(), "rb");
    std::array<char, 65536> buffer{};
    for (int count = 0; file && (count = gzread(file, buffer.data(), buffer.size())) > 0;)
        text.append(buffer.data(), static_cast<std::size_t>(count));
    if (file)
        gzclose(file);
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

rapidjson::Document parsed(const std::string& json)
{
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    return document;
}

/// The names and both values of the members that differ.
std::string difference(const rapidjson::Document& expected, const rapidjson::Document& found)
{
    std::string text;
    const auto show = [](const rapidjson::Value& value) {
        return value.IsString()   ? std::string(value.GetString(), value.GetStringLength())
               : value.IsUint64() ? std::to_string(value.GetUint64())
               : value.IsInt64()  ? std::to_string(value.GetInt64())
                                  : std::string("null");
    };
    for (const auto& member : expected.GetObject())
        if (!found.HasMember(member.name) || found[member.name] != member.value)
            text += std::string(member.name.GetString()) + ": expected «" + show(member.value)
                    + "», found «"
                    + (found.HasMember(member.name) ? show(found[member.name]) : "nothing") + "»; ";
    return text;
}

std::vector<std::string> entriesOf(const Store& store)
{
    std::vector<std::string> lines;
    auto stream = store.entries();
    JsonLine line;
    while (const logstore::Entry* entry = stream.next()) {
        line.clear();
        writeEntry(line, lines.size(), *entry);
        lines.push_back(line.finish());
    }
    return lines;
}

} // namespace

/// The reader against real archives and what is known of their entries.
class TestSamples : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { SKIP_WITHOUT_SAMPLES(); }

    void everyFieldOfEveryExpectedEntry_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name :
             {"macos15", "f30", "f85", "f85-strings", "forged", "golden27", "image-root"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }
    void everyFieldOfEveryExpectedEntry()
    {
        QFETCH(const QString, name);
        const auto folder = *samplesFolder();
        const auto store = Store::open(rootOf(name));
        QVERIFY2(store.has_value(), "opens");
        const auto entries = entriesOf(*store);
        const auto expectations = linesOf(folder / (name.toStdString() + ".expected.jsonl.gz"));
        QVERIFY(!expectations.empty());
        for (const std::string& expectation : expectations) {
            const auto expected = parsed(expectation);
            const std::size_t index = expected["index"].GetUint64();
            QVERIFY2(index < entries.size(),
                     qPrintable(QStringLiteral("there is no entry %1").arg(index)));
            const auto found = parsed(entries[index]);
            QVERIFY2(found == expected,
                     qPrintable(QStringLiteral("entry %1: %2")
                                    .arg(index)
                                    .arg(QString::fromStdString(difference(expected, found)))));
        }
    }

    /// Whole and damaged ones.
    void lzbitmapStreams()
    {
        std::ifstream file(*samplesFolder() / "lzbitmap.expected.json");
        std::stringstream text;
        text << file.rdbuf();
        const auto streams = parsed(text.str());
        QVERIFY(streams.Size() > 0);
        for (const auto& each : streams.GetArray()) {
            const auto packed = QByteArray::fromBase64(each["stream"].GetString());
            std::vector<std::uint8_t> unpacked;
            const auto outcome = logstore::unpackChunkSet(
                std::vector<std::uint8_t>(packed.begin(), packed.end()), unpacked);
            const QByteArray bytes(reinterpret_cast<const char*>(unpacked.data()),
                                   qsizetype(unpacked.size()));
            QVERIFY2((outcome == logstore::Unpacked::Whole) == each["whole"].GetBool()
                         && QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex()
                                == each["sha256"].GetString(),
                     each["name"].GetString());
        }
    }

    /// Starting anywhere gives what a walk from the beginning gives from there on.
    void seekingAgreesWithWalking_data() { everyFieldOfEveryExpectedEntry_data(); }
    void seekingAgreesWithWalking()
    {
        QFETCH(const QString, name);
        const auto store = Store::open(rootOf(name));
        QVERIFY(store.has_value());
        std::vector<std::pair<std::int64_t, std::string>> all;
        auto walk = store->entries();
        while (const logstore::Entry* entry = walk.next())
            all.emplace_back(entry->time(), entry->composedMessage());
        for (std::size_t i = 0; i < all.size(); i += all.size() / 20 + 1) {
            const std::int64_t from = all[i].first;
            auto first = std::find_if(all.begin(), all.end(),
                                      [from](const auto& e) { return e.first >= from; });
            auto stream = store->entries(from);
            for (int n = 0; n < 100 && first != all.end(); ++n, ++first) {
                const logstore::Entry* entry = stream.next();
                QVERIFY(entry);
                QCOMPARE(entry->time(), first->first);
                QCOMPARE(std::string(entry->composedMessage()), first->second);
            }
        }
    }

    void sharedCacheFiles_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("version 1") << QStringLiteral("dsc-version1");
        QTest::newRow("version 2") << QStringLiteral("dsc-version2");
    }
    void sharedCacheFiles()
    {
        QFETCH(const QString, name);
        const std::string file = name.toStdString();
        const auto document = stringExpectations();
        const rapidjson::Value& expected = document[file.c_str()];
        TextPool pool;
        const auto cache = SharedCache::open(*samplesFolder() / "strings" / file, pool);
        QVERIFY(cache.has_value());
        QCOMPARE((*cache)->rangeCount(), expected["ranges"].GetUint64());
        QCOMPARE((*cache)->imageCount(), expected["images"].GetUint64());
        for (const auto& lookup : expected["lookups"].GetArray()) {
            const auto found = (*cache)->formatAt(lookup["reference"].GetUint64());
            QVERIFY(found.program && found.image);
            QCOMPARE(std::string(found.program->text()), std::string(lookup["string"].GetString()));
            QCOMPARE(found.image->uuid.text(), std::string(lookup["imageUUID"].GetString()));
            QCOMPARE(std::string(found.image->path), std::string(lookup["imagePath"].GetString()));
        }
        for (const auto& miss : expected["misses"].GetArray())
            QVERIFY(!(*cache)->formatAt(miss.GetUint64()).program);
        for (const auto& image : expected["firstImages"].GetArray()) {
            const std::uint64_t start = image["textOffset"].GetUint64();
            for (const std::uint64_t offset : {start, start + image["textSize"].GetUint64() - 1}) {
                QVERIFY((*cache)->imageAt(offset));
                QCOMPARE(std::string((*cache)->imageAt(offset)->path),
                         std::string(image["path"].GetString()));
            }
        }
    }

    void uuidTextFiles_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("with strings") << QStringLiteral("00/7EF56328D53A78B59CCCE3E3189F57");
        QTest::newRow("path only") << QStringLiteral("22/0D3C2953A33917B333DD8366AC25F2");
    }
    void uuidTextFiles()
    {
        QFETCH(const QString, name);
        const std::string file = name.toStdString();
        const auto document = stringExpectations();
        const rapidjson::Value& expected = document[file.c_str()];
        TextPool pool;
        const auto text = UuidText::open(*samplesFolder() / "strings" / file, Uuid{}, pool);
        QVERIFY(text.has_value());
        QCOMPARE((*text)->entryCount(), expected["entries"].GetUint64());
        QCOMPARE(std::string((*text)->image().path), std::string(expected["path"].GetString()));
        for (const auto& lookup : expected["lookups"].GetArray()) {
            const auto found = (*text)->textAt(lookup["reference"].GetUint64());
            QCOMPARE(found.has_value(), !lookup["string"].IsNull());
            if (found)
                QCOMPARE(*found, std::string(lookup["string"].GetString()));
        }
    }

private:
    static std::filesystem::path rootOf(const QString& sample)
    {
        const auto folder = *samplesFolder() / sample.toStdString();
        const std::filesystem::path archive = folder.string() + ".logarchive";
        return exists(archive) ? archive : folder;
    }

    static rapidjson::Document stringExpectations()
    {
        std::ifstream file(*samplesFolder() / "strings" / "strings.expected.json");
        std::stringstream text;
        text << file.rdbuf();
        return parsed(text.str());
    }
};

TESSEL_TEST(TestSamples)
#include "tst_samples.moc"
