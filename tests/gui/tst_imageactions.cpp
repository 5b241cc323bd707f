// The image and PDF actions through the window: the overlays' typing and keys, what each completion
// writes and credits, where results go, the password sheet, and the panel coming back afterwards.

#include "ImageFixtures.h"
#include "LaunchedProgram.h"

#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/overlays/LockedPDFEnterPass.h"
#include "core/overlays/PdfToImgVC.h"
#include "core/texts/Texts.h"
#include "core/window/ActionPanelView.h"
#include "core/window/DropWindow.h"
#include "images/jobs/ConvertJob.h"
#include "utils/Utils.h"
#include "widgets/ActionButton.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QSlider>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

class ImageActionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void typingKeepsProportions();
    void severalImagesTakeOneSideOnly();
    void proportionBoxPutsTheOldSizeBack();
    void arrowKeysStepTheFocusedField();
    void doneButtonGuardsAgainstNothing();
    void unchangedSizeDoesNothing();
    void resizeWritesBesideTheSourceAndCredits();
    void resizeToAStoredDestination();
    void imagesFromAnotherApplicationAskForAFolder();
    void convertingSeveralImages();
    void sliderSnapsInTheOverlay();
    void pdfPagesAndTheirNotification();
    void lockedPdfAsksForItsPassword();
    void unreadablePdfSaysSoAndKeepsTheOverlay();
    void textDocumentToPdf();
    void failuresAreShown();

private:
    QString makeImage(const QString &name, int w, int h, const char *format = "png");
    void drop(const QStringList &paths);
    ActionButton *button(const QString &name) const;
    quint64 ledgerTotal() const;
    QPushButton *tagButton(QWidget *overlay, qint64 tag) const;
    void waitForNotification(int count);

    QTemporaryDir m_dir;
    std::unique_ptr<FakePlatform> m_fakes;
    std::unique_ptr<AppDelegate> m_app;
};

void ImageActionsTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    Texts::setLanguage(QStringLiteral("en"));
}

void ImageActionsTest::init()
{
    m_fakes = std::make_unique<FakePlatform>(m_dir.path() + QStringLiteral("/.trash"));
    m_app = launchedOn(*m_fakes);
    m_app->showDropTargetAt(QPointF(400, 300));
}

void ImageActionsTest::cleanup()
{
    m_app.reset();
    for (QWidget *w : QApplication::topLevelWidgets())
        if (qobject_cast<QMessageBox *>(w) || qobject_cast<QFileDialog *>(w))
            delete w;
    SettingsStore::shared().resetAll();
    QDir(m_dir.path()).removeRecursively();
    QDir().mkpath(m_dir.path());
}

QString ImageActionsTest::makeImage(const QString &name, int w, int h, const char *format)
{
    const QString path = m_dir.path() + QChar('/') + name;
    ImageFixtures::write(path, ImageFixtures::encoded(ImageFixtures::picture(w, h), format));
    return path;
}

void ImageActionsTest::drop(const QStringList &paths)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &p : paths)
        urls.append(QUrl::fromLocalFile(p));
    data.setUrls(urls);
    m_app->showDropTargetAt(QPointF(400, 300));
    m_app->mycustomviewDidGetDrop(&data);
}

ActionButton *ImageActionsTest::button(const QString &name) const
{
    return m_app->window->contentView()->findChild<ActionButton *>(name);
}

quint64 ImageActionsTest::ledgerTotal() const
{
    return Utils::getTimeSavedDictionaryValues().value_or(QVariantMap{}).value(QStringLiteral("totalSecSaved")).toULongLong();
}

QPushButton *ImageActionsTest::tagButton(QWidget *overlay, qint64 tag) const
{
    for (QPushButton *b : overlay->findChildren<QPushButton *>())
        if (b->property("tag").toLongLong() == tag && b->isVisible())
            return b;
    return nullptr;
}

void ImageActionsTest::waitForNotification(int count)
{
    QTRY_COMPARE_WITH_TIMEOUT(int(m_fakes->notifications.delivered.size()), count, 20000);
}

void ImageActionsTest::typingKeepsProportions()
{
    drop({makeImage(QStringLiteral("wide.png"), 1000, 750)});
    button(QStringLiteral("resizeImgBtn"))->click();
    ImgResizeOverlayVC *vc = m_app->imgResizeVC;
    QVERIFY(m_app->isModalOverlayVisible());
    QCOMPARE(vc->widthTextField->text(), QStringLiteral("1000"));
    QCOMPARE(vc->heightTextField->text(), QStringLiteral("750"));
    QVERIFY(vc->cropRotateBtn->isEnabled());
    vc->widthTextField->clear();
    QTest::keyClicks(vc->widthTextField, QStringLiteral("333"));
    QCOMPARE(vc->heightTextField->text(), QStringLiteral("249"));
    vc->heightTextField->clear();
    QTest::keyClicks(vc->heightTextField, QStringLiteral("375"));
    QCOMPARE(vc->widthTextField->text(), QStringLiteral("500"));
    QTest::keyClick(vc->heightTextField, Qt::Key_Backspace);
    QTest::keyClick(vc->heightTextField, Qt::Key_Backspace);
    QTest::keyClick(vc->heightTextField, Qt::Key_Backspace);
    QCOMPARE(vc->widthTextField->text(), QString()); // an emptied side empties the other
    vc->proportionCheckBox->setChecked(false);
    vc->widthTextField->setText(QStringLiteral("10"));
    QTest::keyClicks(vc->widthTextField, QStringLiteral("0"));
    QCOMPARE(vc->heightTextField->text(), QString()); // off: the fields are independent
}

void ImageActionsTest::severalImagesTakeOneSideOnly()
{
    drop({makeImage(QStringLiteral("w.png"), 100, 50), makeImage(QStringLiteral("t.png"), 50, 100)});
    button(QStringLiteral("multiResizeImg"))->click();
    ImgResizeOverlayVC *vc = m_app->imgResizeVC;
    QVERIFY(vc->multiFilesMode());
    QCOMPARE(vc->widthTextField->text(), QString());
    QVERIFY(!vc->cropRotateBtn->isEnabled());
    QTest::keyClicks(vc->heightTextField, QStringLiteral("9"));
    QTest::keyClicks(vc->widthTextField, QStringLiteral("20"));
    QCOMPARE(vc->heightTextField->text(), QString());
    vc->doneBtn->click();
    waitForNotification(1);
    QCOMPARE(Utils::getImageDimensionsAsStringImgPath(m_dir.path() + QStringLiteral("/w_20x10.png")), QStringLiteral("20x10"));
    QCOMPARE(Utils::getImageDimensionsAsStringImgPath(m_dir.path() + QStringLiteral("/t_20x40.png")), QStringLiteral("20x40"));
}

void ImageActionsTest::proportionBoxPutsTheOldSizeBack()
{
    drop({makeImage(QStringLiteral("p.png"), 64, 48)});
    button(QStringLiteral("resizeImgBtn"))->click();
    ImgResizeOverlayVC *vc = m_app->imgResizeVC;
    vc->proportionCheckBox->setChecked(false);
    vc->widthTextField->setText(QStringLiteral("5"));
    vc->heightTextField->setText(QStringLiteral("7"));
    vc->proportionCheckBox->setChecked(true);
    QCOMPARE(vc->widthTextField->text(), QStringLiteral("64"));
    QCOMPARE(vc->heightTextField->text(), QStringLiteral("48"));
}

void ImageActionsTest::arrowKeysStepTheFocusedField()
{
    drop({makeImage(QStringLiteral("a.png"), 200, 100)});
    button(QStringLiteral("resizeImgBtn"))->click();
    ImgResizeOverlayVC *vc = m_app->imgResizeVC;
    QTest::keyClick(vc->widthTextField, Qt::Key_Up);
    QCOMPARE(vc->widthTextField->text(), QStringLiteral("201"));
    QCOMPARE(vc->heightTextField->text(), QStringLiteral("100")); // 100.5 truncated
    vc->widthTextField->setText(QStringLiteral("12345"));
    QTest::keyClick(vc->widthTextField, Qt::Key_Up);
    QCOMPARE(vc->widthTextField->text(), QStringLiteral("12345"));
    vc->heightTextField->setText(QStringLiteral("1"));
    QTest::keyClick(vc->heightTextField, Qt::Key_Down);
    QCOMPARE(vc->heightTextField->text(), QStringLiteral("1"));
    vc->heightTextField->clear();
    QTest::keyClick(vc->heightTextField, Qt::Key_Down);
    QCOMPARE(vc->heightTextField->text(), QStringLiteral("-1"));
}

void ImageActionsTest::doneButtonGuardsAgainstNothing()
{
    drop({makeImage(QStringLiteral("g.png"), 30, 30)});
    button(QStringLiteral("resizeImgBtn"))->click();
    ImgResizeOverlayVC *vc = m_app->imgResizeVC;
    vc->widthTextField->setText(QStringLiteral("0"));
    vc->heightTextField->clear();
    const quint64 before = ledgerTotal();
    vc->doneBtn->click();
    QVERIFY(m_app->isModalOverlayVisible()); // the guard held
    // Return goes without the guard: credited, nothing written.
    QTest::keyClick(vc->widthTextField, Qt::Key_Return);
    QVERIFY(!m_app->isModalOverlayVisible());
    QCOMPARE(ledgerTotal(), before + 150);
    QTest::qWait(300);
    QCOMPARE(QDir(m_dir.path()).entryList(QDir::Files).size(), 1);
}

void ImageActionsTest::unchangedSizeDoesNothing()
{
    drop({makeImage(QStringLiteral("same.png"), 40, 20)});
    button(QStringLiteral("resizeImgBtn"))->click();
    const quint64 before = ledgerTotal();
    m_app->imgResizeVC->doneBtn->click();
    QVERIFY(!m_app->isModalOverlayVisible());
    QCOMPARE(ledgerTotal(), before);
    QTest::qWait(300);
    QVERIFY(m_fakes->notifications.delivered.isEmpty());
    QCOMPARE(QDir(m_dir.path()).entryList(QDir::Files).size(), 1);
}

void ImageActionsTest::resizeWritesBesideTheSourceAndCredits()
{
    const QString source = makeImage(QStringLiteral("Harbour.png"), 300, 200);
    drop({source});
    QWidget *panel = m_app->window->contentView();
    button(QStringLiteral("resizeImgBtn"))->click();
    ImgResizeOverlayVC *vc = m_app->imgResizeVC;
    vc->widthTextField->setText(QStringLiteral("150"));
    vc->heightTextField->setText(QStringLiteral("100"));
    const quint64 before = ledgerTotal();
    vc->doneBtn->click();
    QVERIFY(m_app->emptyContviewIsShown);
    waitForNotification(1);
    const auto &note = m_fakes->notifications.delivered.first();
    QCOMPARE(note.title, QStringLiteral("Images resized"));
    QCOMPARE(note.body, QStringLiteral("Saved to /%1").arg(QFileInfo(m_dir.path()).fileName()));
    const QString output = m_dir.path() + QStringLiteral("/Harbour_150x100.png");
    QCOMPARE(note.userInfo.value(QStringLiteral("filePaths")).toStringList(), QStringList{output});
    QCOMPARE(Utils::getImageDimensionsAsStringImgPath(output), QStringLiteral("150x100"));
    QCOMPARE(ledgerTotal(), before + 150);
    QTRY_VERIFY(!m_app->emptyContviewIsShown);
    QCOMPARE(m_app->window->contentView(), panel); // back to the panel for the next action
}

void ImageActionsTest::resizeToAStoredDestination()
{
    const QString elsewhere = m_dir.path() + QStringLiteral("/Exports");
    QVERIFY(QDir().mkpath(elsewhere));
    Utils::updateMoveCopyPaths({elsewhere});
    drop({makeImage(QStringLiteral("d.png"), 80, 80)});
    button(QStringLiteral("resizeImgBtn"))->click();
    ImgResizeOverlayVC *vc = m_app->imgResizeVC;
    const int index = vc->destinationPop->findText(QStringLiteral("Exports"));
    QVERIFY(index > 0);
    vc->destinationPop->setCurrentIndex(index);
    QCOMPARE(vc->selectedDestinationPath(), elsewhere);
    vc->widthTextField->setText(QStringLiteral("8"));
    vc->heightTextField->setText(QStringLiteral("8"));
    vc->doneBtn->click();
    waitForNotification(1);
    QVERIFY(QFileInfo::exists(elsewhere + QStringLiteral("/d_8x8.png")));
}

void ImageActionsTest::imagesFromAnotherApplicationAskForAFolder()
{
    const QString source = makeImage(QStringLiteral("o.png"), 50, 50);
    drop({source});
    m_app->droppedImageFromOtherApp = true;
    Utils::updateMoveCopyPaths({m_dir.path()});
    button(QStringLiteral("resizeImgBtn"))->click();
    ImgResizeOverlayVC *vc = m_app->imgResizeVC;
    vc->destinationPop->setCurrentIndex(1); // ignored for such an image
    vc->widthTextField->setText(QStringLiteral("10"));
    vc->heightTextField->setText(QStringLiteral("10"));
    const quint64 before = ledgerTotal();
    vc->doneBtn->click();
    QCOMPARE(ledgerTotal(), before + 200);
    QFileDialog *panel = nullptr;
    QTRY_VERIFY((panel = m_app->window->findChild<QFileDialog *>(QStringLiteral("chooseFolderPanel"))));
    QCOMPARE(panel->windowTitle(), QStringLiteral("Save result to…"));
    // It opens where a folder is, with its button ready: this test's home has no desktop folder.
    QVERIFY(panel->directory().exists());
    QDialogButtonBox *buttons = panel->findChild<QDialogButtonBox *>();
    QVERIFY(buttons && buttons->button(QDialogButtonBox::Open)->isEnabled());
    QVERIFY(m_app->isModalOverlayVisible()); // until a folder is chosen
    const QString chosen = m_dir.path() + QStringLiteral("/chosen");
    QVERIFY(QDir().mkpath(chosen));
    panel->selectFile(chosen);
    static_cast<QDialog *>(panel)->accept();
    waitForNotification(1);
    QVERIFY(QFileInfo::exists(chosen + QStringLiteral("/o_10x10.png")));
    QVERIFY(!QFileInfo::exists(m_dir.path() + QStringLiteral("/o_10x10.png")));
}

void ImageActionsTest::convertingSeveralImages()
{
    const QStringList images{makeImage(QStringLiteral("one.png"), 20, 20), makeImage(QStringLiteral("two.bmp"), 20, 20, "bmp"),
                             makeImage(QStringLiteral("three.jpg"), 20, 20, "jpeg")};
    drop(images);
    button(QStringLiteral("multiConvrtImg"))->click();
    ImgConvertOverlayVC *vc = m_app->imgConvrtVC;
    QVERIFY(vc->mergeToPDFCheck->isEnabled());
    const quint64 before = ledgerTotal();
    vc->typeButton(2)->click();
    waitForNotification(1);
    QCOMPARE(ledgerTotal(), before + 90); // 30 for each image
    const QStringList written = m_fakes->notifications.delivered.first().userInfo.value(QStringLiteral("filePaths")).toStringList();
    QCOMPARE(written, QStringList({m_dir.path() + "/one.jpg", m_dir.path() + "/two.jpg", m_dir.path() + "/three 1.jpg"}));
    QCOMPARE(m_fakes->notifications.delivered.first().title, QStringLiteral("Images converted"));

    // Merged into one PDF, named after the first image.
    button(QStringLiteral("multiConvrtImg"))->click();
    vc->mergeToPDFCheck->setChecked(true);
    vc->typeButton(ConvertJob::kPdfTag)->click();
    waitForNotification(2);
    QCOMPARE(m_fakes->notifications.delivered.last().userInfo.value(QStringLiteral("filePaths")).toStringList(),
             QStringList{m_dir.path() + QStringLiteral("/one.pdf")});
}

void ImageActionsTest::sliderSnapsInTheOverlay()
{
    drop({makeImage(QStringLiteral("s.png"), 10, 10)});
    button(QStringLiteral("revealImginFinderBtn"))->click();
    ImgConvertOverlayVC *vc = m_app->imgConvrtVC;
    QVERIFY(m_app->isModalOverlayVisible());
    QVERIFY(!vc->mergeToPDFCheck->isEnabled()); // one image: nothing to merge
    vc->compressFactorSlider->setValue(37);
    QCOMPARE(vc->compressFactorSlider->value(), 35);
    QCOMPARE(vc->comprFactorLbl->text(), QStringLiteral("35%"));
    float factor = -1;
    qint64 tag = -1;
    vc->setImgConvrtCompletion([&](qint64 t, float f, qint64) {
        tag = t;
        factor = f;
    });
    tagButton(vc, OverlayController::kCloseTag)->click();
    QCOMPARE(tag, OverlayController::kCloseTag);
    QCOMPARE(factor, 0.65f);
}

void ImageActionsTest::pdfPagesAndTheirNotification()
{
    const QString pdf = m_dir.path() + QStringLiteral("/Invoice.pdf");
    QVERIFY(ImageFixtures::pdfWithPages(pdf, {QSizeF(72, 72), QSizeF(144, 72)}));
    drop({pdf});
    ActionButton *toImages = button(QStringLiteral("convrtPDFToImgBtn"));
    QVERIFY(toImages && toImages->isVisible());
    toImages->click();
    PdfToImgVC *vc = m_app->pdfToImgConvVC;
    vc->DPItxtFld->setText(QStringLiteral("144"));
    const quint64 before = ledgerTotal();
    tagButton(vc, 1)->click();
    waitForNotification(1);
    const auto &note = m_fakes->notifications.delivered.first();
    const QString folder = m_dir.path() + QStringLiteral("/Invoice");
    QCOMPARE(note.title, QStringLiteral("PDF pages saved as images"));
    QCOMPARE(note.body, QStringLiteral("Saved to /Invoice"));
    QCOMPARE(note.userInfo.value(QStringLiteral("filePaths")).toStringList(), QStringList{folder});
    QCOMPARE(Utils::getImageDimensionsAsStringImgPath(folder + QStringLiteral("/Page_2.png")), QStringLiteral("288x144"));
    QCOMPARE(ledgerTotal(), before + 20);
}

void ImageActionsTest::lockedPdfAsksForItsPassword()
{
    if (QStandardPaths::findExecutable(QStringLiteral("qpdf")).isEmpty())
        QSKIP("qpdf is missing: scripts/install-deps.sh installs it");
    const QString plain = m_dir.path() + QStringLiteral("/plain.pdf");
    const QString pdf = m_dir.path() + QStringLiteral("/Locked.pdf");
    QVERIFY(ImageFixtures::pdfWithPages(plain, {QSizeF(36, 36)}));
    QCOMPARE(QProcess::execute(QStringLiteral("qpdf"), {"--encrypt", "quay", "owner", "256", "--", plain, pdf}), 0);
    drop({pdf});
    button(QStringLiteral("convrtPDFToImgBtn"))->click();
    auto sheet = [this] { return m_app->window->findChild<LockedPDFEnterPass *>(); };
    auto unlock = [&](const QString &password) {
        sheet()->pdfPassTxtFld->setText(password);
        sheet()->findChild<QPushButton *>(QStringLiteral("unlockBtn"))->click();
    };
    // Cancel: the overlay waits for another try.
    tagButton(m_app->pdfToImgConvVC, 2)->click();
    QTRY_VERIFY(sheet() && sheet()->isVisible());
    QCOMPARE(sheet()->pdfPassTxtFld->echoMode(), QLineEdit::Password);
    QVERIFY(!sheet()->wrongPassLbl->isVisible());
    sheet()->findChild<QPushButton *>(QStringLiteral("cancelBtn"))->click();
    QTRY_VERIFY(!m_app->enterLockedPDFPass);
    QVERIFY(m_app->isModalOverlayVisible());
    // A wrong password is said, and the same sheet takes the right one.
    tagButton(m_app->pdfToImgConvVC, 2)->click();
    QTRY_VERIFY(sheet() && sheet()->isVisible());
    unlock(QStringLiteral("wrong"));
    QVERIFY(sheet() && sheet()->isVisible());
    QVERIFY(sheet()->wrongPassLbl->isVisible());
    QCOMPARE(sheet()->wrongPassLbl->text(), QStringLiteral("This password does not open the PDF. Try again."));
    QVERIFY(!QFileInfo::exists(m_dir.path() + QStringLiteral("/Locked")));
    unlock(QStringLiteral("quay"));
    QTRY_VERIFY(!m_app->enterLockedPDFPass);
    waitForNotification(1);
    QVERIFY(QFileInfo::exists(m_dir.path() + QStringLiteral("/Locked/Page_1.jpg")));
}

void ImageActionsTest::unreadablePdfSaysSoAndKeepsTheOverlay()
{
    const QString pdf = m_dir.path() + QStringLiteral("/broken.pdf");
    ImageFixtures::write(pdf, "%PDF-1.4 and then nothing");
    drop({pdf});
    button(QStringLiteral("convrtPDFToImgBtn"))->click();
    tagButton(m_app->pdfToImgConvVC, 1)->click();
    QVERIFY(m_app->isModalOverlayVisible());
    QMessageBox *alert = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *box = qobject_cast<QMessageBox *>(w); box && box->isVisible())
            alert = box;
    QVERIFY(alert);
    QCOMPARE(alert->text(), QStringLiteral("This PDF cannot be read"));
    QVERIFY(alert->informativeText().contains(QStringLiteral("broken.pdf")));
    QVERIFY(!QFileInfo::exists(m_dir.path() + QStringLiteral("/broken")));
}

void ImageActionsTest::textDocumentToPdf()
{
    const QString txt = m_dir.path() + QStringLiteral("/Notes.txt");
    ImageFixtures::write(txt, "Quay notes\nShips at dawn.\n");
    ImageFixtures::write(m_dir.path() + QStringLiteral("/Notes.pdf"), "an older PDF of the user's");
    drop({txt});
    const quint64 before = ledgerTotal();
    button(QStringLiteral("convToPDFbtn"))->click();
    QCOMPARE(ledgerTotal(), before + 40);
    waitForNotification(1);
    const auto &note = m_fakes->notifications.delivered.first();
    QCOMPARE(note.title, QStringLiteral("Saved as PDF"));
    const QString made = m_dir.path() + QStringLiteral("/Notes 1.pdf");
    QCOMPARE(note.body, QStringLiteral("to ../%1/Notes 1.pdf").arg(QFileInfo(m_dir.path()).fileName()));
    QCOMPARE(note.userInfo.value(QStringLiteral("filePaths")).toStringList(), QStringList{made});
    QFile older(m_dir.path() + QStringLiteral("/Notes.pdf"));
    QVERIFY(older.open(QIODevice::ReadOnly));
    QCOMPARE(older.readAll(), QByteArray("an older PDF of the user's"));
    QFile pdf(made);
    QVERIFY(pdf.open(QIODevice::ReadOnly));
    QVERIFY(pdf.read(5) == "%PDF-");
}

void ImageActionsTest::failuresAreShown()
{
    // An image whose data is damaged behind a good header: the panel opens, the resize fails.
    const QString bad = m_dir.path() + QStringLiteral("/bad.png");
    ImageFixtures::write(bad, ImageFixtures::damagedPng(ImageFixtures::picture(100, 100)));
    drop({bad});
    button(QStringLiteral("resizeImgBtn"))->click();
    m_app->imgResizeVC->widthTextField->setText(QStringLiteral("10"));
    m_app->imgResizeVC->heightTextField->setText(QStringLiteral("10"));
    m_app->imgResizeVC->doneBtn->click();
    QMessageBox *alert = nullptr;
    QTRY_VERIFY_WITH_TIMEOUT([&] {
        for (QWidget *w : QApplication::topLevelWidgets())
            if (auto *box = qobject_cast<QMessageBox *>(w); box && box->isVisible())
                alert = box;
        return alert != nullptr;
    }(), 20000);
    QCOMPARE(alert->text(), QStringLiteral("Nothing was written"));
    QVERIFY(alert->informativeText().contains(QStringLiteral("bad.png")));
    QVERIFY(m_fakes->notifications.delivered.isEmpty());
    QVERIFY(!QFileInfo::exists(m_dir.path() + QStringLiteral("/bad_10x10.png")));
    delete alert;

    // No image behind the name at all: no overlay at 0 x 0, but the reason.
    const QString words = m_dir.path() + QStringLiteral("/words.png");
    ImageFixtures::write(words, "just words");
    drop({words});
    button(QStringLiteral("resizeImgBtn"))->click();
    QVERIFY(!m_app->isModalOverlayVisible());
    alert = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *box = qobject_cast<QMessageBox *>(w); box && box->isVisible())
            alert = box;
    QVERIFY(alert);
    QCOMPARE(alert->text(), QStringLiteral("The size of this image cannot be read"));
    QVERIFY(alert->informativeText().contains(QStringLiteral("words.png")));
}

QTEST_MAIN(ImageActionsTest)
#include "tst_imageactions.moc"
