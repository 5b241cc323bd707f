// Printing through a real CUPS server with a cups-pdf queue: what comes out of the printer is
// checked page by page against what went in and what the dialog asked for.

#include "CupsSandbox.h"
#include "TestSupport.h"

#include "platform/cups/CupsPrint.h"
#include "sending/PrintDocument.h"
#include "sending/ui/PrintPanel.h"
#include "utils/Utils.h"

#include <QImage>
#include <QRegularExpression>

namespace {

struct PdfFacts
{
    int pages = 0;
    QSizeF paper;    // of the first page, in points, its rotation applied
    QRectF ink;      // where the first page is not white, in fractions of the paper
    bool hasFonts = false; // text drawn as text, not as a picture of it
    QString text;
};

QString run(const QString &program, const QStringList &args) { return QString::fromUtf8(runProgram(program, args).out); }

PdfFacts factsOf(const QString &pdf)
{
    PdfFacts f;
    const QString info = run(QStringLiteral("pdfinfo"), {pdf});
    f.pages = QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)")).match(info).captured(1).toInt();
    const auto size = QRegularExpression(QStringLiteral("Page size:\\s+([\\d.]+) x ([\\d.]+)")).match(info);
    f.paper = QSizeF(size.captured(1).toDouble(), size.captured(2).toDouble());
    if (QRegularExpression(QStringLiteral("Page rot:\\s+(\\d+)")).match(info).captured(1).toInt() % 180 == 90)
        f.paper.transpose();
    // The first page as poppler's own tool draws it, its rotation applied.
    const QString picture = pdf + QStringLiteral(".page");
    run(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("50"), QStringLiteral("-gray"), QStringLiteral("-singlefile"),
                                     QStringLiteral("-f"), QStringLiteral("1"), QStringLiteral("-l"), QStringLiteral("1"), pdf, picture});
    const QImage seen(picture + QStringLiteral(".pgm"));
    QRect ink;
    for (int y = 0; y < seen.height(); ++y)
        for (int x = 0; x < seen.width(); ++x)
            if (qGray(seen.pixel(x, y)) < 224)
                ink |= QRect(x, y, 1, 1);
    if (!seen.isNull())
        f.ink = QRectF(double(ink.x()) / seen.width(), double(ink.y()) / seen.height(), double(ink.width()) / seen.width(),
                       double(ink.height()) / seen.height());
    f.hasFonts = run(QStringLiteral("pdffonts"), {pdf}).count(QLatin1Char('\n')) > 2;
    f.text = run(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    return f;
}

} // namespace

class PrintTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        m_cups = std::make_unique<CupsSandbox>();
        if (!m_cups->ready)
            QSKIP(qPrintable(m_cups->skipReason));
        QCOMPARE(m_service.defaultPrinter(), m_cups->queue);
        writeTextPdf(m_files.path() + QStringLiteral("/three.pdf"), 3);
        writeTextPdf(m_files.path() + QStringLiteral("/wide.pdf"), 1, true);
    }
    void cleanupTestCase() { m_cups.reset(); }
    void pdfGoesAsPdf_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("copies");
        QTest::addColumn<QString>("ranges");
        QTest::addColumn<int>("pages");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<bool>("landscape");
        QTest::newRow("every page") << "three.pdf" << 1 << "" << 3 << QStringList{"Page 1", "Page 2", "Page 3"} << false;
        QTest::newRow("a range") << "three.pdf" << 1 << "2-3" << 2 << QStringList{"Page 2", "Page 3"} << false;
        QTest::newRow("copies of a range") << "three.pdf" << 2 << "1,3" << 4 << QStringList{"Page 1", "Page 3"} << false;
        QTest::newRow("a landscape page") << "wide.pdf" << 1 << "" << 1 << QStringList{"Page 1"} << true;
    }
    void pdfGoesAsPdf()
    {
        QFETCH(QString, file);
        QFETCH(int, copies);
        QFETCH(QString, ranges);
        QFETCH(int, pages);
        QFETCH(QStringList, texts);
        QFETCH(bool, landscape);
        PrintOptions options;
        options.copies = copies;
        options.pageRanges = ranges;
        options.sides = PrintOptions::Sides::TwoSidedLongEdge;
        const int out = printed({m_files.path() + QLatin1Char('/') + file, {}, m_cups->queue, options, {}});
        QVERIFY(out >= 0);
        const PdfFacts facts = factsOf(m_cups->outputs().at(out));
        QCOMPARE(facts.pages, pages);
        // The queue's A4, shown the way the page is; its line of text reads across.
        QCOMPARE(facts.paper.toSize(), landscape ? QSize(842, 595) : QSize(595, 842));
        QVERIFY(facts.ink.width() > facts.ink.height());
        // Still text, not pictures of pages.
        for (const QString &t : texts)
            QVERIFY2(facts.text.contains(t), qPrintable(facts.text));
        QCOMPARE(facts.text.contains(QLatin1String("Page 2")), texts.contains(QLatin1String("Page 2")));
    }
    void imagesAndTextsBecomePages_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("content"); // empty: a picture of `size`
        QTest::addColumn<QSize>("size");
        // The paper is portrait: a wide photo is turned, and either photo fills the printable area
        // across its width or height.
        QTest::newRow("wide photo") << QByteArray("wide.png") << QByteArray() << QSize(1600, 900);
        QTest::newRow("tall photo") << QByteArray("tall.jpg") << QByteArray() << QSize(300, 500);
        QTest::newRow("plain text") << QByteArray("notes.txt") << QByteArray("Dear printer,\nhello.\n") << QSize();
        QTest::newRow("markdown") << QByteArray("read me.md") << QByteArray("# Heading\n\n*Body* text\n") << QSize();
    }
    void imagesAndTextsBecomePages()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, content);
        QFETCH(QSize, size);
        const QString path = QString::fromUtf8(m_files.file(name, content));
        if (size.isValid()) {
            QImage picture(size, QImage::Format_RGB32);
            picture.fill(Qt::darkCyan);
            QVERIFY(picture.save(path));
        }
        const int out = printed({path, {}, m_cups->queue, {}, {}});
        QVERIFY(out >= 0);
        const PdfFacts facts = factsOf(m_cups->outputs().at(out));
        QCOMPARE(facts.pages, 1);
        if (size.isValid()) {
            QVERIFY2(facts.ink.height() > facts.ink.width(), qPrintable(QStringLiteral("%1").arg(facts.ink.height() / facts.ink.width())));
            QVERIFY2(qMax(facts.ink.width(), facts.ink.height()) > 0.85, qPrintable(QStringLiteral("%1 x %2").arg(facts.ink.width()).arg(facts.ink.height())));
            // The turn keeps the proportions: 16:9 stands as 9:16 on the paper (A4 is 1:1.414).
            const double shown = facts.ink.height() * 842 / (facts.ink.width() * 595);
            QVERIFY2(qAbs(shown - double(qMax(size.width(), size.height())) / qMin(size.width(), size.height())) < 0.1, qPrintable(QString::number(shown)));
        } else {
            // Laid out in lines of text, as text.
            QVERIFY(facts.hasFonts);
            QVERIFY(!facts.ink.isEmpty());
        }
    }
    void lockedPdfPrintsAfterItsPassword()
    {
        const QString locked = m_files.path() + QStringLiteral("/locked.pdf");
        QCOMPARE(runProgram(QStringLiteral("qpdf"), {QStringLiteral("--encrypt"), QStringLiteral("s3cret"), QStringLiteral("owner"),
                                                     QStringLiteral("256"), QStringLiteral("--"), m_files.path() + QStringLiteral("/three.pdf"), locked}).code, 0);
        const qsizetype before = m_cups->outputs().size();
        QCOMPARE(PrintDocument::print(m_service, {locked, {}, m_cups->queue, {}, {}}).error().code, int(PrintDocument::NeedsPassword));
        QCOMPARE(PrintDocument::print(m_service, {locked, "wrong", m_cups->queue, {}, {}}).error().code, int(PrintDocument::WrongPassword));
        QCOMPARE(m_cups->outputs().size(), before);
        const int out = printed({locked, "s3cret", m_cups->queue, {}, {}});
        QVERIFY(out >= 0);
        QCOMPARE(factsOf(m_cups->outputs().at(out)).pages, 3);
        QVERIFY(factsOf(m_cups->outputs().at(out)).text.contains(QLatin1String("Page 3")));
        // The decrypted copy lived in the private temporary folder only while it was handed over.
        QVERIFY(QDir(Utils::tempFileOperationsFolder()).entryList({QStringLiteral("print-*")}, QDir::Files).isEmpty());
    }
    void badDocumentsReachNoPrinter_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("code");
        QTest::newRow("empty PDF") << QByteArray("empty.pdf") << QByteArray() << int(PrintDocument::Unreadable);
        QTest::newRow("damaged PDF") << QByteArray("damaged.pdf") << QByteArray("%PDF-1.4\n1 0 obj garbage") << int(PrintDocument::Unreadable);
        QTest::newRow("cut-off PNG") << QByteArray("cut.png") << QByteArray("\x89PNG\r\n\x1a\n\0\0", 10) << int(PrintDocument::Unreadable);
        QTest::newRow("an archive") << QByteArray("a.zip") << QByteArray("PK\x03\x04") << int(PrintDocument::NotPrintable);
    }
    void badDocumentsReachNoPrinter()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, content);
        QFETCH(int, code);
        cups_job_t *jobs = nullptr;
        const int queued = cupsGetJobs2(CUPS_HTTP_DEFAULT, &jobs, nullptr, 0, CUPS_WHICHJOBS_ALL);
        cupsFreeJobs(queued, jobs);
        const auto result = PrintDocument::print(m_service, {QString::fromUtf8(m_files.file(name, content)), {}, m_cups->queue, {}, {}});
        QVERIFY(!result.ok());
        QCOMPARE(result.error().code, code);
        QVERIFY(!result.error().message.isEmpty());
        QCOMPARE(cupsGetJobs2(CUPS_HTTP_DEFAULT, &jobs, nullptr, 0, CUPS_WHICHJOBS_ALL), queued);
        cupsFreeJobs(queued, jobs);
    }
    void vanishedPrinterIsSaid()
    {
        QVERIFY(m_cups->lpadmin({QStringLiteral("-p"), QStringLiteral("Gone"), QStringLiteral("-v"), QStringLiteral("file:///dev/null"),
                                 QStringLiteral("-m"), QStringLiteral("raw"), QStringLiteral("-E")}) ||
                m_cups->lpadmin({QStringLiteral("-p"), QStringLiteral("Gone"), QStringLiteral("-v"), QStringLiteral("cups-pdf:/Gone"),
                                 QStringLiteral("-E")}));
        QVERIFY(m_cups->lpadmin({QStringLiteral("-x"), QStringLiteral("Gone")}));
        const auto result = PrintDocument::print(m_service, {m_files.path() + QStringLiteral("/three.pdf"), {}, QStringLiteral("Gone"), {}, {}});
        QVERIFY(!result.ok());
        QVERIFY2(result.error().code == int(PrintService::PrinterGone), qPrintable(result.error().message));
        QVERIFY(result.error().message.contains(QLatin1String("Gone")));
    }
    void dialogChoicesBecomeOptions()
    {
        QPrinter printer;
        printer.setPrinterName(m_cups->queue);
        printer.setCopyCount(3);
        printer.setCollateCopies(false);
        printer.setPrintRange(QPrinter::PageRange);
        printer.setPageRanges(QPageRanges::fromString(QStringLiteral("2-4,7")));
        printer.setDuplex(QPrinter::DuplexShortSide);
        printer.setPageOrientation(QPageLayout::Landscape);
        printer.setPageSize(QPageSize(QPageSize::Letter));
        const PrintOptions o = printOptionsOf(printer);
        QCOMPARE(o.copies, 3);
        QVERIFY(!o.collate);
        QCOMPARE(o.pageRanges, QStringLiteral("2-4,7"));
        QCOMPARE(o.sides, PrintOptions::Sides::TwoSidedShortEdge);
        QCOMPARE(o.orientation, PrintOptions::Orientation::Landscape);
        // The server got them as the printing system's own words, and the paper came out as chosen.
        const int out = printed({m_files.path() + QStringLiteral("/three.pdf"), {}, m_cups->queue, o, {}});
        QVERIFY(out >= 0);
        const QByteArray control = m_cups->jobControl(m_lastJob);
        for (const char *word : {"two-sided-short-edge", "separate-documents-uncollated-copies", "page-ranges"})
            QVERIFY2(control.contains(word), word);
        const PdfFacts facts = factsOf(m_cups->outputs().at(out));
        QCOMPARE(facts.pages, 2 * 3); // pages 2 and 3 of three, three times
        QCOMPARE(qRound(qMin(facts.paper.width(), facts.paper.height())), 612); // Letter
        QCOMPARE(qRound(qMax(facts.paper.width(), facts.paper.height())), 792);
    }
    void commandLine()
    {
        const QString pdf = m_files.path() + QStringLiteral("/three.pdf");
        const ProgramRun printedTwice = runProgram(QStringLiteral(QD_QUAYDROP_BINARY), {QStringLiteral("print"), QStringLiteral("--copies"), QStringLiteral("2"),
                                                                                   QStringLiteral("--pages"), QStringLiteral("3"), pdf});
        QCOMPARE(printedTwice.code, 0);
        const QString line = QString::fromUtf8(printedTwice.out);
        const auto job = QRegularExpression(QStringLiteral("^%1-(\\d+)\\t(.*)\\n$").arg(m_cups->queue)).match(line);
        QVERIFY2(job.hasMatch(), qPrintable(line));
        QCOMPARE(job.captured(2), pdf);
        QVERIFY(m_cups->waitForJob(job.captured(1).toInt()));
        QTRY_VERIFY_WITH_TIMEOUT(factsOf(m_cups->outputs().constLast()).pages == 2, 10000);

        // Without a default printer (a server with none), a clear error and nothing printed.
        QProcessEnvironment none = QProcessEnvironment::systemEnvironment();
        none.insert(QStringLiteral("CUPS_SERVER"), m_files.path() + QStringLiteral("/no-server.sock"));
        none.insert(QStringLiteral("HOME"), m_files.path());
        const ProgramRun refused = runProgram(QStringLiteral(QD_QUAYDROP_BINARY), {QStringLiteral("print"), pdf}, {}, none);
        QCOMPARE(refused.code, 1);
        QVERIFY(refused.err.contains("no default printer"));
    }

private:
    // Prints the job and waits for it; the number of the PDF that came out, or -1.
    int printed(const PrintDocument::Job &job)
    {
        const qsizetype before = m_cups->outputs().size();
        const auto id = PrintDocument::print(m_service, job);
        m_lastJob = id.ok() ? id.value() : -1;
        if (!id.ok()) {
            qWarning("%s", qPrintable(id.error().message));
            return -1;
        }
        if (!m_cups->waitForJob(id.value())) {
            qWarning("job %d did not complete: %s", id.value(), qPrintable(m_cups->log()));
            return -1;
        }
        QDeadlineTimer written(10000);
        while (m_cups->outputs().size() == before && !written.hasExpired())
            QTest::qWait(100);
        return m_cups->outputs().size() > before ? int(m_cups->outputs().size() - 1) : -1;
    }
    std::unique_ptr<CupsSandbox> m_cups;
    int m_lastJob = -1;
    CupsPrint m_service;
    TestTree m_files;
};

QTEST_MAIN(PrintTest)
#include "tst_print.moc"
