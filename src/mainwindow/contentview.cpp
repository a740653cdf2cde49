// SPDX-License-Identifier: MIT
#include "mainwindow/contentview.h"

#include "mainwindow/controlrows.h"
#include "mainwindow/entrylistview.h"
#include "mainwindow/entrypane.h"
#include "mainwindow/searchfield.h"
#include "platform/desktop/symbols.h"
#include "platform/desktop/workpanel.h"

#include <QAbstractSpinBox>
#include <QActionGroup>
#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QMimeData>
#include <QTimer>
#include <QToolBar>
#include <QWidgetAction>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize smallestSize(1150, 200);
constexpr QSize firstSize(1280, 760);
constexpr int searchPickerWidth = 120;
const QString searchLabel = u"🔍"_s;

/// The path of the dragged file, if it is a single one that a command can open; else empty.
QString droppedPath(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return {};
    const QString path = urls.first().toLocalFile();
    return ContentState::isDocument(path) ? path : QString();
}

/// Accepts the drag if a command can open the file. As a copy: the source of a move may delete its
/// file.
bool acceptCopy(QDropEvent& event)
{
    if (droppedPath(*event.mimeData()).isEmpty() || !(event.possibleActions() & Qt::CopyAction))
        return false;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    return true;
}

/// The picker of the search field.
QWidget* searchPicker(ContentState& state)
{
    auto* const picker = new QComboBox;
    picker->setObjectName(u"searchType"_s);
    picker->setAccessibleName(ContentView::tr("Search field"));
    picker->setToolTip(ContentView::tr("Set search field"));
    picker->setFixedWidth(searchPickerWidth);
    picker->addItems(ContentState::searchTypes());
    QObject::connect(picker, &QComboBox::currentIndexChanged, &state,
                     [&state](int index) { state.searchTypeIndex = index; });
    QObject::connect(&state, &ContentState::searchTypeIndexChanged, picker,
                     [picker, &state] { picker->setCurrentIndex(state.searchTypeIndex); });

    auto* const label = new QLabel(searchLabel);
    label->setBuddy(picker);
    label->setAlignment(Qt::AlignCenter);
    auto* const item = new QWidget;
    auto* const layout = new QVBoxLayout(item);
    layout->setContentsMargins(6, 0, 6, 0);
    layout->setSpacing(2);
    layout->addWidget(picker);
    layout->addWidget(label);
    return item;
}

} // namespace

ContentView::ContentView(const Platform& platform,
                         OpenWindow openWindow,
                         PredicateBuilder buildPredicate,
                         QWidget* parent)
    : QMainWindow(parent)
    , m_state(platform, std::move(openWindow), std::move(buildPredicate))
    , m_pane(new EntryPane(m_state))
    , m_commands(*this, m_state)
    , m_menus{menuBar()->addMenu(tr("&File")), menuBar()->addMenu(tr("&Edit")),
              menuBar()->addMenu(tr("&View"))}
{
    setMinimumSize(smallestSize);
    resize(firstSize);
    setAcceptDrops(true);
    addToolBar();
    addMenus();

    auto* const content = new QWidget;
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(new ControlRows(m_state));
    layout->addWidget(m_pane, 1);
    setCentralWidget(content);

    // The toolkit shows "[*]" as a mark of unsaved changes unless it stands twice.
    const auto showTitle = [this] {
        setWindowTitle(m_state.windowTitle().replace("[*]"_L1, "[*][*]"_L1));
    };
    connect(&m_state, &ContentState::windowTitleChanged, this, showTitle);
    showTitle();
    watchFetches();
}

ContentView::~ContentView()
{
    // An open panel keeps the logger alive. The widgets use the state until they are deleted.
    m_state.logger().setFetchObserver({});
    delete takeCentralWidget();
}

void ContentView::addToolBar()
{
    QToolBar* const bar = QMainWindow::addToolBar(tr("Toolbar"));
    bar->setObjectName(u"ContentView.toolbar"_s);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->setMovable(false);
    bar->addActions({m_commands.getLog, m_commands.setArchive, m_commands.readJSON,
                     m_commands.addNote, m_commands.gloss, m_commands.reduce, m_commands.saveJSON,
                     m_commands.saveRTF});
    auto* const search = new QWidgetAction(bar);
    search->setObjectName(u"setsearch"_s);
    search->setText(tr("Search Field"));
    search->setIconText(searchLabel);
    search->setIcon(symbolIcon(u"magnifyingglass"_s));
    search->setToolTip(tr("Set search field"));
    search->setDefaultWidget(searchPicker(m_state));
    bar->addAction(search);
}

void ContentView::addMenus()
{
    m_menus.file->addActions({m_commands.getLog, m_commands.setArchive});
    m_menus.file->addSeparator();
    m_menus.file->addActions({m_commands.readJSON, m_commands.saveJSON, m_commands.saveRTF});

    m_menus.edit->addActions({m_commands.copy, m_commands.selectAll});
    m_menus.edit->addSeparator();
    m_menus.edit->addAction(m_commands.find);
    QMenu* const fields = m_menus.edit->addMenu(tr("&Search Field"));
    fields->addActions(m_commands.searchFields->actions());
    m_menus.edit->addAction(m_commands.reduce);
    m_menus.edit->addSeparator();
    m_menus.edit->addActions({m_commands.addNote, m_commands.gloss, m_commands.setPredicate});

    m_menus.view->addActions({m_commands.fullFields, m_commands.showSignposts});
    m_menus.view->addSeparator();
    m_menus.view->addActions(
        {m_commands.largerText, m_commands.smallerText, m_commands.normalText});

    EntryListView& list = m_pane->list();
    list.setContextMenuPolicy(Qt::ActionsContextMenu);
    list.addActions({m_commands.copy, m_commands.selectAll, m_commands.addNote, m_commands.gloss,
                     m_commands.reduce});
}

void ContentView::watchFetches()
{
    connect(&m_state, &ContentState::fetchBegins, this, [this] {
        m_fetchPanel =
            std::make_unique<WorkPanel>(this, tr("Reading the log"), WorkPanel::Cancel::Button);
    });
    connect(&m_state, &ContentState::fetchEnds, this, &ContentView::endFetch);
    m_state.logger().setFetchObserver([this](const FetchProgress& progress) {
        const QLocale locale;
        const QString text = progress.isOpening ? tr("Looking through the log files")
                                                : tr("%1 entries found\n%2 entries read")
                                                      .arg(locale.toString(progress.fetched),
                                                           locale.toString(progress.entriesRead));
        return m_fetchPanel->update(text, progress.fraction) && !m_isClosedInFetch;
    });
}

void ContentView::endFetch()
{
    m_fetchPanel.reset();
    m_isClosedInFetch = false;
    if (m_deletesAfterFetch)
        deleteLater();
}

/// Closing cancels a running fetch. The fetch is further down the call stack, so the window is
/// hidden now and deleted after the fetch.
void ContentView::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    if (!m_state.isFetching())
        return;
    m_isClosedInFetch = true;
    m_deletesAfterFetch = testAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_DeleteOnClose, false);
}

/// The text field with the focus, also one inside an editor.
QLineEdit* ContentView::focusField() const
{
    if (const auto* const editor = qobject_cast<QAbstractSpinBox*>(focusWidget()))
        return editor->findChild<QLineEdit*>();
    return qobject_cast<QLineEdit*>(focusWidget());
}

void ContentView::copy()
{
    if (const QLineEdit* const field = focusField())
        return field->copy();
    const QString lines = m_state.copyText();
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines);
}

void ContentView::selectAll()
{
    if (QLineEdit* const field = focusField())
        return field->selectAll();
    m_pane->list().selectAll();
}

void ContentView::find()
{
    m_pane->searchField().setFocus(Qt::ShortcutFocusReason);
    m_pane->searchField().selectAll();
}

void ContentView::dragEnterEvent(QDragEnterEvent* event)
{
    acceptCopy(*event);
}

void ContentView::dropEvent(QDropEvent* event)
{
    if (!acceptCopy(*event))
        return;
    const QString path = droppedPath(*event->mimeData());
    // Later, so that an alert does not hold up the program that the drag came from.
    QTimer::singleShot(0, this, [this, path] { m_state.openDocument(path); });
}
