// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/messagerow.h"

#include <QAbstractListModel>

/// The shown entries as a list of rows. The model refers to the list and does not copy it: while a
/// copy exists, the next change of a list duplicates all of its entries.
class LogEntryModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// Shows a list, which must outlive the model or the next call. To be called again after each
    /// change of the list's rows, before the model is used.
    void show(const QList<LogEntry>& entries);
    /// To be called after a change inside entries that keeps the rows.
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
