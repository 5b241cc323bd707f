// The file actions through the window: what each button and overlay makes on disk, what it credits,
// and the notifications with their Show and Undo.

#include "LaunchedProgram.h"
#include "TestTree.h"

#include "core/texts/Texts.h"
#include "core/window/ActionPanelView.h"
#include "core/window/DropWindow.h"
#include "fileops/ui/ZipProgressWindow.h"
#include "utils/Utils.h"
#include "widgets/ActionButton.h"

#include <QApplication>
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

QTEST_MAIN(FileActionsTest)
#include "tst_fileactions.moc"
