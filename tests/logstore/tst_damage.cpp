// SPDX-License-Identifier: MIT
#include "logstore/memorypeak.h"
#include "logstore/writtenstore.h"
#include "platform/logstore/trace/chunk.h"
#include "support/testcase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QSet>

#include <numeric>
#include <random>

using namespace logstore::writer;
using OuterTag = logstore::ChunkTag;

namespace {

using Random = std::mt19937;

std::size_t below(std::size_t limit, Random& random)
{
    return limit == 0 ? 0 : random() % limit;
}

/// An outer chunk of a trace file.
struct Piece
{
    std::size_t offset;
    std::size_t size; ///< with head and padding
    OuterTag tag;
    std::vector<int> sets; ///< those it is needed for, by number
};

std::vector<Piece> piecesOf(const Bytes& file, int& setNumber)
{
    std::vector<Piece> pieces;
    for (std::size_t at = 0; at < file.size();) {
        const auto head = logstore::ChunkHead::read(logstore::clipped(file, at));
        const std::size_t size = (logstore::ChunkHead::size + head.bodySize + 7) / 8 * 8;
        pieces.push_back({at, size, head.tag, {}});
        if (head.tag == OuterTag::ChunkSet) {
            bool hasCatalog = false;
            for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
                const bool isCatalog = piece->tag == OuterTag::Catalog;
                if (at == piece->offset || piece->tag == OuterTag::Header
                    || (isCatalog && !hasCatalog))
                    piece->sets.push_back(setNumber);
                hasCatalog = hasCatalog || isCatalog;
            }
            ++setNumber;
        }
        at += size;
    }
    return pieces;
}

/// A store with every kind of record in several files, catalogs and chunk sets, of which each
/// message tells in which set it stands.
class Target : public WrittenStore
{
public:
    static constexpr int fileCount = 3;
    static constexpr int sectionsPerFile = 2;
    static constexpr int setsPerSection = 3;
    static constexpr int recordsPerSet = 3;

    explicit Target(Compression compression)
    {
        int setNumber = 0;
        for (int number = 0; number < fileCount; ++number) {
            TraceFile file = trace({});
            file.sections.resize(sectionsPerFile, file.sections[0]);
            for (Section& section : file.sections)
                for (int i = 0; i < setsPerSection; ++i)
                    section.sets.push_back(
                        {chunksOf(setNumber++), Packing{compression, 0, {}}, true, {}, {}});
            file.sections[1].header = file.header;
            files.add((number == 0 ? "Persist/" : "Special/")
                          + logFileName(std::size_t(number), "tracev3"),
                      file);
        }
        files.add(image);
        files.add(cache);
        files.add("0000000000000001.timesync", {boot});
        m_root = write();
    }

    const std::filesystem::path& root() const { return m_root; }

    static quint64 threadOf(int setNumber, int record)
    {
        return quint64(1000 + setNumber * 10 + record);
    }
    static QByteArray textOf(int setNumber) { return "set " + QByteArray::number(setNumber); }

    void put(const std::string& path, const Bytes& bytes) const
    {
        QFile file(QString::fromStdString((m_root / path).string()));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("%s cannot be written", path.c_str());
        file.write(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
    }

private:
    std::vector<Chunk> chunksOf(int setNumber)
    {
        const auto time = std::uint64_t(setNumber) * 10;
        std::vector<Record> records;
        for (int i = 0; i < recordsPerSet; ++i) {
            Record record = message(time + std::uint64_t(i), "%s %d");
            record.thread = threadOf(setNumber, i);
            record.items = {text("set"), number<std::int32_t>(setNumber)};
            records.push_back(record);
        }
        records[1].subsystem = process.subsystem("org.example", "general");
        std::vector<Chunk> chunks{page(records)};
        if (setNumber % setsPerSection == 0) {
            const std::vector<Chunk> others = otherKinds(time);
            chunks.insert(chunks.end(), others.begin(), others.end());
        }
        return chunks;
    }

    std::vector<Chunk> otherKinds(std::uint64_t time)
    {
        Record full = message(time + 2, "%s %s");
        full.items = {text("public"), text("private", Privacy::Private)};
        full.backtrace = Backtrace{{testUuid(1)}, {{0, 1}}};
        Record signpost = message(time + 3, "at %d");
        signpost.kind = RecordKind::Signpost;
        signpost.name = nameAt(image.offset("name"));
        signpost.items = {number<std::int32_t>(1)};
        Record trace1{
            .kind = RecordKind::Trace, .time = time + 4, .items = {number<std::int64_t>(1)}};
        trace1.format = inSharedCache(cache.offset(0, "%d"));
        const Record loss{.kind = RecordKind::Loss, .time = time + 5};
        Record activity = message(time + 6, "activity");
        activity.kind = RecordKind::Activity;
        activity.activity = activity.parentActivity = activity.creator = 7;
        Record large = message(time + 7, "%s");
        large.oversize = 1;
        const Oversize oversize{
            .process = process.key, .time = time + 7, .reference = 1, .items = {text("oversize")}};
        StateDump state{.process = process.key, .time = time + 8, .title = "state"};
        const std::string_view plist =
            "<plist><dict><key>k</key><array><true/></array></dict></plist>";
        state.data.assign(plist.begin(), plist.end());
        const SimpleDump simple{
            .process = process.key, .time = time + 9, .subsystem = "s", .message = "m"};
        return {oversize, page({full, signpost, trace1, loss, activity, large}), state, simple};
    }

    std::filesystem::path m_root;
};

/// Asks every entry for everything. Gives the messages of each thread; absent when the store does
/// not open.
std::optional<QMultiMap<quint64, QByteArray>> readAll(const std::filesystem::path& root)
{
    const auto store = logstore::Store::open(root);
    if (!store)
        return std::nullopt;
    QMultiMap<quint64, QByteArray> messages;
    auto stream = store->entries();
    while (const logstore::Entry* entry = stream.next()) {
        const std::string_view text = entry->composedMessage();
        messages.insert(entry->threadIdentifier(), QByteArray(text.data(), qsizetype(text.size())));
        for (const std::string_view other :
             {entry->sender(), entry->subsystem(), entry->category(), entry->signpostName()})
            if (other.size() > SIZE_MAX / 2)
                return std::nullopt;
    }
    return messages;
}

/// Bytes of a file after damage, and what may be gone or different for it.
struct Damage
{
    Bytes bytes;
    QSet<int> mayBeGone;
    QSet<int> mayDiffer;
    QString what{};

    void hit(const Piece& piece)
    {
        for (const int set : piece.sets)
            (piece.tag == OuterTag::Catalog ? mayDiffer : mayBeGone).insert(set);
    }
    void hit(const std::vector<Piece>& pieces, std::size_t begin, std::size_t end)
    {
        for (const Piece& piece : pieces)
            if (piece.offset < end && begin < piece.offset + piece.size)
                hit(piece);
    }
};

/// A field of the piece, any of its head or body, gets a value that lies.
void wrongField(Damage& damage, const Piece& piece, bool ofHead, Random& random)
{
    const std::size_t size = std::size_t{1} << below(4, random);
    const std::size_t room = ofHead ? logstore::ChunkHead::size : piece.size;
    const std::size_t at = piece.offset + below(room / size, random) * size;
    std::uint64_t value = 0;
    std::memcpy(&value, &damage.bytes[at], size);
    const std::uint64_t values[] = {0,         UINT64_MAX, value + 1,        value - 1, value * 2,
                                    value + 8, value / 2,  random() * value, random()};
    value = values[below(std::size(values), random)];
    std::memcpy(&damage.bytes[at], &value, size);
    damage.hit(piece);
    damage.what = QStringLiteral("field of %1 bytes at %2").arg(size).arg(at);
}

void fill(Damage& damage, const std::vector<Piece>& pieces, bool withZeros, Random& random)
{
    const std::size_t begin = below(damage.bytes.size(), random) / 16 * 16;
    const std::size_t end =
        std::min(damage.bytes.size(), begin + (std::size_t{16} << below(6, random)));
    for (std::size_t at = begin; at < end; ++at)
        damage.bytes[at] = withZeros ? 0 : std::uint8_t(random());
    damage.hit(pieces, begin, end);
    damage.what = QStringLiteral("bytes from %1 to %2").arg(begin).arg(end);
}

void insertBytes(Damage& damage, const std::vector<Piece>& pieces, Random& random)
{
    const Piece& piece = pieces[1 + below(pieces.size() - 1, random)];
    const bool isBetween = below(2, random) == 0;
    const std::size_t at = piece.offset + (isBetween ? 0 : below(piece.size, random));
    Bytes stray(1 + below(100, random));
    std::generate(stray.begin(), stray.end(), [&random] { return std::uint8_t(random()); });
    damage.bytes.insert(damage.bytes.begin() + std::ptrdiff_t(at), stray.begin(), stray.end());
    if (at != piece.offset)
        damage.hit(piece);
    damage.what = QStringLiteral("%1 more bytes at %2").arg(stray.size()).arg(at);
}

/// Chunk sets in another order, or one twice; nothing is lost by that.
void reorder(Damage& damage, const std::vector<Piece>& pieces, Random& random)
{
    std::vector<std::size_t> sets;
    for (std::size_t i = 0; i + 1 < pieces.size(); ++i)
        if (pieces[i].tag == OuterTag::ChunkSet && pieces[i + 1].tag == OuterTag::ChunkSet)
            sets.push_back(i);
    const Piece& first = pieces[sets[below(sets.size(), random)]];
    const auto begin = damage.bytes.begin() + std::ptrdiff_t(first.offset);
    const auto middle = begin + std::ptrdiff_t(first.size);
    const std::size_t nextSize = (&first + 1)->size;
    damage.what = QStringLiteral("order at %1").arg(first.offset);
    if (below(2, random) == 0)
        std::rotate(begin, middle, middle + std::ptrdiff_t(nextSize));
    else {
        const Bytes copy(begin, middle);
        damage.bytes.insert(middle, copy.begin(), copy.end());
    }
}

Damage damaged(const Bytes& good, const std::vector<Piece>& pieces, Random& random)
{
    Damage damage{good, {}, {}};
    const Piece& piece = pieces[below(pieces.size(), random)];
    switch (below(8, random)) {
    case 0:
    case 1: wrongField(damage, piece, true, random); break;
    case 2:
    case 3: wrongField(damage, piece, false, random); break;
    case 4: fill(damage, pieces, below(2, random) == 0, random); break;
    case 5: insertBytes(damage, pieces, random); break;
    case 6: reorder(damage, pieces, random); break;
    default:
        damage.bytes.resize(below(good.size(), random));
        damage.hit(pieces, damage.bytes.size(), good.size());
        damage.what = QStringLiteral("cut at %1").arg(damage.bytes.size());
    }
    return damage;
}

/// The number of damages to try, of each kind of chunk set; the environment may want more.
int damageCount()
{
    const int wanted = qEnvironmentVariableIntValue("TESSEL_DAMAGES");
    return wanted > 0 ? wanted : 250;
}

} // namespace

/// Damaged stores: nothing crashes, takes long or much memory, and what the damage does not hit is
/// read.
class TestDamage : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void costsWhatItHits_data()
    {
        QTest::addColumn<Compression>("compression");
        QTest::newRow("stored") << Compression::Stored;
        QTest::newRow("LZ4") << Compression::Lz4;
        QTest::newRow("LZBITMAP") << Compression::Lzbitmap;
    }

    void costsWhatItHits()
    {
        QFETCH(Compression, compression);
        const Target target(compression);
        const std::vector<Trace> traces = tracesOf(target);
        for (int number = 0; number < damageCount(); ++number) {
            Random random{unsigned(number)};
            const Trace& trace = traces[below(traces.size(), random)];
            readsTheRest(target, trace, damaged(trace.bytes, trace.pieces, random), number);
            if (QTest::currentTestFailed())
                return;
        }
        if (qEnvironmentVariableIsSet("TESSEL_DAMAGES"))
            qInfo("slowest %lld ms, most memory %zu KB", m_slowest, m_largest >> 10);
    }

    void everyByteMayBeWrong()
    {
        const Target target(Compression::Stored);
        for (Trace trace : tracesOf(target, true)) {
            for (std::size_t at = 0; at < trace.bytes.size(); ++at) {
                Damage damage{trace.bytes, {}, {}};
                damage.bytes[at] ^= static_cast<std::uint8_t>(at % 2 == 0 ? 0xff : 0x01);
                damage.hit(trace.pieces, at, at + 1);
                readsTheRest(target, trace, damage, int(at));
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }

private:
    struct Trace
    {
        std::string path;
        Bytes bytes;
        std::vector<Piece> pieces;
    };

    /// The trace files; or the first of them, and the files that all need.
    static std::vector<Trace> tracesOf(const Target& target, bool oneAndOthers = false)
    {
        std::vector<Trace> traces;
        int setNumber = 0;
        for (const auto& [path, bytes] : target.files.files) {
            const bool isTrace = path.ends_with(".tracev3");
            if (isTrace && (setNumber == 0 || !oneAndOthers))
                traces.push_back({path, bytes, piecesOf(bytes, setNumber)});
            else if (!isTrace && oneAndOthers)
                traces.push_back({path, bytes, {{0, bytes.size(), OuterTag::Catalog, allSets()}}});
        }
        return traces;
    }

    static std::vector<int> allSets()
    {
        std::vector<int> sets(Target::fileCount * Target::sectionsPerFile * Target::setsPerSection);
        std::iota(sets.begin(), sets.end(), 0);
        return sets;
    }

    void readsTheRest(const Target& target, const Trace& trace, const Damage& damage, int number)
    {
        target.put(trace.path, damage.bytes);
        QElapsedTimer timer;
        timer.start();
        const MemoryPeak peak;
        const auto messages = readAll(target.root());
        m_slowest = std::max(m_slowest, timer.elapsed());
        m_largest = std::max(m_largest, peak.bytes());
        target.put(trace.path, trace.bytes);
        const QString what = QStringLiteral("%1, damage %2: %3")
                                 .arg(QString::fromStdString(trace.path))
                                 .arg(number)
                                 .arg(damage.what);
        QVERIFY2(messages, qPrintable(what));
        QVERIFY2(timer.elapsed() < 2000 && peak.bytes() < std::size_t{200} << 20, qPrintable(what));
        for (const int set : allSets()) {
            if (damage.mayBeGone.contains(set))
                continue;
            for (int i = 0; i < Target::recordsPerSet; ++i) {
                const quint64 thread = Target::threadOf(set, i);
                QVERIFY2(damage.mayDiffer.contains(set)
                             ? messages->contains(thread)
                             : messages->contains(thread, Target::textOf(set)),
                         qPrintable(what));
            }
        }
    }

    qint64 m_slowest = 0;
    std::size_t m_largest = 0;
};

TESSEL_TEST(TestDamage)
#include "tst_damage.moc"
