// Mail, share and print after a real drop: on a real X server a PDF is dragged from a drag source of
// the test's own onto the drop window (XDND, the pointer driven by XTest through xdotool), and the
// panel's buttons are pressed with the pointer. The services are the desktop's real ones: the default
// mail program from mimeapps.list (a stub Thunderbird that records its arguments), the share targets
// this desktop has (a stub viewer for PDFs), and a CUPS server of the test's own with a cups-pdf queue.

#include "CupsSandbox.h"
#include "SendingFixtures.h"
#include "core/window/ActionPanelView.h"
#include "gui/LaunchedProgram.h"
#include "platform/cups/CupsPrint.h"
#include "platform/freedesktop/FreedesktopMail.h"
#include "platform/freedesktop/FreedesktopShare.h"
#include "sending/FileUris.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>

using SendingFixtures::StubDesktop;

class SendingEndToEndTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // No test mode for the standard paths: the desktop's files are looked up where a desktop keeps them,
        // in the private XDG folders of the stub desktop.
        QVERIFY2(QGuiApplication::platformName() == QLatin1String("xcb"), "needs an X server (run under xvfb-run)");
        QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty(), "xdotool is missing");
        m_cups = std::make_unique<CupsSandbox>();
        m_desktop = std::make_unique<StubDesktop>();
        m_desktop->stubProgram("thunderbird");
        m_desktop->desktopFile("thunderbird", "Thunderbird", "thunderbird %u", "x-scheme-handler/mailto;");
        m_desktop->stubProgram("quayviewer");
        m_desktop->desktopFile("quayviewer", "Quay Viewer", "quayviewer %F", "application/pdf;");
        m_desktop->setDefaults("x-scheme-handler/mailto=thunderbird.desktop\n");
        // No session bus here: no mail portal, so the mail program's own command line is used.
        m_mail = std::make_unique<FreedesktopMail>();
        m_share = std::make_unique<FreedesktopShare>();
        m_pdf = QString::fromUtf8(m_desktop->tree.native()) + QStringLiteral("/Quay invoice & co.pdf");
        writeTextPdf(m_pdf, 3);
    }

    void init()
    {
        f.launch({}, [this](Platform &services) {
            services.mail = m_mail.get();
            services.share = m_share.get();
            services.print = &m_print;
        });
        f.app->showDropTargetAt(QPointF(600, 400));
        QVERIFY(QTest::qWaitForWindowExposed(f.app->window));

        // The source's window sits at the top left; a press there and a glide onto the drop window drop it.
        m_source.start(QStringLiteral(QD_DRAGSOURCE), {QStringLiteral("--files"), m_pdf});
        QByteArray said;
        QTRY_VERIFY((said += m_source.readAllStandardOutput()).contains("ready"));
        const QPoint target = f.app->window->mapToGlobal(f.app->window->rect().center());
        dragWithThePointer(QPoint(100, 100), (target.x() - 100) / 10, (target.y() - 100) / 10, 10);
        QTRY_VERIFY_WITH_TIMEOUT(f.app->oneofThePanelsIsShown, 10000);
        QCOMPARE(f.app->filePathsArr, QStringList{m_pdf});
    }

    void cleanup()
    {
        m_source.kill();
        m_source.waitForFinished(3000);
        f.close();
    }

    void mailAttachesTheDroppedFile()
    {
        m_desktop->forget("thunderbird");
        press("mailFileBtn");
        QVERIFY(SendingFixtures::waitForFile(m_desktop->record("thunderbird")));
        const QByteArray uri = FileUris::fromPaths({m_pdf}).first().toUtf8();
        QCOMPARE(SendingFixtures::readArguments(m_desktop->record("thunderbird")),
                 (QList<QByteArray>{"-compose", "attachment='" + uri + "'"}));
    }

    void shareListsWhatThisDesktopHas()
    {
        press("airDropBtn");
        QMenu *menu = nullptr;
        QTRY_VERIFY((menu = sharePicker()) != nullptr);
        QStringList shown;
        for (QAction *a : menu->actions())
            if (!a->isSeparator())
                shown.append(a->objectName());
        // The mail program and the one application that opens PDFs here; neither KDE Connect nor
        // Bluetooth, whose tools this desktop lacks; then what Quaydrop does itself.
        QStringList expected{QStringLiteral("mail"), QStringLiteral("open-with:quayviewer")};
        if (!QStandardPaths::findExecutable(QStringLiteral("bluetooth-sendto")).isEmpty() ||
            !QStandardPaths::findExecutable(QStringLiteral("bluedevil-sendfile")).isEmpty())
            expected.append(QStringLiteral("bluetooth"));
        expected << QStringLiteral("save-as") << QStringLiteral("copy-links");
        if (QStandardPaths::findExecutable(QStringLiteral("kdeconnect-cli")).isEmpty())
            QCOMPARE(shown, expected);
        QAction *viewer = menu->findChild<QAction *>(QStringLiteral("open-with:quayviewer"));
        QVERIFY(viewer);
        m_desktop->forget("quayviewer");
        clickAt(menu->mapToGlobal(menu->actionGeometry(viewer).center()));
        QVERIFY(SendingFixtures::waitForFile(m_desktop->record("quayviewer")));
        QCOMPARE(SendingFixtures::readArguments(m_desktop->record("quayviewer")), QList<QByteArray>{m_pdf.toUtf8()});
    }

    void printPutsOutTheSamePages()
    {
        if (!m_cups->ready)
            QSKIP(qPrintable(m_cups->skipReason));
        const qsizetype before = m_cups->outputs().size();
        press("printPrTbleFileBtn");
        QPrintDialog *dialog = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((dialog = f.app->window->findChild<QPrintDialog *>()) && dialog->isVisible(), 10000);
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
        QCOMPARE(dialog->printer()->printerName(), m_cups->queue);
        QPushButton *print = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
        QVERIFY(print);
        clickAt(print->mapToGlobal(print->rect().center()));
        QTRY_VERIFY_WITH_TIMEOUT(m_cups->outputs().size() > before, 60000);
        QTRY_COMPARE_WITH_TIMEOUT(pdfPageCount(m_cups->outputs().constLast()), 3, 10000);
    }

private:
    void press(const char *outlet)
    {
        ActionButton *button = f.button(QLatin1String(outlet));
        QVERIFY2(button && button->isVisible() && button->isEnabled(), outlet);
        clickAt(button->mapToGlobal(button->rect().center()));
    }
    std::unique_ptr<CupsSandbox> m_cups;
    std::unique_ptr<StubDesktop> m_desktop;
    std::unique_ptr<FreedesktopMail> m_mail;
    std::unique_ptr<FreedesktopShare> m_share;
    CupsPrint m_print;
    LaunchedFixture f;
    QString m_pdf;
    QProcess m_source;
};

QTEST_MAIN(SendingEndToEndTest)
#include "tst_sending_e2e.moc"
