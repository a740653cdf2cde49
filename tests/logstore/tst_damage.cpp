// SPDX-License-Identifier: MIT
#include "platform/logstore/store.h"
#include "platform/logstore/trace/chunk.h"
#include "platform/logstore/trace/unpack.h"
#include "support/samples.h"
#include "support/testcase.h"

#include <QTemporaryDir>
#include <QtTest>

#include <fstream>
#include <random>

namespace fs = std::filesystem;

using logstore::Bytes;
using logstore::ChunkHead;
using logstore::ChunkTag;

namespace {

using Buffer = std::vector<std::uint8_t>;

Buffer contentsOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void write(const fs::path& path, const Buffer& bytes)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

std::vector<std::size_t> chunkBorders(Bytes file)
{
    std::vector<std::size_t> borders;
    for (std::size_t at = 0; at + ChunkHead::size <= file.size();) {
        borders.push_back(at);
        at += ChunkHead::size + (ChunkHead::read(file.subspan(at)).bodySize + 7) / 8 * 8;
    }
    return borders;
}

template <typename T>
void append(Buffer& out, T value)
{
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(&value);
    out.insert(out.end(), bytes, bytes + sizeof value);
}

/// The same trace file with its chunk sets stored uncompressed, so that damage reaches the records
/// and not only the compression around them. Ends before `limit` bytes of the source.
Buffer storedUncompressed(const Buffer& source, std::size_t limit)
{
    Buffer out;
    Buffer unpacked;
    for (const std::size_t at : chunkBorders(source)) {
        if (at > limit)
            break;
        const ChunkHead head = ChunkHead::read(Bytes(source).subspan(at));
        const Bytes body = logstore::clipped(source, at + ChunkHead::size, head.bodySize);
        Buffer newBody(body.begin(), body.end());
        if (head.tag == ChunkTag::ChunkSet) {
            logstore::unpackChunkSet(body, unpacked);
            newBody.clear();
            append(newBody, std::uint32_t{0x2d347662});
            append(newBody, static_cast<std::uint32_t>(unpacked.size()));
            newBody.insert(newBody.end(), unpacked.begin(), unpacked.end());
            append(newBody, std::uint32_t{0x24347662});
        }
        append(out, static_cast<std::uint32_t>(head.tag));
        append(out, std::uint32_t{0x11});
        append(out, std::uint64_t{newBody.size()});
        out.insert(out.end(), newBody.begin(), newBody.end());
        out.resize((out.size() + 7) / 8 * 8);
    }
    return out;
}

/// Asks every entry of the store for everything. Returns how many there are.
std::size_t readAll(const fs::path& root)
{
    const auto store = logstore::Store::open(root);
    if (!store)
        return 0;
    std::size_t count = 0;
    auto stream = store->entries();
    while (const logstore::Entry* entry = stream.next()) {
        const std::size_t length = entry->composedMessage().size() + entry->formatString().size()
                                   + entry->processImagePath().size()
                                   + entry->senderImagePath().size() + entry->subsystem().size()
                                   + entry->category().size() + entry->signpostName().size();
        count += length < SIZE_MAX && entry->senderImageOffset().value_or(0) <= UINT64_MAX ? 1 : 0;
    }
    return count;
}

/// A copy of a sample in which one file can be replaced.
class Copy
{
public:
    explicit Copy(const char* name) : m_root(fs::path(m_folder.path().toStdString()) / name)
    {
        fs::copy(*samplesFolder() / name, m_root, fs::copy_options::recursive);
        for (const auto& item : fs::recursive_directory_iterator(m_root))
            fs::permissions(item.path(), fs::perms::owner_all, fs::perm_options::add);
    }

    fs::path root() const { return m_root; }
    fs::path file(const char* relative) const { return m_root / relative; }

private:
    QTemporaryDir m_folder;
    fs::path m_root;
};

struct Target
{
    const char* sample;
    const char* file;
    std::size_t limit; ///< of the source's bytes, to keep large samples quick
    int truncations;
    int flips;
};

constexpr Target traces[] = {
    {"macos15.logarchive", "Persist/0000000000000c80.tracev3", SIZE_MAX, 400, 3000},
    {"forged.logarchive", "Persist/0000000000000001.tracev3", SIZE_MAX, 400, 4000},
    {"forged.logarchive", "Special/0000000000000002.tracev3", SIZE_MAX, 100, 1000},
    {"golden27.logarchive", "Persist/0000000000000001.tracev3", SIZE_MAX, 100, 600},
    {"golden27.logarchive", "Special/0000000000000002.tracev3", SIZE_MAX, 100, 600},
    {"f30.logarchive", "Persist/0000000000000030.tracev3", SIZE_MAX, 200, 1000},
    {"f85-strings.logarchive", "Persist/0000000000000f85.tracev3", 30000, 200, 1000},
};

} // namespace

/// No damage to the files of an archive may crash the reader, hang it or read outside a buffer; the
/// sanitizers watch. The places are random but the same in every run.
class TestDamage : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { SKIP_WITHOUT_SAMPLES(); }

    void truncatedTraceFiles_data() { addTargets(); }
    void truncatedTraceFiles()
    {
        QFETCH(const int, target);
        QFETCH(const bool, uncompressed);
        const Target& chosen = traces[target];
        const Copy copy(chosen.sample);
        const Buffer whole = prepared(copy, chosen, uncompressed);
        std::vector<std::size_t> lengths = chunkBorders(whole);
        std::mt19937 random(1);
        for (int i = 0; i < chosen.truncations; ++i)
            lengths.push_back(random() % whole.size());
        write(copy.file(chosen.file), whole);
        const std::size_t all = readAll(copy.root());
        QVERIFY(all > 0);
        for (const std::size_t length : lengths) {
            write(copy.file(chosen.file),
                  Buffer(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
            QVERIFY(readAll(copy.root()) <= all);
        }
    }

    void flippedBitsInTraceFiles_data() { addTargets(); }
    void flippedBitsInTraceFiles()
    {
        QFETCH(const int, target);
        QFETCH(const bool, uncompressed);
        const Target& chosen = traces[target];
        const Copy copy(chosen.sample);
        Buffer bytes = prepared(copy, chosen, uncompressed);
        write(copy.file(chosen.file), bytes);
        const std::size_t all = readAll(copy.root());
        std::mt19937 random(2);
        std::size_t survivors = 0;
        for (int i = 0; i < chosen.flips / 2; ++i) {
            const std::size_t at = random() % bytes.size();
            const auto bit = static_cast<std::uint8_t>(1U << random() % 8);
            bytes[at] ^= bit;
            write(copy.file(chosen.file), bytes);
            survivors += readAll(copy.root());
            bytes[at] ^= bit;
        }
        // Damage costs the records in it and little else.
        QVERIFY(survivors > all * static_cast<std::size_t>(chosen.flips) / 2 / 4);
    }

private:
    static void addTargets()
    {
        QTest::addColumn<int>("target");
        QTest::addColumn<bool>("uncompressed");
        for (int i = 0; i < static_cast<int>(std::size(traces)); ++i) {
            const QByteArray name = QByteArray(traces[i].sample) + '/' + traces[i].file;
            QTest::addRow("%s as it is", name.constData()) << i << false;
            QTest::addRow("%s uncompressed", name.constData()) << i << true;
        }
    }

    static Buffer prepared(const Copy& copy, const Target& target, bool uncompressed)
    {
        Buffer bytes = contentsOf(copy.file(target.file));
        if (uncompressed)
            return storedUncompressed(bytes, target.limit);
        bytes.resize(std::min(bytes.size(), target.limit));
        return bytes;
    }
};

TESSEL_TEST(TestDamage)
#include "tst_damage.moc"
