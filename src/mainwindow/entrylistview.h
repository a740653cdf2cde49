// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QTreeView>
#include <QUuid>

#include <utility>

class LogEntryModel;
class MessageRowDelegate;
class RowSelection;

/// The list of entries. The selection is a set of entry identities, so that it outlives a search.
/// The list scrolls sideways to the end of the longest row that was in view.
class EntryListView final : public QTreeView
{
    Q_OBJECT

public:
    /// `pointSize` is the size of the rows' type.
    EntryListView(LogEntryModel& model, qreal pointSize, QWidget* parent = nullptr);

    void setPointSize(qreal size);

    /// Remembers which entries are in view. To be called before a search begins or ends.
    void rememberPlace();
    /// Selects the rows of these entries and scrolls to an entry that was in view before. To be
    /// called after the model's rows have changed.
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
    /// An entry in view and its distance from the list's top edge.
    struct Anchor
    {
        QUuid id;
        int offset;
    };

    void followSelection(const QBitArray& toggled);
    void selectEntries(const QSet<QUuid>& ids);
    /// The row of the first anchor that is still shown, or -1, and its former distance.
    std::pair<int, int> placeOfBestAnchor() const;
    void updateType();
    void seeWidths(const QRect& painted);
    void applyWidth();

    LogEntryModel& m_model;
    qreal m_pointSize;
    MessageRowDelegate* m_delegate;
    int m_widestSeen = 0;
    RowSelection* m_selection;
    QSet<QUuid> m_selectedIds; ///< of the rows that are selected
    QList<Anchor> m_anchors;   ///< best first
};
