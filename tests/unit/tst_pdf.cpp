// PDF both ways: the page rules, page images written in order into a new folder, locked documents,
// damaged ones, images joined into a PDF in natural order with JPEGs embedded untouched, and text laid
// out on pages.

#include "ConvertRequest.h"
#include "ImageFixtures.h"
#include "TestTree.h"

#include "images/jobs/ConvertJob.h"
#include "images/jobs/PdfToImagesJob.h"
#include "images/pdf/ImagesToPdf.h"
#include "images/pdf/JpegInfo.h"
#include "images/pdf/PdfPages.h"
#include "images/pdf/TextToPdf.h"
#include "utils/Utils.h"

#include <poppler-qt6.h>

#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

namespace {

std::unique_ptr<PdfToImagesJob> runPages(const QString &pdf, qint64 type, float dpi, const QByteArray &password = {},
                                         int parallel = 0, quint64 *credited = nullptr)
{
    auto job = std::make_unique<PdfToImagesJob>(
        PdfToImagesJob::Request{pdf, password, QFileInfo(pdf).absolutePath(), type, dpi});
    job->parallelPages = parallel;
    if (credited)
        job->credit = [credited](quint64 s) { *credited += s; };
    return ImageFixtures::ranToEnd(std::move(job));
}

std::unique_ptr<Poppler::Document> open(const QString &path) { return Poppler::Document::load(path); }

// An encrypted copy by qpdf, with a user password (locked) or only an owner password.
bool encrypt(const QString &in, const QString &out, const QString &user)
{
    return QProcess::execute(QStringLiteral("qpdf"),
                             {QStringLiteral("--encrypt"), user, QStringLiteral("owner-secret"), QStringLiteral("256"),
                              QStringLiteral("--"), in, out}) == 0;
}

} // namespace

class PdfTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        m_threePages = m_tree.at(QStringLiteral("a.pdf"));
        QVERIFY(ImageFixtures::pdfWithPages(m_threePages, {QSizeF(612, 792), QSizeF(200, 100), QSizeF(300, 300)}));
        m_haveQpdf = !QStandardPaths::findExecutable(QStringLiteral("qpdf")).isEmpty();
    }
    void resolutionLimits_data()
    {
        QTest::addColumn<float>("asked");
        QTest::addColumn<float>("used");
        QTest::newRow("an empty field") << QString().toFloat() << 150.0f;
        QTest::newRow("29") << 29.0f << 150.0f;
        QTest::newRow("30") << 30.0f << 30.0f;
        QTest::newRow("1000") << 1000.0f << 1000.0f;
        QTest::newRow("5000") << 5000.0f << 1000.0f;
        QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << 150.0f;
    }
    void resolutionLimits()
    {
        QFETCH(float, asked);
        QFETCH(float, used);
        QCOMPARE(PdfPages::clampedDpi(asked), used);
    }
    void naturalOrder_data()
    {
        QTest::addColumn<QStringList>("given");
        QTest::addColumn<QStringList>("sorted");
        QTest::newRow("numbers by value") << QStringList{"/p/img10.png", "/p/img2.png", "/p/img1.png"}
                                          << QStringList{"/p/img1.png", "/p/img2.png", "/p/img10.png"};
        QTest::newRow("case ignored") << QStringList{"/p/b.png", "/p/A.png", "/p/c.png"}
                                      << QStringList{"/p/A.png", "/p/b.png", "/p/c.png"};
        QTest::newRow("the whole path") << QStringList{"/z/a.png", "/a/z.png"} << QStringList{"/a/z.png", "/z/a.png"};
    }
    void naturalOrder()
    {
        QFETCH(QStringList, given);
        QFETCH(QStringList, sorted);
        QCOMPARE(ImagesToPdf::sortArrayInAlphabeticalOrderByFileName(given), sorted);
    }
    void pagesGoIntoANewFolderInOrder()
    {
        quint64 credited = 0;
        const auto job = runPages(m_threePages, 1, 72, {}, 3, &credited);
        const QString folder = m_tree.at(QStringLiteral("a"));
        QCOMPARE(job->folder(), folder);
        QVERIFY(job->failures().isEmpty());
        // Rendered three at a time, written strictly in page order.
        QCOMPARE(job->written(), QStringList({folder + "/Page_1.png", folder + "/Page_2.png", folder + "/Page_3.png"}));
        QCOMPARE(credited, quint64(30));
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(folder + "/Page_1.png"), QStringLiteral("612x792"));
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(folder + "/Page_2.png"), QStringLiteral("200x100"));
        QCOMPARE(job->percent(), 100);
    }
    void pagesStateTheAskedResolution()
    {
        TestTree tree;
        const QString pdf = tree.at(QStringLiteral("letter.pdf"));
        QImage clear(8, 8, QImage::Format_ARGB32);
        clear.fill(Qt::transparent);
        QVERIFY(ImageFixtures::pdfWithPages(pdf, {QSizeF(612, 792)}, clear));
        const auto job = runPages(pdf, 2, 300);
        QCOMPARE(job->written().size(), 1);
        const QString page = job->written().first();
        QVERIFY(page.endsWith(QLatin1String("/letter/Page_1.jpg")));
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(page), QStringLiteral("2550x3300"));
        auto image = VipsSupport::load(page);
        QCOMPARE(VipsSupport::dotsPerInch(image.value()), 300.0);
        // The paper is white, not transparent.
        const QImage pixels = QImage::fromData(TestTree::contents(page));
        QCOMPARE(QColor(pixels.pixel(5, 5)).lightness() > 250, true);
        QCOMPARE(PdfPages::targetPixels(QSizeF(10.5, 10), 72), QSize(11, 10)); // each side rounded
        QCOMPARE(PdfPages::extensionForImgType(9), QStringLiteral("jpg")); // a type outside 1 to 4
        // Each run takes a free folder; each type its own encoder.
        const auto bmp = runPages(pdf, 3, 72);
        QCOMPARE(bmp->folder(), tree.at(QStringLiteral("letter 1")));
        QVERIFY(TestTree::contents(bmp->written().value(0)).startsWith("BM"));
        QCOMPARE(runPages(pdf, 4, 72)->written(), QStringList{tree.at(QStringLiteral("letter 2/Page_1.tiff"))});
    }
    void pagesUpToTheFirstUnusable_data()
    {
        QTest::addColumn<QList<QSizeF>>("pages");
        QTest::addColumn<QStringList>("written");
        const QSizeF page(100, 100);
        QTest::newRow("no pages: an empty folder") << QList<QSizeF>{} << QStringList{};
        // What came before a page below one pixel stays; nothing after it is made.
        QTest::newRow("a page below one pixel") << QList<QSizeF>{page, page, QSizeF(0.5, 0.5), page}
                                                << QStringList{"Page_1.png", "Page_2.png"};
    }
    void pagesUpToTheFirstUnusable()
    {
        QFETCH(QList<QSizeF>, pages);
        QFETCH(QStringList, written);
        TestTree tree;
        const QString pdf = tree.at(QStringLiteral("some.pdf"));
        QVERIFY(ImageFixtures::pdfWithPages(pdf, pages));
        const auto job = runPages(pdf, 1, 30, {}, 4);
        QCOMPARE(job->pageCount(), int(pages.size()));
        QCOMPARE(job->stoppedEarly(), !written.isEmpty());
        if (written.isEmpty())
            QVERIFY(job->failures().isEmpty());
        QCOMPARE(job->written().size(), written.size());
        QVERIFY(QFileInfo(job->folder()).isDir());
        QCOMPARE(QDir(job->folder()).entryList(QDir::Files | QDir::Hidden), written);
    }
    void lockedDocuments()
    {
        if (!m_haveQpdf)
            QSKIP("qpdf is missing: scripts/install-deps.sh installs it");
        const QString locked = m_tree.at(QStringLiteral("locked.pdf"));
        QVERIFY(encrypt(m_threePages, locked, QStringLiteral("s3cret")));
        const auto state = PdfPages::inspect(locked);
        QVERIFY(state.readable && state.locked && state.encrypted);
        QVERIFY(!PdfPages::unlockWithPassword(locked, "wrong"));
        QVERIFY(PdfPages::unlockWithPassword(locked, "s3cret"));

        const auto refused = runPages(locked, 1, 40, "wrong");
        QCOMPARE(refused->failures().size(), 1);
        QVERIFY(refused->failures().first().message.contains(QStringLiteral("password")));
        QVERIFY(refused->folder().isEmpty());
        QVERIFY(!QFileInfo::exists(m_tree.at(QStringLiteral("locked"))));

        const auto opened = runPages(locked, 1, 40, "s3cret");
        QCOMPARE(opened->written().size(), 3);
        // Only an owner password: it opens without one, and still counts as encrypted.
        const QString owner = m_tree.at(QStringLiteral("owner.pdf"));
        QVERIFY(encrypt(m_threePages, owner, QString()));
        const auto ownerOnly = PdfPages::inspect(owner);
        QVERIFY(ownerOnly.readable && !ownerOnly.locked && ownerOnly.encrypted);
        QCOMPARE(runPages(owner, 1, 30)->written().size(), 3);
    }
    void damagedPdfs_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray good = TestTree::contents(m_threePages);
        QTest::newRow("zero bytes") << QByteArray();
        QTest::newRow("random bytes") << QByteArray(5000, '\x42');
        QTest::newRow("a header and nothing else") << QByteArray("%PDF-1.4\n%%EOF\n");
        QTest::newRow("truncated") << good.left(good.size() / 3);
    }
    void damagedPdfs()
    {
        QFETCH(QByteArray, content);
        TestTree tree;
        const QString pdf = tree.at(QStringLiteral("bad.pdf"));
        QVERIFY(ImageFixtures::write(pdf, content));
        const auto state = PdfPages::inspect(pdf);
        const auto job = runPages(pdf, 1, 72);
        if (!state.readable) {
            QVERIFY(!state.problem.isEmpty());
            QCOMPARE(job->failures().size(), 1);
            QVERIFY(job->folder().isEmpty()); // no folder for a document that cannot be read
        }
        // Whatever the reader makes of it: no half-written page under a final name.
        for (const QString &page : job->written())
            QVERIFY(!QImage::fromData(TestTree::contents(page)).isNull());
        QVERIFY(ImageFixtures::leftovers(tree.path()).isEmpty());
    }
    void jpegsGoInUntouched_data()
    {
        QTest::addColumn<int>("orientation"); // 0: no EXIF at all
        for (int o = 0; o <= 8; ++o)
            QTest::addRow("orientation %d", o) << o;
    }
    void jpegsGoInUntouched()
    {
        QFETCH(int, orientation);
        TestTree tree;
        const QString jpg = tree.at(QStringLiteral("photo.jpg"));
        QByteArray jpeg = ImageFixtures::encoded(ImageFixtures::quarters(600, 300), "jpeg", 300, 90);
        if (orientation > 0)
            jpeg = ImageFixtures::withOrientation(jpeg, orientation);
        QVERIFY(ImageFixtures::write(jpg, jpeg));
        const auto pdf = ImagesToPdf::convertSingleImgToPDF(jpg, tree.path());
        QVERIFY(pdf.ok());
        QCOMPARE(pdf.value(), tree.at(QStringLiteral("photo.pdf")));
        const QByteArray written = TestTree::contents(pdf.value());
        QVERIFY(written.contains(jpeg)); // the very bytes, DCTDecode
        QVERIFY(written.contains("/DCTDecode"));
        QVERIFY(written.size() < jpeg.size() + 1200);
        const auto doc = open(pdf.value());
        QVERIFY(doc);
        QCOMPARE(doc->numPages(), 1);
        // 600 x 300 pixels at 300 dpi, standing as a viewer shows the photo.
        const QImage seen = ImageFixtures::seenByAViewer(jpg);
        QCOMPARE(doc->page(0)->pageSizeF(), orientation >= 5 ? QSizeF(72, 144) : QSizeF(144, 72));
        QVERIFY(ImageFixtures::sameQuarters(doc->page(0)->renderToImage(300, 300), seen));
    }
    void otherImagesAreDeflatedWithTheirTransparency()
    {
        TestTree tree;
        const QString png = tree.at(QStringLiteral("clear.png"));
        QImage half(40, 20, QImage::Format_ARGB32);
        half.fill(Qt::transparent);
        for (int y = 0; y < 20; ++y)
            for (int x = 20; x < 40; ++x)
                half.setPixel(x, y, qRgba(0, 0, 255, 255));
        QVERIFY(ImageFixtures::write(png, ImageFixtures::encoded(half, "png")));
        const auto pdf = ImagesToPdf::convertSingleImgToPDF(png, tree.path());
        QVERIFY(pdf.ok());
        QVERIFY(TestTree::contents(pdf.value()).contains("/SMask"));
        const auto doc = open(pdf.value());
        const QImage page = doc->page(0)->renderToImage(72, 72);
        QCOMPARE(page.size(), QSize(40, 20));
        QVERIFY(QColor(page.pixel(5, 10)).lightness() > 250); // clear shows the paper
        QVERIFY(QColor(page.pixel(35, 10)).blue() > 200);
    }
    void onlyPageImagesBecomePages()
    {
        TestTree tree;
        const QString heic = tree.at(QStringLiteral("phone.heic"));
        const QString text = tree.at(QStringLiteral("notes.txt"));
        const QString bad = tree.at(QStringLiteral("broken.jpg"));
        const QString good = tree.at(QStringLiteral("good.bmp"));
        QVERIFY(ImageFixtures::write(heic, "heic bytes"));
        QVERIFY(ImageFixtures::write(text, "words"));
        QVERIFY(ImageFixtures::write(bad, QByteArray(100, '\x01')));
        QVERIFY(ImageFixtures::write(good, ImageFixtures::encoded(ImageFixtures::picture(8, 8), "bmp")));
        auto merged = ImagesToPdf::doExportAsPDFarr({heic, text, bad, good}, tree.at(QStringLiteral("m.pdf")));
        QVERIFY(merged.ok());
        QCOMPARE(merged.value().pages, 1);
        QCOMPARE(merged.value().skipped.size(), 1); // the unreadable JPEG; the others are no page images at all
        // Only what is no page image at all: a PDF without pages.
        auto none = ImagesToPdf::doExportAsPDFarr({heic, text}, tree.at(QStringLiteral("none.pdf")));
        QVERIFY(none.ok());
        QCOMPARE(none.value().pages, 0);
        QVERIFY(TestTree::contents(tree.at(QStringLiteral("none.pdf"))).contains("/Count 0"));
        // One image that cannot be read gives no PDF at all.
        QVERIFY(!ImagesToPdf::convertSingleImgToPDF(bad, tree.path()).ok());
        QVERIFY(!QFileInfo::exists(tree.at(QStringLiteral("broken.pdf"))));
        QVERIFY(!ImagesToPdf::convertSingleImgToPDF(heic, tree.path()).ok());
    }
    void anExistingPdfIsKept()
    {
        TestTree tree;
        const QString img = tree.at(QStringLiteral("x.gif"));
        QVERIFY(ImageFixtures::write(img, ImageFixtures::animatedGif({100})));
        const QString taken = tree.at(QStringLiteral("x.pdf"));
        QVERIFY(ImageFixtures::write(taken, "mine"));
        const auto direct = ImagesToPdf::doExportAsPDFarr({img}, taken);
        QVERIFY(!direct.ok());
        QCOMPARE(direct.error().code, EEXIST);
        QCOMPARE(TestTree::contents(taken), QByteArray("mine"));
        const auto single = ImagesToPdf::convertSingleImgToPDF(img, tree.path());
        QCOMPARE(single.value(), tree.at(QStringLiteral("x 1.pdf")));
    }
    void jpegHeaders_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<int>("width"); // 0: no JPEG a PDF can take as it is
        QTest::addColumn<int>("components");
        const QImage pic = ImageFixtures::picture(33, 17);
        QTest::newRow("colour") << ImageFixtures::encoded(pic, "jpeg") << 33 << 3;
        QTest::newRow("grey") << ImageFixtures::encoded(pic.convertToFormat(QImage::Format_Grayscale8), "jpeg") << 33 << 1;
        QTest::newRow("PNG") << ImageFixtures::encoded(pic, "png") << 0 << 0;
        QTest::newRow("cut before the frame") << ImageFixtures::encoded(pic, "jpeg").left(30) << 0 << 0;
        QTest::newRow("nothing") << QByteArray() << 0 << 0;
    }
    void jpegHeaders()
    {
        QFETCH(QByteArray, data);
        QFETCH(int, width);
        QFETCH(int, components);
        const auto info = JpegInfo::parse(data);
        QCOMPARE(info.has_value(), width > 0);
        if (info) {
            QCOMPARE(info->width, width);
            QCOMPARE(info->height, 17);
            QCOMPARE(info->components, components);
        }
    }
    void textIsLaidOutOnPages()
    {
        TestTree tree;
        const QString txt = tree.at(QStringLiteral("Report.txt"));
        QByteArray text;
        for (int i = 1; i <= 150; ++i)
            text += "Line " + QByteArray::number(i) + " of the quay report, with umlauts: Kühe über Brücken\n";
        QVERIFY(ImageFixtures::write(txt, text));
        const QString pdf = tree.at(QStringLiteral("Report.pdf"));
        QVERIFY(TextToPdf::saveAsPDF(txt, pdf).ok());
        const auto doc = open(pdf);
        QVERIFY(doc);
        QVERIFY(doc->numPages() >= 2);
        QVERIFY(doc->page(0)->text(QRectF()).contains(QStringLiteral("Line 1 of the quay report")));
        QVERIFY(doc->page(0)->text(QRectF()).contains(QStringLiteral("Brücken")));
        // A second time: the first PDF is the user's now and stays.
        const Status again = TextToPdf::saveAsPDF(txt, pdf);
        QVERIFY(!again.ok());
        QCOMPARE(again.error().code, EEXIST);
        // What is no text is refused; HTML gives its text, not its tags.
        const QString png = ImageFixtures::imageFile(tree.at(QStringLiteral("pic.png")), ImageFixtures::picture(4, 4));
        QVERIFY(!TextToPdf::saveAsPDF(png, tree.at(QStringLiteral("pic.pdf"))).ok());
        QVERIFY(!TextToPdf::saveAsPDF(tree.at(QStringLiteral("missing.txt")), tree.at(QStringLiteral("m.pdf"))).ok());
        const QString html = tree.at(QStringLiteral("page.html"));
        QVERIFY(ImageFixtures::write(html, "<html><body><h1>Harbour</h1><p>Ships</p></body></html>"));
        QVERIFY(TextToPdf::saveAsPDF(html, tree.at(QStringLiteral("page.pdf"))).ok());
        const QString words = open(tree.at(QStringLiteral("page.pdf")))->page(0)->text(QRectF());
        QVERIFY(!words.contains(QStringLiteral("<h1>")) && words.contains(QStringLiteral("Harbour")));
    }

private:
    TestTree m_tree;
    QString m_threePages;
    bool m_haveQpdf = false;
};

QTEST_MAIN(PdfTest)
#include "tst_pdf.moc"
