// The image commands as a separate process: what each writes, its exit code, and its lines.

#include "ImageFixtures.h"
#include "TestTree.h"
#include "utils/Utils.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTest>

namespace {

struct Run
{
    int code = -1;
    QString out;
    QString err;
};

Run quaydrop(const QStringList &args, const QString &workingFolder)
{
    QProcess p;
    p.setWorkingDirectory(workingFolder);
    p.start(QStringLiteral(QD_QUAYDROP_BINARY), args);
    p.waitForFinished(60000);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

} // namespace

class ImageCliTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void commands_data();
    void commands();
    void theSameBadInputGetsTheSameWords_data();
    void theSameBadInputGetsTheSameWords();

private:
    TestTree m_tree;
};

void ImageCliTest::initTestCase()
{
    const QImage pic = ImageFixtures::picture(400, 300);
    QVERIFY(ImageFixtures::write(m_tree.path() + QStringLiteral("/photo.jpg"), ImageFixtures::encoded(pic, "jpeg", 300)));
    QVERIFY(ImageFixtures::write(m_tree.path() + QStringLiteral("/img2.png"), ImageFixtures::encoded(pic, "png")));
    QVERIFY(ImageFixtures::write(m_tree.path() + QStringLiteral("/img10.png"),
                                 ImageFixtures::encoded(ImageFixtures::picture(100, 50), "png")));
    QVERIFY(ImageFixtures::write(m_tree.path() + QStringLiteral("/broken.png"), QByteArray(200, 'b')));
    QVERIFY(ImageFixtures::pdfWithPages(m_tree.path() + QStringLiteral("/doc.pdf"), {QSizeF(72, 144), QSizeF(72, 72)}));
    QVERIFY(QDir().mkpath(m_tree.path() + QStringLiteral("/out")));
    QVERIFY(ImageFixtures::write(m_tree.path() + QStringLiteral("/turned.jpg"),
                                 ImageFixtures::withOrientation(ImageFixtures::encoded(pic, "jpeg"), 6)));
    QVERIFY(ImageFixtures::write(m_tree.path() + QStringLiteral("/-dash.png"), ImageFixtures::encoded(pic, "png")));
    // Bad inputs, each under a name that promises an image.
    QVERIFY(QDir().mkpath(m_tree.path() + QStringLiteral("/folder.png")));
    QVERIFY(ImageFixtures::write(m_tree.path() + QStringLiteral("/empty.png"), {}));
    QVERIFY(ImageFixtures::write(m_tree.path() + QStringLiteral("/words.png"), "some words, no picture"));
    QVERIFY(ImageFixtures::write(m_tree.path() + QStringLiteral("/damaged.png"), ImageFixtures::damagedPng(pic)));
}

void ImageCliTest::commands_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("written"); // relative to the tree, on stdout in this order
    QTest::addColumn<QString>("error");       // a piece of stderr
    QTest::newRow("resize one side follows") << QStringList{"resize", "--width", "200", "photo.jpg"} << 0
                                             << QStringList{"photo_200x150.jpg"} << "resizing photo.jpg (1/1)";
    QTest::newRow("resize into a folder") << QStringList{"resize", "--height", "30", "--dest", "out", "photo.jpg"} << 0
                                          << QStringList{"out/photo_40x30.jpg"} << "";
    QTest::newRow("resize several, one per side") << QStringList{"resize", "--width", "50", "img2.png", "img10.png"} << 0
                                                  << QStringList{"img2_50x37.png", "img10_50x25.png"} << "(2/2)";
    QTest::newRow("resize a bad file among good ones")
        << QStringList{"resize", "--width", "20", "broken.png", "img2.png"} << 1 << QStringList{"img2_20x15.png"}
        << "broken.png: not an image";
    QTest::newRow("resize without a size") << QStringList{"resize", "photo.jpg"} << 2 << QStringList{} << "usage";
    QTest::newRow("a photo tagged to turn a quarter is sized as seen")
        << QStringList{"resize", "--width", "150", "turned.jpg"} << 0 << QStringList{"turned_150x200.jpg"} << "";
    QTest::newRow("into a folder that is none") << QStringList{"resize", "--width", "9", "--dest", "photo.jpg", "img2.png"}
                                                << 1 << QStringList{} << "photo.jpg: not a folder";
    QTest::newRow("convert with compression") << QStringList{"convert", "jpg", "--compression", "40", "img2.png"} << 0
                                              << QStringList{"img2.jpg"} << "converting img2.png";
    QTest::newRow("convert to JPEG 2000") << QStringList{"convert", "jp2", "img10.png"} << 0 << QStringList{"img10.jp2"}
                                          << "";
    QTest::newRow("a name like an option after --") << QStringList{"convert", "jpg", "--", "-dash.png"} << 0
                                                    << QStringList{"-dash.jpg"} << "converting -dash.png (1/1)";
    QTest::newRow("convert to an unknown type") << QStringList{"convert", "webp", "img2.png"} << 2 << QStringList{} << "usage";
    QTest::newRow("convert a missing file") << QStringList{"convert", "png", "nothing.jpg"} << 1 << QStringList{}
                                            << "nothing was done";
    QTest::newRow("pages of a PDF") << QStringList{"pdf2img", "png", "--dpi", "144", "doc.pdf"} << 0
                                    << QStringList{"doc/Page_1.png", "doc/Page_2.png"} << "writing Page_2 (2/2)";
    QTest::newRow("a PDF that is none") << QStringList{"pdf2img", "png", "broken.png"} << 1 << QStringList{}
                                        << "not a PDF document";
    QTest::newRow("images merged in natural order, named after page 1")
        << QStringList{"img2pdf", "--merge", "img10.png", "img2.png"} << 0 << QStringList{"img2.pdf"}
        << "adding img2.png (1/2)\nadding img10.png (2/2)";
    QTest::newRow("images merged in the order given")
        << QStringList{"img2pdf", "--merge", "--order-as-given", "img10.png", "img2.png"} << 0 << QStringList{"img10.pdf"}
        << "adding img10.png (1/2)\nadding img2.png (2/2)";
    QTest::newRow("wallpaper wants a file or --previous") << QStringList{"wallpaper"} << 2 << QStringList{}
                                                          << "give FILE or --previous, not both";
    QTest::newRow("one PDF per image") << QStringList{"img2pdf", "--dest", "out", "photo.jpg", "img2.png"} << 0
                                       << QStringList{"out/photo.pdf", "out/img2.pdf"} << "";
}

void ImageCliTest::commands()
{
    QFETCH(QStringList, args);
    QFETCH(int, code);
    QFETCH(QStringList, written);
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
    if (args.first() == u"resize" && code == 0)
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(expected.first()),
                 QFileInfo(expected.first()).completeBaseName().section(QChar('_'), -1));
}

void ImageCliTest::theSameBadInputGetsTheSameWords_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a folder") << "folder.png" << "a folder, not a file";
    QTest::newRow("an empty file") << "empty.png" << "the file is empty";
    QTest::newRow("words") << "words.png" << "not an image this program can read";
    QTest::newRow("damaged data") << "damaged.png" << "damaged image data";
}

void ImageCliTest::theSameBadInputGetsTheSameWords()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    const QString line = QStringLiteral("quaydrop: %1/%2: %3\n").arg(m_tree.path(), name, reason);
    const QList<QStringList> commands{{"resize", "--width", "20"}, {"convert", "jpg"}, {"convert", "png"}, {"img2pdf"}};
    for (const QStringList &command : commands) {
        const Run run = quaydrop(command + QStringList{name}, m_tree.path());
        QVERIFY2(run.code == 1 && run.out.isEmpty(),
                 qPrintable(QStringLiteral("%1: exit %2, out %3, err %4").arg(command.join(' ')).arg(run.code).arg(run.out, run.err)));
        QVERIFY2(run.err.contains(line), qPrintable(command.join(' ') + ": " + run.err));
    }
}

QTEST_MAIN(ImageCliTest)
#include "tst_image_cli.moc"
