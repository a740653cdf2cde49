// SPDX-License-Identifier: MIT
#include "platform/desktop/archivedialog.h"
#include "platform/desktop/archiveitems.h"
#include "support/testcase.h"

#include <QDir>
#include <QFile>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestArchiveDialog : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        const QDir folder(m_folder->path());
        QVERIFY(folder.mkpath(u"mac.logarchive/Persist"_s));
        QVERIFY(folder.mkdir(u"plain"_s));
        m_dialog = std::make_unique<ArchiveDialog>();
        m_dialog->setDirectory(m_folder->path());
        m_dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
    }

    void cleanup() { m_dialog.reset(); }

    void archivesAreFoldersWithTheName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isArchive");
        QTest::addRow("archive") << u"mac.logarchive"_s << true;
        QTest::addRow("capitals") << u"MAC.LogArchive"_s << true;
        QTest::addRow("with a slash") << u"mac.logarchive/"_s << true;
        QTest::addRow("inside of an archive") << u"mac.logarchive/Persist"_s << false;
        QTest::addRow("plain folder") << u"plain"_s << false;
        QTest::addRow("file of the name") << u"file.logarchive"_s << false;
        QTest::addRow("absent") << u"none.logarchive"_s << false;
    }

    void archivesAreFoldersWithTheName()
    {
        QFETCH(QString, name);
        QFETCH(bool, isArchive);
        QVERIFY(QDir(m_folder->path()).mkpath(u"MAC.LogArchive"_s));
        QFile file(path(u"file.logarchive"_s));
        QVERIFY(file.open(QFile::WriteOnly));
        QCOMPARE(ArchiveItems::isArchive(path(name)), isArchive);
    }

    void picksArchivesAndEntersFolders_data()
    {
        QTest::addColumn<QString>("way");
        for (const QString& way : {u"double click"_s, u"Return"_s, u"confirmed"_s})
            QTest::addRow("%ls", qUtf16Printable(way)) << way;
    }

    void picksArchivesAndEntersFolders()
    {
        QFETCH(QString, way);
        const QSignalSpy accepted(m_dialog.get(), &QDialog::accepted);
        open(u"plain"_s, way);
        QCOMPARE(m_dialog->directory().absolutePath(), path(u"plain"_s));
        QVERIFY(accepted.isEmpty());
        m_dialog->setDirectory(m_folder->path());
        open(u"mac.logarchive"_s, way);
        QCOMPARE(accepted.size(), 1);
        QCOMPARE(m_dialog->selectedFiles(), QStringList{path(u"mac.logarchive"_s)});
    }

    void buttonPicksFoldersWithLogsBelow()
    {
        QVERIFY(QDir(m_folder->path()).mkpath(u"disk/private/var/db/Diagnostics/Persist"_s));
        open(u"disk"_s, u"confirmed"_s);
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(m_dialog->selectedFiles(), QStringList{path(u"disk"_s)});
    }

private:
    QString path(const QString& name) const { return QDir(m_folder->path()).filePath(name); }
    QListView* list() const { return m_dialog->findChild<QListView*>(u"listView"_s); }

    QModelIndex indexOf(const QString& name) const
    {
        const QAbstractItemModel& model = *list()->model();
        const QModelIndex root = list()->rootIndex();
        for (int row = 0; row < model.rowCount(root); ++row) {
            if (model.index(row, 0, root).data().toString() == name)
                return model.index(row, 0, root);
        }
        return {};
    }

    void open(const QString& name, const QString& way)
    {
        if (way == u"confirmed"_s) {
            m_dialog->findChild<QLineEdit*>()->setText(path(name));
            m_dialog->accept();
            return;
        }
        QTRY_VERIFY(indexOf(name).isValid());
        list()->setCurrentIndex(indexOf(name));
        if (way == u"Return"_s) {
            list()->setFocus();
            QTest::keyClick(list(), Qt::Key_Return);
            return;
        }
        const QPoint place = list()->visualRect(indexOf(name)).center();
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, place);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ArchiveDialog> m_dialog;
};

TESSEL_TEST(TestArchiveDialog)
#include "tst_archivedialog.moc"
