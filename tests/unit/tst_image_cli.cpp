// The image commands as a separate process: what each writes, its exit code, and its lines.

#include "ImageFixtures.h"
#include "TestTree.h"
#include "UnitSupport.h"
#include "utils/Utils.h"

#include <QStandardPaths>
#include <QTest>

namespace {

struct Run
{
    int code = -1;
    QString out, err;
};

Run quaydrop(const QStringList &args, const QString &workingFolder)
{
    // No display: the commands need none, and edit says so.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        env.remove(QLatin1String(name));
    const ProgramRun r = runProgram(QStringLiteral(QD_QUAYDROP_BINARY), args, workingFolder, env);
    return {r.code, QString::fromUtf8(r.out), QString::fromUtf8(r.err)};
}

} // namespace

class ImageCliTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        const QImage pic = ImageFixtures::picture(400, 300);
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("photo.jpg")), ImageFixtures::encoded(pic, "jpeg", 300)));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("img2.png")), ImageFixtures::encoded(pic, "png")));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("img10.png")),
                                     ImageFixtures::encoded(ImageFixtures::picture(100, 50), "png")));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("broken.png")), QByteArray(200, 'b')));
        QVERIFY(ImageFixtures::pdfWithPages(m_tree.at(QStringLiteral("doc.pdf")), {QSizeF(72, 144), QSizeF(72, 72)}));
        QVERIFY(QDir().mkpath(m_tree.at(QStringLiteral("out"))));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("-dash.png")), ImageFixtures::encoded(pic, "png")));
        // Bad inputs, each under a name that promises an image.
        QVERIFY(QDir().mkpath(m_tree.at(QStringLiteral("folder.png"))));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("empty.png")), {}));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("words.png")), "some words, no picture"));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("damaged.png")), ImageFixtures::damagedPng(pic)));
    }
    // What each command writes (relative to the tree, on stdout in this order), the size of the first
    // output, the exit code, and a piece of its messages. Edits of one picture take the next free name.
    void commands_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("code");
        QTest::addColumn<QStringList>("written");
        QTest::addColumn<QString>("size"); // empty: not checked
        QTest::addColumn<QString>("error");
        QTest::newRow("resize one side follows") << QStringList{"resize", "--width", "200", "photo.jpg"} << 0
                                                 << QStringList{"photo_200x150.jpg"} << "200x150" << "resizing photo.jpg (1/1)";
        QTest::newRow("resize into a folder") << QStringList{"resize", "--height", "30", "--dest", "out", "photo.jpg"} << 0
                                              << QStringList{"out/photo_40x30.jpg"} << "40x30" << "";
        QTest::newRow("resize a bad file among good ones")
            << QStringList{"resize", "--width", "20", "broken.png", "img2.png"} << 1 << QStringList{"img2_20x15.png"} << "20x15"
            << "broken.png: not an image";
        QTest::newRow("into a folder that is none") << QStringList{"resize", "--width", "9", "--dest", "photo.jpg", "img2.png"}
                                                    << 1 << QStringList{} << "" << "photo.jpg: not a folder";
        QTest::newRow("convert with compression") << QStringList{"convert", "jpg", "--compression", "40", "img2.png"} << 0
                                                  << QStringList{"img2.jpg"} << "400x300" << "converting img2.png";
        QTest::newRow("a name like an option after --") << QStringList{"convert", "jpg", "--", "-dash.png"} << 0
                                                        << QStringList{"-dash.jpg"} << "" << "converting -dash.png (1/1)";
        QTest::newRow("convert a missing file") << QStringList{"convert", "png", "nothing.jpg"} << 1 << QStringList{} << ""
                                                << "nothing was done";
        QTest::newRow("pages of a PDF") << QStringList{"pdf2img", "png", "--dpi", "144", "doc.pdf"} << 0
                                        << QStringList{"doc/Page_1.png", "doc/Page_2.png"} << "144x288" << "writing Page_2 (2/2)";
        QTest::newRow("a PDF that is none") << QStringList{"pdf2img", "png", "broken.png"} << 1 << QStringList{} << ""
                                            << "not a PDF document";
        QTest::newRow("images merged in natural order, named after page 1")
            << QStringList{"img2pdf", "--merge", "img10.png", "img2.png"} << 0 << QStringList{"img2.pdf"} << ""
            << "adding img2.png (1/2)\nadding img10.png (2/2)";
        QTest::newRow("images merged in the order given")
            << QStringList{"img2pdf", "--merge", "--order-as-given", "img10.png", "img2.png"} << 0 << QStringList{"img10.pdf"}
            << "" << "adding img10.png (1/2)\nadding img2.png (2/2)";
        QTest::newRow("wallpaper wants a file or --previous") << QStringList{"wallpaper"} << 2 << QStringList{} << ""
                                                              << "give FILE or --previous, not both";
        QTest::newRow("one PDF per image") << QStringList{"img2pdf", "--dest", "out", "photo.jpg", "img2.png"} << 0
                                           << QStringList{"out/photo.pdf", "out/img2.pdf"} << "" << "";
        QTest::newRow("a quarter turn") << QStringList{"rotate", "--turns", "1", "photo.jpg"} << 0
                                        << QStringList{"_Quaydrop-photo.jpg"} << "300x400" << "turning photo.jpg (1/1)";
        QTest::newRow("a half turn, under a free name") << QStringList{"rotate", "--turns=2", "photo.jpg"} << 0
                                                        << QStringList{"_Quaydrop-photo 1.jpg"} << "400x300" << "";
        QTest::newRow("a part") << QStringList{"crop", "--rect", "10,20,100,50", "img2.png"} << 0
                                << QStringList{"_Quaydrop-img2.png"} << "100x50" << "cropping img2.png";
        QTest::newRow("a part into a folder") << QStringList{"crop", "--rect", "0,0,400,300", "--dest", "out", "photo.jpg"}
                                              << 0 << QStringList{"out/_Quaydrop-photo.jpg"} << "400x300" << "";
        QTest::newRow("an edit of a bad file among good ones") << QStringList{"rotate", "--turns", "3", "broken.png", "img10.png"}
                                                               << 1 << QStringList{"_Quaydrop-img10.png"} << "50x100"
                                                               << "broken.png: not an image";
        QTest::newRow("a rectangle reaching outside") << QStringList{"crop", "--rect", "350,0,100,100", "img2.png"} << 1
                                                      << QStringList{} << "" << "outside the picture of 400x300 pixels";
        QTest::newRow("edit a missing file") << QStringList{"edit", "nothing.jpg"} << 1 << QStringList{} << ""
                                             << "nothing.jpg: No such file";
        QTest::newRow("edit without a display") << QStringList{"edit", "photo.jpg"} << 1 << QStringList{} << "" << "no display";
    }
    void commands()
    {
        QFETCH(QStringList, args);
        QFETCH(int, code);
        QFETCH(QStringList, written);
        QFETCH(QString, size);
        QFETCH(QString, error);
        const Run run = quaydrop(args, m_tree.path());
        QVERIFY2(run.code == code, qPrintable(run.err));
        QStringList expected;
        for (const QString &w : written) {
            expected << m_tree.path() + QChar('/') + w;
            QVERIFY2(QFileInfo(expected.last()).size() > 0, qPrintable(w));
        }
        QCOMPARE(run.out.split(QChar('\n'), Qt::SkipEmptyParts), expected);
        QVERIFY2(run.err.contains(error), qPrintable(run.err));
        if (!size.isEmpty())
            QCOMPARE(Utils::getImageDimensionsAsStringImgPath(expected.first()), size);
    }
    void theSameBadInputGetsTheSameWords_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("a folder") << "folder.png" << "a folder, not a file";
        QTest::newRow("an empty file") << "empty.png" << "the file is empty";
        QTest::newRow("words") << "words.png" << "not an image this program can read";
        QTest::newRow("damaged data") << "damaged.png" << "damaged image data";
    }
    void theSameBadInputGetsTheSameWords()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        const QString line = QStringLiteral("quaydrop: %1/%2: %3\n").arg(m_tree.path(), name, reason);
        const QList<QStringList> commands{{"resize", "--width", "20"}, {"convert", "jpg"}, {"convert", "png"}, {"img2pdf"},
                                          {"rotate", "--turns", "1"}, {"crop", "--rect", "0,0,1,1"}};
        for (const QStringList &command : commands) {
            const Run run = quaydrop(command + QStringList{name}, m_tree.path());
            QVERIFY2(run.code == 1 && run.out.isEmpty(),
                     qPrintable(QStringLiteral("%1: exit %2, out %3, err %4").arg(command.join(' ')).arg(run.code).arg(run.out, run.err)));
            QVERIFY2(run.err.contains(line), qPrintable(command.join(' ') + ": " + run.err));
        }
    }

private:
    TestTree m_tree;
};

QTEST_MAIN(ImageCliTest)
#include "tst_image_cli.moc"
