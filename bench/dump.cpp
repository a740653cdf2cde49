// SPDX-License-Identifier: MIT
// Prints the entries of a log store, one JSON object per line: for comparing with expected entries
// and with other decoders.
#include "model/entrylistbuilder.h"
#include "model/logger.h"
#include "platform/oslogstore.h"
#include "platform/predicatefilter.h"
#include "support/entryjson.h"
#include "support/fakeplatform.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cmath>
#include <cstdio>

namespace {

struct Request
{
    QString root;
    QDateTime start;
    double period = std::nan(""); ///< seconds; not a number = without end
    qint64 maximum = std::numeric_limits<qint64>::max();
    std::shared_ptr<const logstore::EntryFilter> filter;
    bool signposts = false;
    bool throughLogger = false;
    bool countOnly = false;
};

int fail(const std::string& why)
{
    std::fprintf(stderr, "%s\n", why.c_str());
    return 1;
}

void print(JsonLine& line)
{
    const std::string& text = line.finish();
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void printReport(const SourceReport& report)
{
    if (!report.text().isEmpty())
        std::fprintf(stderr, "%s\n", qUtf8Printable(report.text()));
    for (const SourceReport::Item& item : report.items())
        std::fprintf(stderr, "  %s: %s\n", qUtf8Printable(item.name), qUtf8Printable(item.reason));
}

void printCount(qint64 count)
{
    std::printf("%lld entries\n", static_cast<long long>(count));
}

/// What the reader gives: every entry in every field.
int dumpStore(const Request& request)
{
    const auto store = OSLogStore::open(request.root);
    if (!store)
        return fail(store.error().description);
    const OSLogStore::Position from = request.start.isValid()
                                          ? store->position(request.start)
                                          : OSLogStore::Position{logstore::Store::beginning};
    const std::int64_t end = std::isnan(request.period) ? std::numeric_limits<std::int64_t>::max()
                                                        : from.after(request.period).time;
    auto entries = store->getEntries(from, request.filter);
    JsonLine line;
    qint64 count = 0;
    for (const logstore::Entry* entry = entries.next(); entry && count < request.maximum;
         entry = entries.next()) {
        if (entry->time() > end)
            break;
        line.clear();
        writeEntry(line, static_cast<std::uint64_t>(count), *entry);
        if (!request.countOnly)
            print(line);
        ++count;
    }
    if (request.countOnly)
        printCount(count);
    printReport(SourceReport(*store));
    return 0;
}

void writeRecord(JsonLine& line, const LogEntry& entry)
{
    line.text("id", entry.id.toString(QUuid::WithoutBraces).toUpper().toStdString());
    line.number("type", entry.type);
    for (const EntryMember& member : entryMembers)
        if (member.text)
            line.text(member.name, (entry.*member.text).utf8());
}

/// What a fetch makes of the same store.
int dumpFetch(const Request& request)
{
    FakePlatform fake;
    fake.logStores.localPath = request.root;
    fake.clock.zone = QTimeZone::systemTimeZone();
    const auto logger = Logger::make(fake.platform);
    const QDateTime start = request.start.isValid()
                                ? request.start
                                : QDateTime(QDate(1970, 1, 1), QTime(), QTimeZone::utc());
    const QString seconds = QString::number(start.time().second());
    const bool isRead = logger->getLog(start, seconds, QString::number(request.maximum),
                                       request.filter, request.signposts, request.period);
    printReport(logger->sourceReport());
    if (!isRead)
        return 1;
    if (request.countOnly) {
        printCount(logger->logList().size());
        return 0;
    }
    JsonLine line;
    for (const LogEntry& entry : logger->logList()) {
        line.clear();
        writeRecord(line, entry);
        print(line);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Prints the entries of a log store, one JSON object per line."));
    parser.addHelpOption();
    const QCommandLineOption logger(QStringLiteral("logger"),
                                    QStringLiteral("Print what a fetch makes of them."));
    const QCommandLineOption null(QStringLiteral("null"),
                                  QStringLiteral("Do all the work, print the count."));
    const QCommandLineOption signposts(QStringLiteral("signposts"),
                                       QStringLiteral("With --logger, keep signposts."));
    const QCommandLineOption start(QStringLiteral("start"),
                                   QStringLiteral("First moment, as 2024-12-04T11:44:00Z."),
                                   QStringLiteral("date"));
    const QCommandLineOption period(QStringLiteral("period"), QStringLiteral("Seconds from there."),
                                    QStringLiteral("seconds"));
    const QCommandLineOption maximum(QStringLiteral("max"), QStringLiteral("Most entries."),
                                     QStringLiteral("count"));
    const QCommandLineOption predicateText(
        QStringLiteral("predicate"), QStringLiteral("Which entries."), QStringLiteral("text"));
    parser.addOptions({logger, null, signposts, start, period, maximum, predicateText});
    parser.addPositionalArgument(QStringLiteral("root"), QStringLiteral("The archive or folder."));
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(1);

    Request request;
    request.root = parser.positionalArguments().constFirst();
    request.throughLogger = parser.isSet(logger);
    request.countOnly = parser.isSet(null);
    request.signposts = parser.isSet(signposts);
    request.start = QDateTime::fromString(parser.value(start), Qt::ISODateWithMs);
    if (parser.isSet(start) && !request.start.isValid())
        return fail("--start is no date");
    if (parser.isSet(period))
        request.period = parser.value(period).toDouble();
    if (parser.isSet(maximum))
        request.maximum = parser.value(maximum).toLongLong();
    if (parser.isSet(predicateText)) {
        const std::string text = parser.value(predicateText).toStdString();
        const auto built = predicate::build(text);
        if (!built)
            return fail(predicate::alertText(built.error(), text));
        request.filter = std::make_shared<PredicateFilter>(*built);
    }
    return request.throughLogger ? dumpFetch(request) : dumpStore(request);
}
