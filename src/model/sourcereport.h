// SPDX-License-Identifier: MIT
#pragma once

#include "platform/oslogstore.h"

#include <QList>

/// What the last fetch, or the choice of an archive, could not read, and why.
class SourceReport
{
public:
    /// A file, folder or image, and the reason.
    struct Item
    {
        QString name;
        QString reason;
    };

    /// Nothing to tell.
    SourceReport() = default;
    /// The store could not be opened; the sentence says why.
    explicit SourceReport(const Failure& why);
    /// `filter` may be null.
    explicit SourceReport(const OSLogStore& store, const logstore::EntryFilter* filter = nullptr);

    /// One line of sentences; empty when all was read.
    QString text() const { return m_text; }
    /// What the sentences count, item by item; a long list is cut.
    const QList<Item>& items() const { return m_items; }

private:
    QString m_text;
    QList<Item> m_items;
};
