// The file actions through the window: what each button and overlay makes on disk, what it credits,
// and the notifications with their Show and Undo.

#include "LaunchedProgram.h"
#include "TestTree.h"

#include "core/texts/Texts.h"
#include "core/window/ActionPanelView.h"
#include "core/window/DropWindow.h"
#include "core/overlays/FileOverlays.h"
#include "fileops/ui/ZipProgressWindow.h"
#include "utils/Utils.h"
#include "widgets/ActionButton.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QUrl>

class FileActionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void zipButtonWritesTheArchiveAndCredits_data();
    void zipButtonWritesTheArchiveAndCredits();
    void newItemFromTheOverlay_data();
    void newItemFromTheOverlay();
    void undoableActions_data();
    void undoableActions();
    void revealShowsEveryItem();

private:
    QString make(const QByteArray &relative, const QByteArray &content = "x");
    void drop(const QStringList &paths);
    ActionButton *button(const QString &name) const;
    quint64 ledgerTotal() const;

    std::unique_ptr<TestTree> m_tree;
    std::unique_ptr<FakePlatform> m_fakes;
    std::unique_ptr<AppDelegate> m_app;
};

void FileActionsTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    Texts::setLanguage(QStringLiteral("en"));
}

void FileActionsTest::init()
{
    m_tree = std::make_unique<TestTree>();
    m_fakes = std::make_unique<FakePlatform>(m_tree->path() + QStringLiteral("/.trash"));
    m_app = launchedOn(*m_fakes);
}

void FileActionsTest::cleanup()
{
    m_app.reset();
    for (QWidget *w : QApplication::topLevelWidgets())
        if (qobject_cast<QMessageBox *>(w))
            delete w;
    m_fakes.reset();
    SettingsStore::shared().resetAll();
    m_tree.reset();
}

QString FileActionsTest::make(const QByteArray &relative, const QByteArray &content)
{
    if (relative.endsWith('/'))
        return NativePath::fromNative(m_tree->folder(relative.chopped(1)));
    return NativePath::fromNative(m_tree->file(relative, content));
}

void FileActionsTest::drop(const QStringList &paths)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &p : paths)
        urls.append(QUrl::fromLocalFile(p));
    data.setUrls(urls);
    m_app->showDropTargetAt(QPointF(400, 300));
    m_app->mycustomviewDidGetDrop(&data);
}

ActionButton *FileActionsTest::button(const QString &name) const
{
    return m_app->window->contentView()->findChild<ActionButton *>(name);
}

quint64 FileActionsTest::ledgerTotal() const
{
    return Utils::getTimeSavedDictionaryValues().value_or(QVariantMap{}).value(QStringLiteral("totalSecSaved")).toULongLong();
}

void FileActionsTest::zipButtonWritesTheArchiveAndCredits_data()
{
    QTest::addColumn<QByteArrayList>("items");
    QTest::addColumn<QString>("buttonName");
    QTest::addColumn<QString>("archive");
    QTest::addColumn<quint64>("credit");
    QTest::newRow("a document") << QByteArrayList{"a.b.txt"} << "zipDocBtn" << "a.b.zip" << quint64(2);
    QTest::newRow("a folder") << QByteArrayList{"Photos/", "Photos/p.jpg"} << "zipBtn" << "Photos.zip" << quint64(2);
    QTest::newRow("several files") << QByteArrayList{"x.bin", "y.bin"} << "zipMultiBtn" << "QuaydropZip.zip" << quint64(7);
}

void FileActionsTest::zipButtonWritesTheArchiveAndCredits()
{
    QFETCH(QByteArrayList, items);
    QFETCH(QString, buttonName);
    QFETCH(QString, archive);
    QFETCH(quint64, credit);
    QStringList dropped;
    for (const QByteArray &item : items) {
        const QString made = make(item);
        if (!item.contains('/') || item.endsWith('/'))
            dropped.append(made.endsWith('/') ? made.chopped(1) : made);
    }
    drop(dropped);
    const quint64 before = ledgerTotal();
    ActionButton *zip = button(buttonName);
    QVERIFY(zip);
    zip->click();
    QCOMPARE(ledgerTotal(), before + credit);
    QVERIFY(m_app->zippingTaskPanel && m_app->zippingTaskPanel->isVisible());
    QTRY_COMPARE_WITH_TIMEOUT(m_fakes->notifications.delivered.size(), qsizetype(1), 20000);
    const QString expected = m_tree->path() + QLatin1Char('/') + archive;
    QCOMPARE(m_fakes->notifications.delivered.first().title, Texts::localized("zipTaskComplete"));
    QCOMPARE(m_fakes->notifications.delivered.first().userInfo.value("filePaths").toStringList(), QStringList{expected});
    QCOMPARE(m_app->zippingTaskPanel->stateText(), Texts::localized("Success"));
    QVERIFY(zip->isEnabled());
    QProcess unzip;
    unzip.start(QStringLiteral("unzip"), {QStringLiteral("-tqq"), expected});
    QVERIFY(unzip.waitForFinished(20000));
    QCOMPARE(unzip.exitCode(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!m_app->zippingTaskPanel->isVisible(), 5000);
}

void FileActionsTest::newItemFromTheOverlay_data()
{
    QTest::addColumn<QByteArrayList>("items");
    QTest::addColumn<QString>("panelButton");
    QTest::addColumn<QString>("kindButton");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<quint64>("credit");
    QTest::newRow("text beside a document") << QByteArrayList{"a.txt"} << "createNewDocBtn" << "createTextDocumentAction" << ""
                                            << "_NewTextFile.txt" << quint64(10);
    QTest::newRow("folder inside a dropped folder") << QByteArrayList{"box/"} << "createNewBtn" << "createFolderBtnAction"
                                                    << "Inner" << "box/Inner" << quint64(3);
    QTest::newRow("workbook for several") << QByteArrayList{"x", "y"} << "createFileMultiBtn" << "createExcelSheet" << ""
                                          << "_NewWorkbook.xlsx" << quint64(10);
    QTest::newRow("OpenDocument text") << QByteArrayList{"p.png"} << "createNewFImgBtn" << "createOdfText" << "Plan"
                                       << "Plan.odt" << quint64(10);
}

void FileActionsTest::newItemFromTheOverlay()
{
    QFETCH(QByteArrayList, items);
    QFETCH(QString, panelButton);
    QFETCH(QString, kindButton);
    QFETCH(QString, typed);
    QFETCH(QString, expected);
    QFETCH(quint64, credit);
    QStringList dropped;
    for (const QByteArray &item : items)
        dropped.append(make(item));
    drop(dropped);
    ActionButton *panel = button(panelButton);
    QVERIFY(panel);
    panel->click();
    FileCreateOverlayVC *overlay = m_app->fileCreateVC;
    QVERIFY(overlay->isVisible());
    QCOMPARE(overlay->sameAsDragedFile->isVisible(), dropped.size() == 1);
    QCOMPARE(overlay->insideFolderCheckBox->isChecked(), items.first().endsWith('/'));
    QTest::keyClicks(overlay->fileNameTXTfld, typed);
    const quint64 before = ledgerTotal();
    overlay->findChild<QPushButton *>(kindButton)->click();
    const QString path = m_tree->path() + QLatin1Char('/') + expected;
    QVERIFY(QFileInfo::exists(path));
    QCOMPARE(ledgerTotal(), before + credit);
    QVERIFY(!overlay->isVisible());
    QCOMPARE(m_fakes->notifications.delivered.size(), qsizetype(1));
    QCOMPARE(m_fakes->notifications.delivered.first().userInfo.value("OpenPath").toString(), path);
    m_fakes->notifications.click(0);
    QCOMPARE(m_fakes->workspace.opened, QStringList{path});
}

void FileActionsTest::undoableActions_data()
{
    QTest::addColumn<QString>("panelButton");
    QTest::addColumn<QString>("field"); // of the overlay that asks, empty when none does
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("expected"); // where the two items are then, relative to the tree
    QTest::newRow("into folder") << "moveToOneFoldBtn" << "folderNameTF" << "Box" << QStringList{"Box/a.jpg", "Box/b.jpg"};
    QTest::newRow("rename") << "renameMultiBtn" << "renameNameTF" << "Trip" << QStringList{"Trip.jpg", "Trip 1.jpg"};
    QTest::newRow("trash") << "trashMultiBtn" << "" << "" << QStringList{".trash/a.jpg", ".trash/b.jpg"};
}

void FileActionsTest::undoableActions()
{
    QFETCH(QString, panelButton);
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QStringList, expected);
    const QStringList dropped{make("a.jpg", "A"), make("b.jpg", "B")};
    drop(dropped);
    button(panelButton)->click();
    if (!field.isEmpty()) {
        auto *edit = m_app->window->findChild<QLineEdit *>(field);
        QVERIFY(edit && edit->isVisible());
        edit->clear();
        QTest::keyClicks(edit, typed);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    QTRY_COMPARE_WITH_TIMEOUT(m_fakes->notifications.delivered.size(), qsizetype(1), 10000);
    QTest::qWait(300); // Return acts once: no second run that would find the items gone
    QCOMPARE(m_fakes->notifications.delivered.size(), qsizetype(1));
    for (QWidget *w : QApplication::topLevelWidgets())
        QVERIFY(!qobject_cast<QMessageBox *>(w) || !w->isVisible());
    for (const QString &e : expected)
        QVERIFY2(QFileInfo::exists(m_tree->path() + QLatin1Char('/') + e), qPrintable(e));
    QVERIFY(!QFileInfo::exists(dropped.first()));
    QVERIFY(!m_fakes->notifications.delivered.first().userInfo.value("undoID").toString().isEmpty());
    m_fakes->notifications.clickUndo(0);
    QCOMPARE(TestTree::contents(dropped.at(0)), QByteArray("A"));
    QCOMPARE(TestTree::contents(dropped.at(1)), QByteArray("B"));
    QVERIFY(!QFileInfo::exists(m_tree->path() + QLatin1Char('/') + expected.first()));
}

void FileActionsTest::revealShowsEveryItem()
{
    const QStringList dropped{make("a"), make("b")};
    drop(dropped);
    const quint64 before = ledgerTotal();
    button(QStringLiteral("revealInfinderMultibtn"))->click();
    QCOMPARE(m_fakes->workspace.revealed, QList<QStringList>{dropped});
    QCOMPARE(ledgerTotal(), before + 4);
    drop({dropped.first()});
    button(QStringLiteral("revealInFinderBtn"))->click();
    QCOMPARE(m_fakes->workspace.revealed.last(), QStringList{dropped.first()});
}

QTEST_MAIN(FileActionsTest)
#include "tst_fileactions.moc"
