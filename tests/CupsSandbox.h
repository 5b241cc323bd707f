#pragma once

// A CUPS server of the test's own: cupsd on a private configuration, spool and socket, with one
// cups-pdf queue whose PDFs land in a folder of the test. Needs root (cupsd runs backends as root
// only then, and the queue's cups-pdf settings live in /etc/cups); `skipReason` says why not.

#include "TestSupport.h"
#include "TestTree.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <cups/cups.h>
#include <unistd.h>

// A PDF with "Page N" in Helvetica on each page: a font every PDF reader and converter knows, so
// that the text can still be read back after the printing system's filters.
inline void writeTextPdf(const QString &path, int pages, bool landscape = false)
{
    QByteArray kids;
    for (int i = 0; i < pages; ++i)
        kids += QByteArray::number(4 + 2 * i) + " 0 R ";
    QByteArrayList objects{"<< /Type /Catalog /Pages 2 0 R >>",
                           "<< /Type /Pages /Kids [" + kids + "] /Count " + QByteArray::number(pages) + " >>",
                           "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
    for (int i = 1; i <= pages; ++i) {
        const QByteArray content = "BT /F1 48 Tf 72 300 Td (Page " + QByteArray::number(i) + ") Tj ET";
        objects << "<< /Type /Page /Parent 2 0 R /MediaBox " + QByteArray(landscape ? "[0 0 842 595]" : "[0 0 595 842]") +
                       " /Resources << /Font << /F1 3 0 R >> >> /Contents " + QByteArray::number(3 + 2 * i) + " 0 R >>"
                << "<< /Length " + QByteArray::number(content.size()) + " >>\nstream\n" + content + "\nendstream";
    }
    writeFile(path, pdfOf(objects));
}

// The number of pages, as pdfinfo counts them; 0 for what it cannot read.
inline int pdfPageCount(const QString &pdf)
{
    const QByteArray info = runProgram(QStringLiteral("pdfinfo"), {pdf}).out;
    const qsizetype at = info.indexOf("Pages:");
    return at < 0 ? 0 : info.mid(at + 6, info.indexOf('\n', at) - at - 6).trimmed().toInt();
}

class CupsSandbox
{
public:
    CupsSandbox()
        : queue(QStringLiteral("QdPdf%1").arg(::getpid())),
          cupsPdfConf(QStringLiteral("/etc/cups/cups-pdf-%1.conf").arg(queue))
    {
        if (::geteuid() != 0) {
            skipReason = QStringLiteral("cupsd and the cups-pdf backend need root");
            return;
        }
        for (const char *needed : {"/usr/sbin/cupsd", "/usr/lib/cups/backend/cups-pdf", "/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd"}) {
            if (!QFile::exists(QString::fromLatin1(needed))) {
                skipReason = QStringLiteral("%1 is missing (scripts/install-deps.sh installs cups and cups-pdf)").arg(needed);
                return;
            }
        }
        // The socket's path must stay short (108 bytes); the tree's is.
        const QString root = m_tree.path();
        for (const char *d : {"conf", "spool", "cache", "state", "log", "out"})
            m_tree.folder(d);
        ::chmod((m_tree.native() + "/out").constData(), 0777);
        ::chmod(m_tree.native().constData(), 0755);
        ::chmod((m_tree.native() + "/spool").constData(), 0755);
        socket = root + QStringLiteral("/cups.sock");
        outDir = root + QStringLiteral("/out");
        spoolDir = root + QStringLiteral("/spool");
        writeFile(m_tree.at(QStringLiteral("conf/cupsd.conf")),
                  QStringLiteral("Listen %1\nLogLevel warn\nWebInterface No\nBrowsing Off\nDefaultAuthType None\nDirtyCleanInterval 0\n"
                             "<Location />\n Order allow,deny\n Allow all\n</Location>\n"
                                 "<Policy default>\n <Limit All>\n  Order deny,allow\n </Limit>\n</Policy>\n")
                      .arg(socket)
                      .toUtf8());
        writeFile(m_tree.at(QStringLiteral("conf/cups-files.conf")),
                  QStringLiteral("ServerRoot %1/conf\nRequestRoot %1/spool\nCacheDir %1/cache\nStateDir %1/state\n"
                             "TempDir %1/spool\nAccessLog %1/log/access_log\nErrorLog %1/log/error_log\n"
                                 "PageLog %1/log/page_log\nPrintcap\nServerBin /usr/lib/cups\nDataDir /usr/share/cups\n")
                      .arg(root)
                      .toUtf8());
        // cups-pdf's own printer description, with the copies made by CUPS's filters so that each
        // copy shows up as pages of the PDF that comes out, and two-sided printing to choose.
        QByteArray text = TestTree::contents(QStringLiteral("/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd"));
        text.replace("*PCFileName:", "*cupsManualCopies: True\n"
                                     "*OpenUI *Duplex/2-Sided Printing: PickOne\n*OrderDependency: 10 AnySetup *Duplex\n"
                                     "*DefaultDuplex: None\n*Duplex None/Off: \"\"\n*Duplex DuplexNoTumble/Long Edge: \"\"\n"
                                     "*Duplex DuplexTumble/Short Edge: \"\"\n*CloseUI: *Duplex\n*PCFileName:");
        m_tree.file("conf/queue.ppd", text);
        QFile::remove(cupsPdfConf);
        writeFile(cupsPdfConf, QStringLiteral("Out %1\nUserUMask 0000\nLabel 0\n").arg(outDir).toUtf8());

        qputenv("CUPS_SERVER", socket.toUtf8());
        m_cupsd.setProgram(QStringLiteral("/usr/sbin/cupsd"));
        m_cupsd.setArguments({QStringLiteral("-f"), QStringLiteral("-c"), root + QStringLiteral("/conf/cupsd.conf"),
                              QStringLiteral("-s"), root + QStringLiteral("/conf/cups-files.conf")});
        m_cupsd.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_cupsd.start();
        m_cupsd.waitForStarted(5000);
        QDeadlineTimer up(10000);
        while (!QFile::exists(socket) && !up.hasExpired() && m_cupsd.state() == QProcess::Running)
            QTest::qWait(50);
        if (!QFile::exists(socket)) {
            skipReason = QStringLiteral("cupsd did not start: %1").arg(log());
            return;
        }
        if (!lpadmin({QStringLiteral("-p"), queue, QStringLiteral("-v"), QStringLiteral("cups-pdf:/") + queue,
                      QStringLiteral("-P"), root + QStringLiteral("/conf/queue.ppd"), QStringLiteral("-E")}) ||
            !lpadmin({QStringLiteral("-d"), queue})) {
            skipReason = QStringLiteral("the cups-pdf queue could not be added: %1").arg(log());
            return;
        }
        ready = true;
    }

    ~CupsSandbox()
    {
        if (m_cupsd.state() != QProcess::NotRunning) {
            m_cupsd.terminate();
            if (!m_cupsd.waitForFinished(5000))
                m_cupsd.kill();
            m_cupsd.waitForFinished(2000);
        }
        QFile::remove(cupsPdfConf);
    }

    bool lpadmin(const QStringList &args) const { return runProgram(QStringLiteral("lpadmin"), args).code == 0; }

    // Waits until the job has left the queue; true when it completed.
    bool waitForJob(int job, int ms = 60000) const
    {
        QDeadlineTimer deadline(ms);
        while (!deadline.hasExpired()) {
            cups_job_t *jobs = nullptr;
            const int n = cupsGetJobs2(CUPS_HTTP_DEFAULT, &jobs, queue.toUtf8().constData(), 0, CUPS_WHICHJOBS_ALL);
            ipp_jstate_t state = IPP_JSTATE_PENDING;
            for (int i = 0; i < n; ++i)
                if (jobs[i].id == job)
                    state = jobs[i].state;
            cupsFreeJobs(n, jobs);
            if (state >= IPP_JSTATE_STOPPED)
                return state == IPP_JSTATE_COMPLETED;
            QTest::qWait(100);
        }
        return false;
    }

    // The PDFs cups-pdf wrote, oldest first.
    QStringList outputs() const
    {
        QStringList found;
        for (const QFileInfo &f : QDir(outDir).entryInfoList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Time | QDir::Reversed))
            found.append(f.filePath());
        return found;
    }

    // What the server kept of the job's request (its IPP attributes, in a binary file).
    QByteArray jobControl(int job) const { return TestTree::contents(QStringLiteral("%1/c%2").arg(spoolDir).arg(job, 5, 10, QLatin1Char('0'))); }

    QString log() const { return QString::fromUtf8(TestTree::contents(m_tree.at(QStringLiteral("log/error_log"))).right(2000)); }

    bool ready = false;
    QString skipReason;
    const QString queue;
    const QString cupsPdfConf;
    QString socket, outDir, spoolDir;

private:
    TestTree m_tree;
    QProcess m_cupsd;
};
