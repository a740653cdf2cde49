// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/logentrymodel.h"

#include <QWidget>

class ContentState;
class EntryListView;
class QLabel;
class SearchField;
class StatusLine;

/// The list of entries with its search field, and the placeholder of a search without results.
class EntryPane final : public QWidget
{
    Q_OBJECT

public:
    explicit EntryPane(ContentState& state, QWidget* parent = nullptr);

    EntryListView& list() const { return *m_list; }
    SearchField& searchField() const { return *m_searchField; }

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* header();
    QWidget* placeholder();
    void drawPlaceholderSymbol();
    void followState();
    void showSearchState();

    ContentState& m_state;
    LogEntryModel m_model;
    EntryListView* m_list;
    SearchField* m_searchField;
    QLabel* m_searchSummary;
    QLabel* m_placeholderSymbol;
    QLabel* m_nothingFound;
    QWidget* m_placeholder;
    StatusLine* m_statusLine;
};
