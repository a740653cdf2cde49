// SPDX-License-Identifier: MIT
#include "platform/logstore/recordselection.h"

#include "platform/logstore/strings/stringfiles.h"

namespace logstore {

namespace {

ProcessFacts factsOf(CatalogProcess* process, StringFiles& strings)
{
    ProcessFacts facts;
    if (!process)
        return facts;
    facts.processIdentifier = process->processIdentifier;
    facts.userIdentifier = process->userIdentifier;
    if (process->mainImage)
        facts.processImageUuid = *process->mainImage;
    strings.lookUp(*process);
    if (process->mainFile) {
        facts.processImagePath = process->mainFile->image().path;
        facts.process = process->mainFile->image().name;
    }
    return facts;
}

} // namespace

bool RecordSelection::mayMatch(CatalogProcess* process) const
{
    if (!m_filter || !process)
        return true;
    if (process->verdict == Verdict::NotAsked)
        process->verdict =
            m_filter->mayMatch(factsOf(process, m_strings)) ? Verdict::Possible : Verdict::Excluded;
    return process->verdict == Verdict::Possible;
}

bool RecordSelection::mayMatch(const Catalog* catalog,
                               CatalogProcess* process,
                               const RecordHead& head,
                               Bytes data) const
{
    if (!m_filter || !process || !catalog)
        return true;
    std::uint16_t subsystem = 0;
    if (head.kind == RecordKind::Log || head.kind == RecordKind::Signpost) {
        const auto fields = RecordFields::read(head, data);
        if (!fields)
            return false;
        subsystem = fields->subsystem;
    }
    auto& verdicts = process->subsystemVerdicts;
    if (subsystem >= verdicts.size())
        verdicts.resize(std::size_t{subsystem} + 1, Verdict::NotAsked);
    if (verdicts[subsystem] == Verdict::NotAsked)
        verdicts[subsystem] =
            ask(*catalog, *process, subsystem) ? Verdict::Possible : Verdict::Excluded;
    return verdicts[subsystem] == Verdict::Possible;
}

bool RecordSelection::ask(const Catalog& catalog,
                          CatalogProcess& process,
                          std::uint16_t subsystem) const
{
    const Subsystem texts = catalog.subsystem(process, subsystem, m_texts);
    return m_filter->mayMatch(factsOf(&process, m_strings), texts.subsystem, texts.category);
}

} // namespace logstore
