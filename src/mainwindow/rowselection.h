// SPDX-License-Identifier: MIT
#pragma once

#include <QBitArray>
#include <QItemSelectionModel>

/// The selected rows of a flat list, one bit each. The base class compares ranges in pairs at each
/// change, which takes half a minute if every second of a million rows is selected. Therefore it is
/// given only the rows in view; a view asks for no others.
class RowSelection final : public QItemSelectionModel
{
    Q_OBJECT

public:
    explicit RowSelection(QAbstractItemModel* model, QObject* parent = nullptr);

    const QBitArray& rows() const { return m_rows; }
    /// Selects these rows and no others, without rowsToggled. One bit for each row of the model.
    void setRows(const QBitArray& rows);
    /// Gives the base class the rows from `first` to `last`.
    void setRowsInView(int first, int last);

    using QItemSelectionModel::select;
    void select(const QItemSelection& selection, SelectionFlags command) override;
    void reset() override;

Q_SIGNALS:
    /// The rows of the set bits were selected or deselected: see rows().
    void rowsToggled(const QBitArray& toggled);

private:
    void passOnRowsInView();

    QBitArray m_rows;
    QBitArray m_before; ///< what a command with the flag Current is applied to
    int m_first = 0;    ///< in view
    int m_last = -1;
};

/// Calls `visit(int)` with the position of each set bit, in order.
template <typename Visit>
void forEachSetBit(const QBitArray& bits, Visit visit)
{
    constexpr qsizetype bitsPerByte = 8;
    for (qsizetype byte = 0; byte * bitsPerByte < bits.size(); ++byte) {
        if (bits.bits()[byte] == 0)
            continue;
        const qsizetype end = qMin((byte + 1) * bitsPerByte, bits.size());
        for (qsizetype bit = byte * bitsPerByte; bit < end; ++bit) {
            if (bits.testBit(bit))
                visit(static_cast<int>(bit));
        }
    }
}
