// SPDX-License-Identifier: MIT
#include "windowfixture.h"

#include "platform/demonstrationstore.h"
#include "platform/logstore/entryfilter.h"

#include <QToolBar>

using namespace Qt::StringLiterals;

void WindowFixture::openWindow()
{
    m_window = std::make_unique<ContentView>(
        m_fake->platform, [this](const QString& id) { m_openedWindows.append(id); },
        [](const PredicateFormat&) -> Result<std::shared_ptr<const logstore::EntryFilter>> {
            return nullptr;
        });
    m_window->show();
    if (!QTest::qWaitForWindowActive(m_window.get()))
        qFatal("the window did not become active");
}

void WindowFixture::closeWindow()
{
    m_window.reset();
    m_openedWindows.clear();
    m_fake = std::make_unique<FakePlatform>();
}

void WindowFixture::useDemonstration()
{
    const QString root = m_fake->folder.filePath(u"store"_s);
    const qint64 now = m_fake->clock.currentTime.toMSecsSinceEpoch() * 1'000'000;
    if (!DemonstrationStore(root.toStdString()).writeUntil(now))
        qFatal("no store was written");
    m_fake->logStores.localPath = root;
}

QString WindowFixture::line(int row) const
{
    return list().model()->index(row, 0).data(Qt::AccessibleTextRole).toString();
}

void WindowFixture::clickTool(const QString& identifier) const
{
    const auto* const bar = find<QToolBar>(u"ContentView.toolbar"_s);
    for (QAction* action : bar->actions()) {
        if (action->objectName() == identifier)
            return QTest::mouseClick(bar->widgetForAction(action), Qt::LeftButton);
    }
    qFatal("no command %s", qPrintable(identifier));
}

void WindowFixture::clickRow(int row) const
{
    const QRect rect = list().visualRect(list().model()->index(row, 0));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, QPoint(20, rect.center().y()));
}

void WindowFixture::type(const QString& field, const QString& text) const
{
    auto* const edit = find<QLineEdit>(field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}
