// SPDX-License-Identifier: MIT
#include "mainwindow/entrypane.h"

#include "mainwindow/contentstate.h"
#include "mainwindow/entrylistview.h"
#include "mainwindow/searchfield.h"
#include "mainwindow/statusline.h"
#include "platform/desktop/symbols.h"

#include <QBoxLayout>
#include <QEvent>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

constexpr int searchFieldWidth = 280;

QLabel* centredLabel(const QString& objectName)
{
    auto* const label = new QLabel;
    label->setObjectName(objectName);
    label->setAlignment(Qt::AlignCenter);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

EntryPane::EntryPane(ContentState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_list(new EntryListView(m_model, state.theFontSize))
    , m_searchField(new SearchField)
    , m_searchSummary(new QLabel)
    , m_placeholderSymbol(centredLabel(u"placeholderSymbol"_s))
    , m_nothingFound(centredLabel(u"nothingFound"_s))
    , m_placeholder(placeholder())
    , m_statusLine(new StatusLine(state.logger()))
{
    m_list->setObjectName(u"entries"_s);
    m_list->setAccessibleName(tr("Log entries"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(header());
    layout->addWidget(m_list, 1);
    layout->addWidget(m_statusLine);
    followState();
    m_model.setFullMode(state.fullMode);
    m_model.show(state.shownEntries());
    showSearchState();
}

/// The strip over the list, with the search field at its right end.
QWidget* EntryPane::header()
{
    auto* const strip = new QWidget;
    auto* const layout = new QHBoxLayout(strip);
    layout->setContentsMargins(9, 0, 9, 6);
    m_searchSummary->setObjectName(u"searchSummary"_s);
    m_searchSummary->setTextFormat(Qt::PlainText);
    m_searchSummary->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layout->addWidget(m_searchSummary, 1);
    m_searchField->setFixedWidth(searchFieldWidth);
    layout->addWidget(m_searchField);
    return strip;
}

QWidget* EntryPane::placeholder()
{
    auto* const cover = new QWidget(m_list->viewport());
    cover->setObjectName(u"placeholder"_s);
    drawPlaceholderSymbol();
    auto* const title = centredLabel(u"placeholderTitle"_s);
    title->setText(tr("No entries found"));
    QFont font = title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.5);
    title->setFont(font);

    auto* const layout = new QVBoxLayout(cover);
    layout->addStretch();
    layout->addWidget(m_placeholderSymbol);
    layout->addWidget(title);
    layout->addWidget(m_nothingFound);
    layout->addStretch();

    auto* const overlay = new QVBoxLayout(m_list->viewport());
    overlay->setContentsMargins({});
    overlay->addWidget(cover);
    return cover;
}

/// In the colours of this moment.
void EntryPane::drawPlaceholderSymbol()
{
    constexpr QSize size(48, 48);
    m_placeholderSymbol->setPixmap(
        symbolIcon(u"magnifyingglass"_s).pixmap(size, devicePixelRatioF()));
}

void EntryPane::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        drawPlaceholderSymbol();
}

/// Where fewer than two rows would remain, the line gives way and its text stands over the list.
void EntryPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int rows = 2 * m_list->fontMetrics().height();
    const int others = m_searchField->height() + m_statusLine->minimumHeight();
    m_statusLine->setVisible(height() - others >= rows + 2 * m_list->frameWidth());
    showSearchState();
}

void EntryPane::followState()
{
    connect(&m_state, &ContentState::fullModeChanged, this,
            [this] { m_model.setFullMode(m_state.fullMode); });
    connect(&m_state, &ContentState::theFontSizeChanged, this,
            [this] { m_list->setPointSize(m_state.theFontSize); });
    connect(&m_state, &ContentState::shownEntriesAboutToChange, m_list,
            &EntryListView::rememberPlace);
    connect(&m_state, &ContentState::shownEntriesChanged, this, [this] {
        m_model.show(m_state.shownEntries());
        m_list->restorePlace(m_state.selection);
    });
    connect(&m_state, &ContentState::shownNotesChanged, &m_model, &LogEntryModel::entriesEdited);
    connect(m_list, &EntryListView::entriesSelected, this,
            [this](const QSet<QUuid>& ids) { m_state.selection = ids; });

    connect(m_searchField, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_state.searchQuery = text; });
    connect(m_searchField, &SearchField::submitted, this,
            [this] { m_state.runSearch(m_state.searchQuery); });
    connect(m_searchField, &SearchField::ended, &m_state, &ContentState::endSearch);
    connect(&m_state, &ContentState::searchQueryChanged, this, [this] {
        if (m_searchField->text() != m_state.searchQuery.value())
            m_searchField->setText(m_state.searchQuery);
    });
    for (const auto changed : {&ContentState::searchStateChanged, &ContentState::searchQueryChanged,
                               &ContentState::searchTypeIndexChanged})
        connect(&m_state, changed, this, &EntryPane::showSearchState);
    connect(&m_state.logger(), &Logger::sourceReportChanged, this, &EntryPane::showSearchState);
}

void EntryPane::showSearchState()
{
    m_placeholder->setVisible(m_state.foundNothing());
    m_nothingFound->setText(m_state.nothingFoundText());
    QString summary = m_statusLine->isHidden() ? m_state.logger().sourceReport().text() : QString();
    if (m_state.isSearching())
        summary = tr("%n found", nullptr, static_cast<int>(m_state.searchList().size()));
    m_searchSummary->setText(summary);
}
