// SPDX-License-Identifier: MIT
#include "app/toolbardialog.h"

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace {

constexpr int identifierRole = Qt::UserRole;

} // namespace

ToolBarDialog::ToolBarDialog(const QHash<QString, QAction*>& items,
                             const ToolBarArrangement& arrangement,
                             ToolBarArrangement original,
                             QWidget* parent)
    : QDialog(parent)
    , m_items(items)
    , m_original(std::move(original))
    , m_list(new QListWidget)
    , m_style(new QComboBox)
    , m_up(addButton(u"moveUp"_s, tr("Move &Up"), &ToolBarDialog::moveUp))
    , m_down(addButton(u"moveDown"_s, tr("Move &Down"), &ToolBarDialog::moveDown))
{
    setObjectName(u"toolbarDialog"_s);
    setWindowTitle(tr("Customise Toolbar"));
    m_list->setObjectName(u"toolbarItems"_s);
    m_list->setAccessibleName(tr("Toolbar items"));
    m_list->setDragDropMode(QAbstractItemView::InternalMove);
    m_style->setObjectName(u"toolbarStyle"_s);
    m_style->addItem(tr("Icons and Text"), Qt::ToolButtonTextUnderIcon);
    m_style->addItem(tr("Icons Only"), Qt::ToolButtonIconOnly);
    m_style->addItem(tr("Text Only"), Qt::ToolButtonTextOnly);
    m_style->setAccessibleName(tr("Show"));
    layOut();
    showArrangement(arrangement);

    connect(m_list, &QListWidget::itemChanged, this, &ToolBarDialog::tell);
    connect(m_list->model(), &QAbstractItemModel::rowsMoved, this, &ToolBarDialog::tell);
    connect(m_list, &QListWidget::currentRowChanged, this, &ToolBarDialog::followCurrent);
    connect(m_style, &QComboBox::currentIndexChanged, this, &ToolBarDialog::tell);
}

QPushButton*
ToolBarDialog::addButton(const QString& name, const QString& text, void (ToolBarDialog::*run)())
{
    auto* const button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, run);
    return button;
}

void ToolBarDialog::layOut()
{
    auto* const side = new QVBoxLayout;
    side->addWidget(m_up);
    side->addWidget(m_down);
    side->addStretch();
    side->addWidget(
        addButton(u"restoreToolbar"_s, tr("&Restore"), &ToolBarDialog::restoreOriginal));
    auto* const middle = new QHBoxLayout;
    middle->addWidget(m_list, 1);
    middle->addLayout(side);

    auto* const styleLabel = new QLabel(tr("&Show:"));
    styleLabel->setBuddy(m_style);
    auto* const foot = new QHBoxLayout;
    foot->addWidget(styleLabel);
    foot->addWidget(m_style);
    foot->addStretch();
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setObjectName(u"close"_s);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    foot->addWidget(buttons);

    auto* const column = new QVBoxLayout(this);
    column->addLayout(middle);
    column->addLayout(foot);
}

void ToolBarDialog::showArrangement(const ToolBarArrangement& arrangement)
{
    const QSignalBlocker quietList(m_list);
    const QSignalBlocker quietStyle(m_style);
    m_list->clear();
    for (const auto& [identifier, shown] : arrangement.items) {
        const QAction* const action = m_items.value(identifier);
        auto* const item = new QListWidgetItem(action->icon(), itemName(*action), m_list);
        item->setData(identifierRole, identifier);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled
                       | Qt::ItemIsUserCheckable);
        item->setCheckState(shown ? Qt::Checked : Qt::Unchecked);
    }
    m_list->setMinimumHeight(m_list->sizeHintForRow(0) * m_list->count()
                             + 2 * m_list->frameWidth());
    m_list->setCurrentRow(0);
    m_style->setCurrentIndex(m_style->findData(arrangement.style));
    followCurrent();
}

ToolBarArrangement ToolBarDialog::shownArrangement() const
{
    ToolBarArrangement arrangement;
    arrangement.style = m_style->currentData().value<Qt::ToolButtonStyle>();
    for (int row = 0; row < m_list->count(); ++row) {
        const QListWidgetItem& item = *m_list->item(row);
        arrangement.items.append(
            {item.data(identifierRole).toString(), item.checkState() == Qt::Checked});
    }
    return arrangement;
}

void ToolBarDialog::tell()
{
    followCurrent();
    Q_EMIT arranged(shownArrangement());
}

void ToolBarDialog::moveCurrent(int rows)
{
    const int row = m_list->currentRow();
    {
        const QSignalBlocker quiet(m_list);
        m_list->insertItem(row + rows, m_list->takeItem(row));
        m_list->setCurrentRow(row + rows);
    }
    tell();
}

void ToolBarDialog::restoreOriginal()
{
    showArrangement(m_original);
    tell();
}

void ToolBarDialog::followCurrent()
{
    const int row = m_list->currentRow();
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_list->count());
}
