// The file actions through the window: what each button and overlay makes on disk, what it credits,
// and the notifications with their Show and Undo.

#include "LaunchedProgram.h"

#include "core/window/ActionPanelView.h"
#include "core/window/BusyView.h"
#include "core/overlays/FileOverlays.h"
#include "fileops/actions/TrashJob.h"
#include "fileops/ui/ZipProgressWindow.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>

class FileActionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { englishTestMode(); }

    void init() { f.launch(); }
    void cleanup() { f.close(); }

    void zipButtonWritesTheArchiveAndCredits_data()
    {
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QString>("buttonName");
        QTest::addColumn<QString>("archive");
        QTest::addColumn<quint64>("credit");
        QTest::newRow("a document") << QStringList{"a.b.txt"} << "zipDocBtn" << "a.b.zip" << quint64(2);
        QTest::newRow("a folder") << QStringList{"Photos/", "Photos/p.jpg"} << "zipBtn" << "Photos.zip" << quint64(2);
        QTest::newRow("several files") << QStringList{"x.bin", "y.bin"} << "zipMultiBtn" << "QuaydropZip.zip" << quint64(7);
    }

    void zipButtonWritesTheArchiveAndCredits()
    {
        QFETCH(QStringList, items);
        QFETCH(QString, buttonName);
        QFETCH(QString, archive);
        QFETCH(quint64, credit);
        QStringList dropped;
        for (const QString &item : items) {
            const QString made = make(item);
            if (item.count(QLatin1Char('/')) == int(item.endsWith(QLatin1Char('/'))))
                dropped.append(made);
        }
        f.drop(dropped);
        const quint64 before = ledgerTotal(); // a drop credits too
        f.button(buttonName)->click();
        QCOMPARE(ledgerTotal(), before + credit);
        QVERIFY(f.app->zippingTaskPanel && f.app->zippingTaskPanel->isVisible());
        QVERIFY(f.notified(1));
        const QString expected = f.path(archive);
        QCOMPARE(f.note().title, Texts::localized("zipTaskComplete"));
        QCOMPARE(f.note().userInfo.value("filePaths").toStringList(), QStringList{expected});
        QCOMPARE(f.app->zippingTaskPanel->stateText(), Texts::localized("Success"));
        QVERIFY(f.button(buttonName)->isEnabled());
        QProcess unzip;
        unzip.start(QStringLiteral("unzip"), {QStringLiteral("-tqq"), expected});
        QVERIFY(unzip.waitForFinished(20000));
        QCOMPARE(unzip.exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!f.app->zippingTaskPanel->isVisible(), 5000);
    }

    void newItemFromTheOverlay_data()
    {
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QString>("panelButton");
        QTest::addColumn<QString>("kindButton");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<quint64>("credit");
        QTest::newRow("text beside a document") << QStringList{"a.txt"} << "createNewDocBtn" << "createTextDocumentAction" << ""
                                                << "_NewTextFile.txt" << quint64(10);
        QTest::newRow("folder inside a dropped folder") << QStringList{"box/"} << "createNewBtn" << "createFolderBtnAction"
                                                        << "Inner" << "box/Inner" << quint64(3);
        QTest::newRow("workbook for several") << QStringList{"x", "y"} << "createFileMultiBtn" << "createExcelSheet" << ""
                                              << "_NewWorkbook.xlsx" << quint64(10);
        QTest::newRow("OpenDocument text") << QStringList{"p.png"} << "createNewFImgBtn" << "createOdfText" << "Plan"
                                           << "Plan.odt" << quint64(10);
    }

    void newItemFromTheOverlay()
    {
        QFETCH(QStringList, items);
        QFETCH(QString, panelButton);
        QFETCH(QString, kindButton);
        QFETCH(QString, typed);
        QFETCH(QString, expected);
        QFETCH(quint64, credit);
        QStringList dropped;
        for (const QString &item : items)
            dropped.append(make(item));
        QVERIFY(f.dropAndPress(dropped, panelButton));
        FileCreateOverlayVC *overlay = f.app->fileCreateVC;
        QVERIFY(overlay->isVisible());
        QCOMPARE(overlay->sameAsDragedFile->isVisible(), dropped.size() == 1);
        QCOMPARE(overlay->insideFolderCheckBox->isChecked(), items.first().endsWith(QLatin1Char('/')));
        QTest::keyClicks(overlay->fileNameTXTfld, typed);
        const quint64 before = ledgerTotal();
        overlay->findChild<QPushButton *>(kindButton)->click();
        const QString path = f.path(expected);
        QVERIFY(QFileInfo::exists(path));
        QCOMPARE(ledgerTotal(), before + credit);
        QVERIFY(!overlay->isVisible());
        QCOMPARE(f.fakes->notifications.delivered.size(), qsizetype(1));
        QCOMPARE(f.note().userInfo.value("OpenPath").toString(), path);
        f.fakes->notifications.click(0);
        QCOMPARE(f.fakes->workspace.opened, QStringList{path});
    }

    void busyViewCancelStopsTheTrashOnly()
    {
        QStringList dropped;
        for (int i = 0; i < 20; ++i)
            dropped.append(make(QStringLiteral("f%1.jpg").arg(i)));
        f.fakes->trash.delayMs = 100;
        QVERIFY(f.dropAndPress(dropped, QStringLiteral("trashMultiBtn")));
        auto *cancel = f.app->emptyContview->cancelProgressBtn;
        QTRY_VERIFY(cancel->isVisible() && cancel->isEnabled());
        cancel->click();
        // The trash stops between items; the window does not speak of a drop import.
        QTRY_VERIFY_WITH_TIMEOUT(!f.app->trashingTask || f.app->trashingTask->isFinished(), 10000);
        f.fakes->trash.delayMs = 0;
        QVERIFY(f.app->emptyContview->emptyContviewLbl->text() != Texts::localized("Data import canceled..."));
        int left = 0;
        for (const QString &p : dropped)
            left += QFile::exists(p) ? 1 : 0;
        QVERIFY2(left > 0, "the cancel did not stop the trash");
        QCOMPARE(left + QDir(f.dir.path() + QStringLiteral("/.trash")).entryList(QDir::Files).size(), 20); // none lost
    }

    void undoableActions_data()
    {
        QTest::addColumn<QString>("panelButton");
        QTest::addColumn<QString>("field"); // of the overlay that asks, empty when none does
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("expected"); // where the two items are then, relative to the tree
        QTest::newRow("into folder") << "moveToOneFoldBtn" << "folderNameTF" << "Box" << QStringList{"Box/a.jpg", "Box/b.jpg"};
        QTest::newRow("rename") << "renameMultiBtn" << "renameNameTF" << "Trip" << QStringList{"Trip.jpg", "Trip 1.jpg"};
        QTest::newRow("trash") << "trashMultiBtn" << "" << "" << QStringList{".trash/a.jpg", ".trash/b.jpg"};
    }

    void undoableActions()
    {
        QFETCH(QString, panelButton);
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QStringList, expected);
        const QStringList dropped{make("a.jpg", "A"), make("b.jpg", "B")};
        QVERIFY(f.dropAndPress(dropped, panelButton));
        if (!field.isEmpty()) {
            auto *edit = f.app->window->findChild<QLineEdit *>(field);
            QVERIFY(edit && edit->isVisible());
            edit->clear();
            QTest::keyClicks(edit, typed);
            QTest::keyClick(edit, Qt::Key_Return);
        }
        QVERIFY(f.notified(1, 10000));
        QTest::qWait(300); // Return acts once: no second run that would find the items gone
        QCOMPARE(f.fakes->notifications.delivered.size(), qsizetype(1));
        QVERIFY(!visibleAlert());
        for (const QString &e : expected)
            QVERIFY2(QFileInfo::exists(f.path(e)), qPrintable(e));
        QVERIFY(!QFileInfo::exists(dropped.first()));
        QVERIFY(!f.note().userInfo.value("undoID").toString().isEmpty());
        f.fakes->notifications.clickUndo(0);
        QCOMPARE(f.bytesOf(dropped.at(0)), QByteArray("A"));
        QCOMPARE(f.bytesOf(dropped.at(1)), QByteArray("B"));
        QVERIFY(!QFileInfo::exists(f.path(expected.first())));
    }

    void revealShowsEveryItem()
    {
        const QStringList dropped{make("a"), make("b")};
        f.drop(dropped);
        const quint64 before = ledgerTotal();
        f.button(QStringLiteral("revealInfinderMultibtn"))->click();
        QCOMPARE(f.fakes->workspace.revealed, QList<QStringList>{dropped});
        QCOMPARE(ledgerTotal(), before + 4);
        QVERIFY(f.dropAndPress({dropped.first()}, QStringLiteral("revealInFinderBtn")));
        QCOMPARE(f.fakes->workspace.revealed.last(), QStringList{dropped.first()});
    }

private:
    // A file, or a folder when the name ends in a slash.
    QString make(const QString &relative, const QByteArray &content = "x")
    {
        if (!relative.endsWith(QLatin1Char('/')))
            return f.file(relative, content);
        QDir().mkpath(f.path(relative));
        return f.path(relative.chopped(1));
    }

    LaunchedFixture f;
};

QTEST_MAIN(FileActionsTest)
#include "tst_fileactions.moc"
