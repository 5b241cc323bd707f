#include "FakeMoveCopyUi.h"
#include "ScratchMount.h"
#include "TestRows.h"
#include "TestTree.h"
#include "core/fs/NativePath.h"
#include "core/texts/Texts.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "platform/fake/FakePlatform.h"
#include "utils/Utils.h"

#include <QtTest>


namespace {
QString s(const QByteArray &native) { return NativePath::fromNative(native); }
} // namespace

class MoveCopyTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(Texts::setLanguage(QStringLiteral("en")));
    }
    void init()
    {
        m_tree = std::make_unique<TestTree>();
        m_platform = std::make_unique<FakePlatform>(m_tree->path() + "/Trash");
        Platform::install(m_platform->services());
        m_resolver = FakeResolver();
        m_alerts = FakeAlerts();
        m_observer = FakeObserver();
        m_engine = std::make_unique<MoveCopyOrchestrator>(&m_resolver, &m_alerts, &m_observer, &m_platform->trash);
        m_tree->folder("src");
        m_tree->folder("dest");
    }
    void cleanup()
    {
        m_engine.reset();
        Platform::install({});
    }
    // Onto its own folder, or a folder into itself (moved or copied): refused, nothing touched.
    void refusedDrops()
    {
        const QString file = s(m_tree->file("src/a.txt", "a"));
        QSignalSpy closed(m_engine.get(), &MoveCopyOrchestrator::orderOutTheWindow);
        QCOMPARE(m_engine->copyitemsForFileCopy({file}, m_tree->path() + "/src", true), MoveCopyOrchestrator::Outcome::Refused);
        QCOMPARE(m_alerts.basic.size(), 1);
        QCOMPARE(m_alerts.basic.first().first, QStringLiteral("a.txt cannot be moved or copied onto itself"));
        QCOMPARE(closed.count(), 1);
        QCOMPARE(TestTree::contents(file), QByteArray("a"));
        const QString folder = s(m_tree->folder("src/outer"));
        m_tree->folder("src/outer/inner");
        for (bool copy : {false, true}) {
            m_engine->isFileOperationCopy = copy;
            QCOMPARE(m_engine->copyitemsForFileCopy({folder}, folder + "/inner", true), MoveCopyOrchestrator::Outcome::Refused);
        }
        QCOMPARE(TestTree::entries(folder + "/inner"), QStringList());
    }
    void sameVolumeMoveRenames()
    {
        const QString a = s(m_tree->file("src/a.txt", "a"));
        const QString b = s(m_tree->folder("src/b"));
        m_tree->file("src/b/.hidden", "h");
        QCOMPARE(m_engine->copyitemsForFileCopy({a, b}, m_tree->path() + "/dest", true), MoveCopyOrchestrator::Outcome::Moved);
        QCOMPARE(TestTree::entries(m_tree->path() + "/dest"), (QStringList{"a.txt", "b"}));
        QCOMPARE(TestTree::entries(m_tree->path() + "/src"), QStringList());
        QCOMPARE(TestTree::contents(m_tree->path() + "/dest/b/.hidden"), QByteArray("h"));
        QCOMPARE(m_platform->notifications.delivered.size(), 1);
        QCOMPARE(m_platform->notifications.delivered.first().title, QStringLiteral("2 files have been moved!"));
        QVERIFY(m_platform->notifications.delivered.first().body.endsWith(QStringLiteral("/.../dest")));
        QVERIFY(m_resolver.askedAbout.isEmpty());
    }
    void conflictAnswers_data()
    {
        QTest::addColumn<bool>("sameVolume");
        QTest::addColumn<QList<ConflictReply>>("answers");
        QTest::addColumn<QStringList>("destAfter"); // name=content
        QTest::addColumn<int>("questions");
        QTest::addColumn<int>("trashed");
        const QList<ConflictReply> skipAll{{ConflictAnswer::Skip, true}};
        const QList<ConflictReply> keepAll{{ConflictAnswer::KeepBoth, true}};
        const QList<ConflictReply> replaceAll{{ConflictAnswer::Replace, true}};
        const QList<ConflictReply> oneByOne{{ConflictAnswer::Replace, false}, {ConflictAnswer::Skip, false},
                                            {ConflictAnswer::KeepBoth, false}};
        for (bool same : {true, false}) {
            const QByteArray where = same ? "rename: " : "job: ";
            QTest::newRow(where + "skip all on the first") << same << skipAll
                                                            << QStringList{"1.txt=old1", "2.txt=old2", "3.txt=old3", "4.txt=new4"} << 1 << 0;
            QTest::newRow(where + "keep both for all") << same << keepAll
                                                       << QStringList{"1 1.txt=new1", "1.txt=old1", "2 1.txt=new2", "2.txt=old2",
                                                                      "3 1.txt=new3", "3.txt=old3", "4.txt=new4"}
                                                       << 1 << 0;
            QTest::newRow(where + "replace all") << same << replaceAll
                                                 << QStringList{"1.txt=new1", "2.txt=new2", "3.txt=new3", "4.txt=new4"} << 1 << 3;
            QTest::newRow(where + "one answer each") << same << oneByOne
                                                     << QStringList{"1.txt=new1", "2.txt=old2", "3 1.txt=new3", "3.txt=old3", "4.txt=new4"}
                                                     << 3 << 1;
        }
    }
    void conflictAnswers()
    {
        QFETCH(bool, sameVolume);
        QFETCH(QList<ConflictReply>, answers);
        QFETCH(QStringList, destAfter);
        QFETCH(int, questions);
        QFETCH(int, trashed);
        QStringList sources;
        for (int i = 1; i <= 4; ++i) {
            sources.append(s(m_tree->file("src/" + QByteArray::number(i) + ".txt", "new" + QByteArray::number(i))));
            if (i < 4)
                m_tree->file("dest/" + QByteArray::number(i) + ".txt", "old" + QByteArray::number(i));
        }
        m_resolver.answers = answers;
        m_engine->copyitemsForFileCopy(sources, m_tree->path() + "/dest", sameVolume);
        QVERIFY(waitForJobs());
        QStringList found;
        for (const QString &name : TestTree::entries(m_tree->path() + "/dest"))
            found.append(name + '=' + TestTree::contents(m_tree->path() + "/dest/" + name));
        QCOMPARE(found, destAfter);
        QCOMPARE(m_resolver.askedAbout.size(), questions);
        QCOMPARE(TestTree::entries(m_tree->path() + "/Trash").size(), trashed);
        for (const QString &old : TestTree::entries(m_tree->path() + "/Trash"))
            QVERIFY(TestTree::contents(m_tree->path() + "/Trash/" + old).startsWith("old"));
    }
    // Every item skipped starts nothing; an answer may come later.
    void answers()
    {
        const QString a = s(m_tree->file("src/a.txt", "new"));
        m_tree->file("dest/a.txt", "old");
        m_resolver.answers = {{ConflictAnswer::Skip, false}};
        QCOMPARE(m_engine->copyitemsForFileCopy({a}, m_tree->path() + "/dest", false), MoveCopyOrchestrator::Outcome::NothingToDo);
        QVERIFY(m_engine->runningJobs().isEmpty());
        QVERIFY(m_platform->notifications.delivered.isEmpty());
        QCOMPARE(TestTree::contents(a), QByteArray("new"));
        // An answer that comes later: no second operation while the question is open.
        m_resolver.deferred = true;
        m_resolver.answers = {{ConflictAnswer::KeepBoth, false}};
        QSignalSpy ended(m_engine.get(), &MoveCopyOrchestrator::operationEnded);
        QCOMPARE(m_engine->copyitemsForFileCopy({a}, m_tree->path() + "/dest", true),
                 MoveCopyOrchestrator::Outcome::WaitingForAnswer);
        QCOMPARE(m_engine->copyitemsForFileCopy({a}, m_tree->path() + "/dest", true), MoveCopyOrchestrator::Outcome::Refused);
        QVERIFY(m_engine->alertOrSaveOrOpenPanelIsShown);
        m_resolver.answerPending();
        QCOMPARE(ended.count(), 1);
        QCOMPARE(ended.first().first().value<MoveCopyOrchestrator::Outcome>(), MoveCopyOrchestrator::Outcome::Moved);
        QCOMPARE(TestTree::entries(m_tree->path() + "/dest"), (QStringList{"a 1.txt", "a.txt"}));
        QVERIFY(!m_engine->alertOrSaveOrOpenPanelIsShown);
    }
    void moveAcrossDevicesKeepsEverything()
    {
        ScratchMount other("64m");
        REQUIRE_SCRATCH_MOUNT(other);
        // What the copy keeps of each file (modes, attributes, holes) is the copy engine's own test.
        const QStringList made = m_tree->make({"src/project/", "src/project/.git/", "src/project/.git/config", "src/project/empty/",
                                               "src/project/run.sh", "src/loose.txt"});
        const QString project = made.first(), loose = made.last();

        QVERIFY(!Utils::checkIfMoveToSameVolume(project, other.path()));
        QCOMPARE(m_engine->copyitemsForFileCopy({project, loose}, other.path(), false), MoveCopyOrchestrator::Outcome::JobStarted);
        QCOMPARE(m_observer.counts.last(), 1);
        QVERIFY(waitForJobs());
        QCOMPARE(m_observer.finished.size(), 1);
        QVERIFY(!m_observer.finished.first().has_value());

        const QString moved = other.path() + "/project";
        QCOMPARE(TestTree::entries(moved), (QStringList{".git", "empty", "run.sh"}));
        QCOMPARE(TestTree::contents(moved + "/.git/config"), QByteArray("data of src/project/.git/config"));
        QCOMPARE(TestTree::contents(other.path() + "/loose.txt"), QByteArray("data of src/loose.txt"));
        QCOMPARE(TestTree::entries(m_tree->path() + "/src"), QStringList()); // the sources went, and only now
        QVERIFY(m_engine->pathsBeingMovedToBeDeletedAfter.isEmpty());
        QCOMPARE(m_platform->notifications.delivered.last().title, QStringLiteral("2 files have been copied!"));
    }
    void copyJobNeverDeletesSources()
    {
        const QString a = s(m_tree->file("src/a.txt", "a"));
        m_engine->isFileOperationCopy = true;
        QCOMPARE(m_engine->copyitemsForFileCopy({a}, m_tree->path() + "/dest", true), MoveCopyOrchestrator::Outcome::JobStarted);
        // A move started meanwhile must not change what the copy does with its sources.
        m_engine->isFileOperationCopy = false;
        QVERIFY(waitForJobs());
        QCOMPARE(TestTree::contents(a), QByteArray("a"));
        QCOMPARE(TestTree::contents(m_tree->path() + "/dest/a.txt"), QByteArray("a"));
    }
    // A cancelled move across devices keeps every source; an item it was to replace stays too, since
    // the answer itself removes nothing.
    void cancelledMoveKeepsEverything_data()
    {
        rowsOf<bool>("replacing", {{"new names", false}, {"replacing an item", true}});
    }
    void cancelledMoveKeepsEverything()
    {
        QFETCH(bool, replacing);
        const QString dest = m_tree->path() + "/dest";
        const QString big = s(m_tree->file("src/big.bin", QByteArray(64 << 20, 'b')));
        const QString small = s(m_tree->file("src/small.txt", "s"));
        if (replacing) {
            m_tree->file("dest/big.bin", "old");
            m_resolver.answers = {{ConflictAnswer::Replace, false}};
        }
        QCOMPARE(m_engine->copyitemsForFileCopy({small, big}, dest, false), MoveCopyOrchestrator::Outcome::JobStarted);
        QCOMPARE(QFileInfo::exists(dest + "/big.bin"), replacing);
        m_engine->cancelCopyProgress(m_engine->runningJobs().first());
        QVERIFY(waitForJobs());
        QCOMPARE(m_observer.finished.last()->code, 1001);
        QCOMPARE(QFileInfo(big).size(), qint64(64 << 20));
        QCOMPARE(TestTree::contents(small), QByteArray("s"));
        QCOMPARE(TestTree::contents(dest + "/big.bin"), replacing ? QByteArray("old") : QByteArray("<unreadable>"));
        QCOMPARE(TestTree::entries(m_tree->path() + "/Trash"), QStringList());
        for (const QString &name : TestTree::entries(dest))
            QVERIFY2(!name.startsWith(".qd-"), qPrintable(name));
    }
    void runningJobGuards()
    {
        const QString a = s(m_tree->file("src/a.bin", QByteArray(1 << 20, 'a')));
        QCOMPARE(m_engine->copyitemsForFileCopy({a}, m_tree->path() + "/dest", false), MoveCopyOrchestrator::Outcome::JobStarted);
        // The same item to the same folder while the job is listed.
        QCOMPARE(m_engine->copyitemsForFileCopy({a}, m_tree->path() + "/dest", false), MoveCopyOrchestrator::Outcome::Refused);
        QCOMPARE(m_alerts.basic.last().first, QStringLiteral("Not possible: a.bin"));
        // What the job is writing cannot be a source yet.
        m_tree->file("dest/a.bin", "partial");
        QCOMPARE(m_engine->copyitemsForFileCopy({m_tree->path() + "/dest/a.bin"}, m_tree->path() + "/src", false),
                 MoveCopyOrchestrator::Outcome::Refused);
        QCOMPARE(m_alerts.basic.last().second, Texts::localized("FilesStillbeingCopied"));
        QVERIFY(waitForJobs());
    }
    void sharedSourceWaitsForTheLastReader()
    {
        m_tree->folder("dest2");
        const QString a = s(m_tree->file("src/a.txt", "a"));
        QCOMPARE(m_engine->copyitemsForFileCopy({a}, m_tree->path() + "/dest", false), MoveCopyOrchestrator::Outcome::JobStarted);
        QCOMPARE(m_engine->copyitemsForFileCopy({a}, m_tree->path() + "/dest2", false), MoveCopyOrchestrator::Outcome::JobStarted);
        QList<bool> sourceThereAtEnd;
        m_observer.onFinished = [&](const FileCopyParamsPtr &) { sourceThereAtEnd.append(QFileInfo::exists(a)); };
        QVERIFY(waitForJobs());
        QCOMPARE(sourceThereAtEnd, (QList<bool>{true, false}));
        QCOMPARE(TestTree::contents(m_tree->path() + "/dest/a.txt"), QByteArray("a"));
        QCOMPARE(TestTree::contents(m_tree->path() + "/dest2/a.txt"), QByteArray("a"));
    }
    void failedMoveKeepsSources()
    {
        // Large enough that the job is still on it when the second item disappears.
        const QString good = s(m_tree->file("src/good.txt", QByteArray(48 << 20, 'g')));
        const QString gone = m_tree->path() + "/src/vanished.txt";
        m_tree->file("src/vanished.txt", "v");
        QCOMPARE(m_engine->copyitemsForFileCopy({good, gone}, m_tree->path() + "/dest", false),
                 MoveCopyOrchestrator::Outcome::JobStarted);
        QFile::remove(gone); // vanishes before the job reaches it
        QVERIFY(waitForJobs());
        if (!m_observer.finished.last().has_value())
            QSKIP("the job was faster than the removal");
        QCOMPARE(m_observer.finished.last()->code, 1111);
        QCOMPARE(m_alerts.critical.size(), 1);
        QVERIFY(m_alerts.critical.first().first.startsWith(QStringLiteral("vanished.txt ,")));
        QCOMPARE(QFileInfo(good).size(), qint64(48 << 20)); // copied, but the move failed: the source stays
    }

private:
    bool waitForJobs()
    {
        if (m_engine->runningJobs().isEmpty())
            return true;
        QSignalSpy done(m_engine.get(), &MoveCopyOrchestrator::allJobsFinished);
        return done.wait(20000);
    }
    std::unique_ptr<TestTree> m_tree;
    std::unique_ptr<FakePlatform> m_platform;
    FakeResolver m_resolver;
    FakeAlerts m_alerts;
    FakeObserver m_observer;
    std::unique_ptr<MoveCopyOrchestrator> m_engine;
};

QTEST_GUILESS_MAIN(MoveCopyTest)
#include "tst_movecopy.moc"
