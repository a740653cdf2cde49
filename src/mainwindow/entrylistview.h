// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QTreeView>
#include <QUuid>

#include <utility>

class LogEntryModel;
class MessageRowDelegate;
class RowSelection;

/// The list of entries. Selects by the identity of entries, so that a selection outlives a search,
/// and scrolls sideways as far as the longest row seen.
class EntryListView final : public QTreeView
{
    Q_OBJECT

public:
    explicit EntryListView(LogEntryModel& model, QWidget* parent = nullptr);

    /// The size of the rows' type.
    void setPointSize(qreal size);

    /// Notes which entries are in view. Called before the shown entries change for others of the
    /// same list.
    void rememberPlace();
    /// To be called when the model shows other rows: selects what is there of the selection, and
    /// brings back into view what was there and still is.
    void restorePlace(const QSet<QUuid>& selection);

    const RowSelection& selection() const { return *m_selection; }

    void keyboardSearch(const QString& search) override;

Q_SIGNALS:
    /// The user has changed the selection; it is now these entries.
    void entriesSelected(const QSet<QUuid>& ids);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    /// An entry in view and how far below the list's top edge it stands.
    struct Anchor
    {
        QUuid id;
        int offset;
    };

    void followSelection(const QBitArray& toggled);
    void selectEntries(const QSet<QUuid>& ids);
    /// The row of the first anchor that is still shown, or -1, and where it stood.
    std::pair<int, int> placeOfBestAnchor() const;
    void updateType();
    void seeWidths(const QRect& painted);
    void applyWidth();

    LogEntryModel& m_model;
    qreal m_pointSize = 12;
    MessageRowDelegate* m_delegate;
    int m_widestSeen = 0;
    RowSelection* m_selection;
    QSet<QUuid> m_selectedIds; ///< of the rows that are selected
    QList<Anchor> m_anchors;   ///< best first
};
