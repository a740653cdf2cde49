// SPDX-License-Identifier: MIT
#include "platform/logstore/recordselection.h"

#include "platform/logstore/strings/stringfiles.h"

namespace logstore {

namespace {

ProcessFacts factsOf(KnownProcess* process, StringFiles& strings)
{
    ProcessFacts facts;
    if (!process)
        return facts;
    facts.processIdentifier = process->processIdentifier;
    facts.userIdentifier = process->userIdentifier;
    if (process->mainImage)
        facts.processImageUuid = *process->mainImage;
    process->openFiles(strings);
    if (process->mainFile) {
        facts.processImagePath = process->mainFile->image().path;
        facts.process = process->mainFile->image().name;
    }
    return facts;
}

} // namespace

bool RecordSelection::mayMatch(KnownProcess* process) const
{
    if (!m_filter || !process)
        return true;
    if (process->verdict == Verdict::NotAsked)
        process->verdict =
            m_filter->mayMatch(factsOf(process, m_strings)) ? Verdict::Possible : Verdict::Excluded;
    return process->verdict == Verdict::Possible;
}

bool RecordSelection::mayMatch(const KnownCatalog* catalog,
                               KnownProcess* process,
                               const RecordHead& head,
                               Bytes data) const
{
    if (!m_filter || !process || !catalog)
        return true;
    std::optional<std::uint16_t> subsystem;
    if (head.kind == RecordKind::Log || head.kind == RecordKind::Signpost) {
        const auto fields = RecordFields::read(head, data, process->hasPersona);
        if (!fields)
            return false;
        subsystem = fields->subsystem;
    }
    return possible(*process, catalog->subsystem(*process, subsystem, m_texts));
}

bool RecordSelection::mayMatchFirehose(const KnownCatalog* catalog, KnownProcess* process) const
{
    if (!m_filter || !process || !catalog)
        return true;
    if (process->firehoseVerdict == Verdict::NotAsked) {
        bool any = possible(*process, process->noSubsystem);
        for (std::size_t at = 0; !any && at < process->subsystems.size();
             at += CatalogProcess::subsystemEntrySize) {
            const auto identifier = loadAt<std::uint16_t>(process->subsystems, at);
            any = possible(*process, catalog->subsystem(*process, identifier, m_texts));
        }
        process->firehoseVerdict = any ? Verdict::Possible : Verdict::Excluded;
    }
    return process->firehoseVerdict == Verdict::Possible;
}

bool RecordSelection::possible(KnownProcess& process, KnownSubsystem& known) const
{
    if (known.verdict == Verdict::NotAsked) {
        const bool mayMatch = m_filter->mayMatch(factsOf(&process, m_strings),
                                                 known.texts.subsystem, known.texts.category);
        known.verdict = mayMatch ? Verdict::Possible : Verdict::Excluded;
    }
    return known.verdict == Verdict::Possible;
}

} // namespace logstore
