// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/messagerow.h"

#include <QAbstractListModel>

/// The shown entries as a list of rows. The model refers to the list it shows and never copies it:
/// a copy would make the next change of a million entries duplicate them all.
class LogEntryModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// Shows a list, which must live as long as it is shown. To be called again after each change
    /// of its rows, before anything else looks at the model.
    void show(const QList<LogEntry>& entries);
    /// To be called after a change inside entries that left the rows as they are.
    void entriesEdited();

    void setFullMode(bool fullMode);

    const LogEntry& entry(int row) const { return m_entries->at(row); }
    MessageRow messageRow(int row) const { return {entry(row), m_fullMode}; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const QList<LogEntry>* m_entries = nullptr;
    int m_rows = 0;
    bool m_fullMode = false;
};
