// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/contentview.h"
#include "mainwindow/entrylistview.h"
#include "support/fakeplatform.h"

#include <QLineEdit>
#include <QTest>

#include <memory>

/// A main window over a fake platform, and hands to type at it and click on it.
class WindowFixture
{
protected:
    void openWindow();
    void closeWindow();
    /// Makes a written store the local one, the last of its entries a moment ago.
    void useDemonstration();

    template <typename Widget>
    Widget* find(const QString& name) const
    {
        auto* const widget = m_window->findChild<Widget*>(name);
        if (widget == nullptr)
            qFatal("no widget named %s", qPrintable(name));
        return widget;
    }
    EntryListView& list() const { return *find<EntryListView>(QStringLiteral("entries")); }
    /// The line of a row as assistive tools read it.
    QString line(int row) const;
    int rowCount() const { return list().model()->rowCount(); }

    void clickTool(const QString& identifier) const;
    void clickRow(int row) const;
    void type(const QString& field, const QString& text) const;
    void press(const QString& field, Qt::Key key) const
    {
        QTest::keyClick(find<QWidget>(field), key);
    }

    std::unique_ptr<FakePlatform> m_fake = std::make_unique<FakePlatform>();
    std::unique_ptr<ContentView> m_window;
    QStringList m_openedWindows;
};
