// SPDX-License-Identifier: MIT
#include "model/sourcereport.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

namespace {

QString counted(const char* sentence, std::size_t count)
{
    return QCoreApplication::translate("SourceReport", sentence, nullptr, static_cast<int>(count));
}

/// The sentences in the order of what is lost.
QString sentences(const OSLogStore& store, const logstore::EntryFilter* filter)
{
    using logstore::ProblemKind;
    const auto count = [&store](auto... kinds) { return (store.problems().count(kinds) + ...); };
    QStringList texts;
    const auto add = [&texts](const char* sentence, std::size_t number) {
        if (number > 0)
            texts += counted(sentence, number);
    };
    add(QT_TRANSLATE_N_NOOP("SourceReport", "%n folder(s) could not be read."),
        count(ProblemKind::UnreadableFolder));
    if (const std::size_t files =
            count(ProblemKind::UnreadableFile, ProblemKind::NotATraceFile, ProblemKind::CutShort))
        texts += counted(QT_TRANSLATE_N_NOOP("SourceReport", "%n of %1 file(s) could not be read."),
                         files)
                     .arg(store.fileCount());
    add(QT_TRANSLATE_N_NOOP("SourceReport", "%n file(s) are damaged in part."),
        count(ProblemKind::DamagedChunks, ProblemKind::DamagedTimes));
    add(QT_TRANSLATE_N_NOOP("SourceReport", "%n file(s) are in an unknown compression in part."),
        count(ProblemKind::UnknownCompression));
    add(QT_TRANSLATE_N_NOOP("SourceReport", "The format strings of %n image(s) are missing."),
        count(ProblemKind::MissingStrings, ProblemKind::DamagedStrings));
    if (filter && filter->gaveUp())
        texts += QCoreApplication::translate(
            "SourceReport", "A regular expression took too long for some entries.");
    return texts.join(QLatin1Char(' '));
}

} // namespace

SourceReport::SourceReport(const Failure& why) : m_text(QString::fromStdString(why.description))
{
}

SourceReport::SourceReport(const OSLogStore& store, const logstore::EntryFilter* filter)
    : m_text(sentences(store, filter))
{
    for (const logstore::StoreProblem& problem : store.problems().list())
        m_items.append({QFile::decodeName(problem.name.c_str()), reason(problem)});
}
