// SPDX-License-Identifier: MIT
#include "platform/desktop/qtpanels.h"
#include "platform/desktop/statefile.h"
#include "support/warnings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

class TestQtPanels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void savePanelProposesNameInLastFolder();
    void proposedNameIsOneFileName_data();
    void proposedNameIsOneFileName();
    void suffixIsAddedWhenLeftOut();
    void replacingIsAskedFirst_data();
    void replacingIsAskedFirst();
    void openPanelYieldsTheFile();
    void cancelledPanelSaysSo();
    void closedWindowCompletesOnce();
    void confirmTextIsOnTheButton();

private:
    QFileDialog* dialog() const;
    void openPanel();
    void savePanel(const QString& name);
    QString path(const QString& name) const { return QDir(m_folder->path()).filePath(name); }
    void touch(const QString& name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<StateFile> m_state;
    std::unique_ptr<QtPanels> m_panels;
    std::unique_ptr<QWidget> m_window;
    QList<PanelResult> m_results;
};

void TestQtPanels::initTestCase()
{
    // The toolkit's own dialog: a desktop's cannot be looked into.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void TestQtPanels::init()
{
    failOnWarnings();
    m_folder = std::make_unique<QTemporaryDir>();
    m_state = std::make_unique<StateFile>(path(u"state.ini"_s));
    m_state->setLastFolder(m_folder->path());
    m_panels = std::make_unique<QtPanels>(*m_state);
    m_results.clear();
    m_window = std::make_unique<QWidget>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestQtPanels::cleanup()
{
    m_window.reset();
    QCoreApplication::processEvents();
}

QFileDialog* TestQtPanels::dialog() const
{
    return m_window->findChild<QFileDialog*>();
}

void TestQtPanels::openPanel()
{
    m_panels->open({ContentType::EntryList, u"Open"_s, {}},
                   [this](const PanelResult& result) { m_results.append(result); });
    QVERIFY(dialog() != nullptr);
    QVERIFY(m_results.isEmpty());
}

void TestQtPanels::savePanel(const QString& name)
{
    m_panels->save({ContentType::EntryList, name},
                   [this](const PanelResult& result) { m_results.append(result); });
    QVERIFY(dialog() != nullptr);
    QVERIFY(m_results.isEmpty());
}

void TestQtPanels::touch(const QString& name) const
{
    QFile file(path(name));
    QVERIFY(file.open(QFile::WriteOnly));
}

void TestQtPanels::savePanelProposesNameInLastFolder()
{
    savePanel(u"Tessel2024_03_07_14-05-09.tessel"_s);
    QCOMPARE(dialog()->selectedFiles(), QStringList{path(u"Tessel2024_03_07_14-05-09.tessel"_s)});
    QDir(m_folder->path()).mkdir(u"sub"_s);
    auto* const typed = dialog()->findChild<QLineEdit*>(u"fileNameEdit"_s);
    QVERIFY(typed != nullptr);
    typed->setText(u"sub/x.tessel"_s);
    static_cast<QDialog*>(dialog())->accept();
    QCOMPARE(m_results.size(), 1);
    QVERIFY(m_results.first().confirmed);
    QCOMPARE(m_results.first().location, QUrl::fromLocalFile(path(u"sub/x.tessel"_s)));
    QCOMPARE(m_state->lastFolder(), path(u"sub"_s));
}

void TestQtPanels::proposedNameIsOneFileName_data()
{
    QTest::addColumn<QString>("proposed");
    QTest::addColumn<QString>("expected");
    QTest::addRow("slashes") << u"list - /var/db.tessel"_s << u"list - -var-db.tessel"_s;
    QTest::addRow("too long for a file system") << u"list - "_s + QString(300, u'ü') + u".tessel"_s
                                                << u"list - "_s + QString(116, u'ü') + u".tessel"_s;
}

void TestQtPanels::proposedNameIsOneFileName()
{
    QFETCH(QString, proposed);
    QFETCH(QString, expected);
    savePanel(proposed);
    QCOMPARE(dialog()->selectedFiles(), QStringList{path(expected)});
}

void TestQtPanels::suffixIsAddedWhenLeftOut()
{
    savePanel(u"a.tessel"_s);
    dialog()->findChild<QLineEdit*>()->setText(u"mine"_s);
    static_cast<QDialog*>(dialog())->accept();
    QCOMPARE(m_results.first().location, QUrl::fromLocalFile(path(u"mine.tessel"_s)));
}

void TestQtPanels::replacingIsAskedFirst_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addRow("as proposed") << u"a.tessel"_s;
    QTest::addRow("extension added") << u"a"_s;
}

void TestQtPanels::replacingIsAskedFirst()
{
    QFETCH(QString, typed);
    touch(u"a.tessel"_s);
    savePanel(u"a.tessel"_s);
    dialog()->findChild<QLineEdit*>()->setText(typed);
    bool wasAsked = false;
    QTimer::singleShot(0, this, [&wasAsked] {
        auto* const question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(question != nullptr);
        wasAsked = true;
        question->button(QMessageBox::No)->click();
    });
    static_cast<QDialog*>(dialog())->accept();
    QVERIFY(wasAsked);
    QVERIFY(m_results.isEmpty());
    QVERIFY(dialog()->isVisible());
}

void TestQtPanels::openPanelYieldsTheFile()
{
    touch(u"a.tessel"_s);
    openPanel();
    dialog()->findChild<QLineEdit*>()->setText(u"a.tessel"_s);
    static_cast<QDialog*>(dialog())->accept();
    QCOMPARE(m_results.size(), 1);
    QCOMPARE(m_results.first().location, QUrl::fromLocalFile(path(u"a.tessel"_s)));
    QCOMPARE(m_state->recentFiles(), QStringList{path(u"a.tessel"_s)});
}

void TestQtPanels::cancelledPanelSaysSo()
{
    openPanel();
    dialog()->reject();
    QCOMPARE(m_results.size(), 1);
    QVERIFY(!m_results.first().confirmed);
    QVERIFY(!m_results.first().location);
}

void TestQtPanels::closedWindowCompletesOnce()
{
    openPanel();
    m_window.reset();
    QTRY_COMPARE(m_results.size(), 1);
    QVERIFY(!m_results.first().confirmed);
    QCoreApplication::processEvents();
    QCOMPARE(m_results.size(), 1);
}

void TestQtPanels::confirmTextIsOnTheButton()
{
    m_panels->open({ContentType::LogArchive, u"Open Logarchive"_s, {}}, [](const PanelResult&) {});
    QStringList texts;
    for (const QPushButton* button : dialog()->findChildren<QPushButton*>())
        texts.append(button->text().remove(u'&'));
    QVERIFY2(texts.contains(u"Open Logarchive"_s), qPrintable(texts.join(u',')));
}

QTEST_MAIN(TestQtPanels)
#include "tst_qtpanels.moc"
