// SPDX-License-Identifier: MIT
#include "platform/desktop/qtpanels.h"
#include "platform/desktop/statefile.h"
#include "support/testcase.h"

#include <QApplication>
#include <QDialogButtonBox>
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

class TestQtPanels : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The toolkit's own dialog: a desktop's cannot be looked into.
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }

    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_state = std::make_unique<StateFile>(path(u"state.ini"_s));
        m_state->setLastFolder(m_folder->path());
        m_panels = std::make_unique<QtPanels>(*m_state);
        m_results.clear();
        m_window = std::make_unique<QWidget>();
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        QCoreApplication::processEvents();
    }

    void savePanelProposesNameInLastFolder()
    {
        savePanel(u"Tessel2024_03_07_14-05-09.tessel"_s);
        QCOMPARE(dialog()->selectedFiles(),
                 QStringList{path(u"Tessel2024_03_07_14-05-09.tessel"_s)});
        QDir(m_folder->path()).mkdir(u"sub"_s);
        accept(u"sub/x.tessel"_s);
        QCOMPARE(m_results.size(), 1);
        QVERIFY(m_results.first().confirmed);
        QCOMPARE(m_results.first().location, QUrl::fromLocalFile(path(u"sub/x.tessel"_s)));
        QCOMPARE(m_state->lastFolder(), path(u"sub"_s));
    }

    void proposedNameIsOneFileName_data()
    {
        QTest::addColumn<QString>("proposed");
        QTest::addColumn<QString>("expected");
        QTest::addRow("slashes") << u"list - /var/db.tessel"_s << u"list - -var-db.tessel"_s;
        QTest::addRow("too long for a file system")
            << u"list - "_s + QString(300, u'ü') + u".tessel"_s
            << u"list - "_s + QString(116, u'ü') + u".tessel"_s;
    }

    void proposedNameIsOneFileName()
    {
        QFETCH(QString, proposed);
        QFETCH(QString, expected);
        savePanel(proposed);
        QCOMPARE(dialog()->selectedFiles(), QStringList{path(expected)});
    }

    void suffixIsAddedWhenLeftOut_data()
    {
        QTest::addColumn<ContentType>("type");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        QTest::addRow("list") << ContentType::EntryList << u"mine"_s << u"mine.tessel"_s;
        QTest::addRow("dots") << ContentType::EntryList << u"com.apple.kernel"_s
                              << u"com.apple.kernel.tessel"_s;
        QTest::addRow("capitals") << ContentType::EntryList << u"mine.TESSEL"_s << u"mine.TESSEL"_s;
        QTest::addRow("rich text")
            << ContentType::RichText << u"backup 2024.03.07"_s << u"backup 2024.03.07.rtf"_s;
        QTest::addRow("archive") << ContentType::LogArchive << u"mac.1"_s << u"mac.1.logarchive"_s;
        QTest::addRow("text") << ContentType::Text << u"mine"_s << u"mine.txt"_s;
        QTest::addRow("text of another kind")
            << ContentType::Text << u"mine.csv"_s << u"mine.csv"_s;
    }

    void suffixIsAddedWhenLeftOut()
    {
        QFETCH(ContentType, type);
        QFETCH(QString, typed);
        QFETCH(QString, expected);
        savePanel(u"proposed"_s, type);
        accept(typed);
        QCOMPARE(m_results.size(), 1);
        QCOMPARE(m_results.first().location, QUrl::fromLocalFile(path(expected)));
    }

    void replacingIsAskedFirst_data()
    {
        QTest::addColumn<ContentType>("type");
        QTest::addColumn<QString>("typed");
        QTest::addRow("as proposed") << ContentType::EntryList << u"a.tessel"_s;
        QTest::addRow("extension added") << ContentType::EntryList << u"a"_s;
        QTest::addRow("archive") << ContentType::LogArchive << u"mac.logarchive"_s;
        QTest::addRow("archive, extension added") << ContentType::LogArchive << u"mac"_s;
    }

    void replacingIsAskedFirst()
    {
        QFETCH(ContentType, type);
        QFETCH(QString, typed);
        touch(u"a.tessel"_s);
        QVERIFY(QDir(m_folder->path()).mkpath(u"mac.logarchive/Persist"_s));
        savePanel(u"proposed"_s, type);
        QVERIFY(!askedOnAccepting(typed, QMessageBox::No).isEmpty());
        QVERIFY(m_results.isEmpty());
        QVERIFY(dialog()->isVisible());
        QCOMPARE(dialog()->directory().absolutePath(), m_folder->path());
        QVERIFY(!askedOnAccepting(typed, QMessageBox::Yes).isEmpty());
        QCOMPARE(m_results.size(), 1);
        QVERIFY(m_results.first().location.has_value());
    }

    void existingArchiveCanBeSaved()
    {
        QVERIFY(QDir(m_folder->path()).mkpath(u"mac.logarchive/Persist"_s));
        savePanel(u"mac.logarchive"_s, ContentType::LogArchive);
        auto* const button =
            dialog()->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save);
        QTRY_COMPARE(button->text().remove(u'&'), u"Save"_s);
        QVERIFY(button->isEnabled());
    }

    void foldersAreEntered()
    {
        QDir(m_folder->path()).mkdir(u"sub"_s);
        savePanel(u"a.tessel"_s);
        accept(u"sub"_s);
        QVERIFY(m_results.isEmpty());
        QCOMPARE(dialog()->directory().absolutePath(), path(u"sub"_s));
    }

    void openPanelStartsWhereAsked_data()
    {
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("start");
        QTest::addRow("there") << u"sub"_s << u"sub"_s;
        QTest::addRow("absent") << u"missing"_s << QString();
        QTest::addRow("not asked") << QString() << QString();
    }

    void openPanelStartsWhereAsked()
    {
        QFETCH(QString, asked);
        QFETCH(QString, start);
        QDir(m_folder->path()).mkdir(u"sub"_s);
        m_panels->open({ContentType::Folder, {}, asked.isEmpty() ? QString() : path(asked)},
                       [](const PanelResult&) {});
        QCOMPARE(dialog()->directory().absolutePath(), QDir::cleanPath(path(start)));
    }

    void openPanelYieldsTheFile()
    {
        touch(u"a.tessel"_s);
        openPanel();
        accept(u"a.tessel"_s);
        QCOMPARE(m_results.size(), 1);
        QCOMPARE(m_results.first().location, QUrl::fromLocalFile(path(u"a.tessel"_s)));
        QCOMPARE(m_state->recentFiles(), QStringList{path(u"a.tessel"_s)});
    }

    void cancelledPanelSaysSo()
    {
        openPanel();
        dialog()->reject();
        QCOMPARE(m_results.size(), 1);
        QVERIFY(!m_results.first().confirmed);
        QVERIFY(!m_results.first().location);
    }

    void closedWindowCompletesOnce()
    {
        openPanel();
        m_window.reset();
        QTRY_COMPARE(m_results.size(), 1);
        QVERIFY(!m_results.first().confirmed);
        QCoreApplication::processEvents();
        QCOMPARE(m_results.size(), 1);
    }

    void confirmTextIsOnTheButton()
    {
        m_panels->open({ContentType::LogArchive, u"Open Logarchive"_s, {}},
                       [](const PanelResult&) {});
        QStringList texts;
        for (const QPushButton* button : dialog()->findChildren<QPushButton*>())
            texts.append(button->text().remove(u'&'));
        QVERIFY2(texts.contains(u"Open Logarchive"_s), qPrintable(texts.join(u',')));
    }

private:
    QFileDialog* dialog() const { return m_window->findChild<QFileDialog*>(); }

    void openPanel()
    {
        m_panels->open({ContentType::EntryList, u"Open"_s, {}},
                       [this](const PanelResult& result) { m_results.append(result); });
        QVERIFY(dialog() != nullptr);
        QVERIFY(m_results.isEmpty());
    }

    void savePanel(const QString& name, ContentType type = ContentType::EntryList)
    {
        m_panels->save({type, name},
                       [this](const PanelResult& result) { m_results.append(result); });
        QVERIFY(dialog() != nullptr);
        QVERIFY(m_results.isEmpty());
    }

    void accept(const QString& typed)
    {
        dialog()->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(typed);
        static_cast<QDialog*>(dialog())->accept();
    }

    /// Accepts, and answers the question that follows. Gives the question, which may not come.

    QString askedOnAccepting(const QString& typed, QMessageBox::StandardButton answer)
    {
        QString asked;
        QTimer::singleShot(0, this, [&asked, answer] {
            if (auto* const question =
                    qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                asked = question->text();
                question->button(answer)->click();
            }
        });
        accept(typed);
        return asked;
    }

    QString path(const QString& name) const { return QDir(m_folder->path()).filePath(name); }

    void touch(const QString& name) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QFile::WriteOnly));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<StateFile> m_state;
    std::unique_ptr<QtPanels> m_panels;
    std::unique_ptr<QWidget> m_window;
    QList<PanelResult> m_results;
};

TESSEL_TEST(TestQtPanels)
#include "tst_qtpanels.moc"
