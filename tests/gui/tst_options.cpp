// The tray presence: the options panel's controls and their settings, the status window's place and
// its comings and goings, the slides, the language switch, the way back to a hidden icon, and the
// exclusion list with its picker of installed applications.

#include "LaunchedProgram.h"

#include "core/NotificationCenter.h"
#include "core/ledger/TimeSavedLedger.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/plist/Plist.h"
#include "menubar/ExclusionListWC.h"
#include "menubar/options/PopMenuContentViewController.h"
#include "menubar/statusitem/CCNStatusItem.h"
#include "menubar/statusitem/StatusWindowGeometry.h"
#include "menubar/tutorial/MIHSliderView.h"
#include "menubar/tutorial/QDIntroSlides.h"
#include "platform/freedesktop/XdgAutostart.h"
#include "widgets/controls/ITSwitch.h"

#include <QCheckBox>
#include <QComboBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QToolButton>

namespace {

void swipe(QWidget *target, Qt::ScrollPhase phase, int dx)
{
    QWheelEvent e(QPointF(10, 10), QPointF(10, 10), QPoint(dx, 0), QPoint(dx * 8, 0), Qt::NoButton, {}, phase, false);
    QApplication::sendEvent(target, &e);
}

QStringList postedNames(const std::function<void()> &action)
{
    QStringList names;
    QObject context;
    for (const char *n : {NotificationName::StatusItemWindowWillShow, NotificationName::StatusItemWindowDidShow,
                          NotificationName::StatusItemWindowWillDismiss, NotificationName::StatusItemWindowDidDismiss})
        NotificationCenter::defaultCenter().observe(QString::fromLatin1(n), &context,
                                                    [&names, n](const QVariantMap &) { names << QString::fromLatin1(n); });
    action();
    return names;
}

} // namespace

class OptionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        englishTestMode();
        // Applications for the exclusion list's picker, one of them a hidden helper.
        const QList<QPair<QString, QString>> apps = {
            {"org.gimp.GIMP", "GIMP"}, {"org.kde.krita", "Krita"}, {"org.inkscape.Inkscape", "Inkscape"}, {"helper", "Helper"}};
        for (const auto &[id, name] : apps)
            writtenFile(m_apps.filePath(id + QStringLiteral(".desktop")),
                        "[Desktop Entry]\nType=Application\nName=" + name.toUtf8() + "\nExec=" + id.toUtf8() + "\n" +
                            (id == u"helper" ? "NoDisplay=true\n" : ""));
    }

    void init()
    {
        QFile::remove(Utils::getTimeSavedPlistPath()); // each case starts from no time saved
        SettingsStore::shared().setBool(SettingsKey::DontShowIntroSlider, true);
        f.launch();
        QVERIFY(panel());
    }

    void cleanup()
    {
        QFile::remove(Utils::pathForExlAppsPlist());
        f.close();
        Texts::setLanguage(QStringLiteral("en"));
    }

    void summonBoxesExcludeEachOtherAndTheKeyIsRecorded_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<bool>("keyBefore");
        QTest::addColumn<bool>("shortcutEnabled");
        QTest::newRow("tick the key") << "onHotkeyCheckBox" << false << true;
        QTest::newRow("untick the key") << "onHotkeyCheckBox" << true << false;
        QTest::newRow("tick drags") << "onClickCheckBox" << true << false;
        QTest::newRow("untick drags") << "onClickCheckBox" << false << true;
    }

    void summonBoxesExcludeEachOtherAndTheKeyIsRecorded()
    {
        QFETCH(QString, box);
        QFETCH(bool, keyBefore);
        QFETCH(bool, shortcutEnabled);
        PopMenuContentViewController *p = panel();
        SettingsStore::shared().setBool(SettingsKey::ShowPanelHKEnabled, keyBefore);
        p->refresh();
        QCOMPARE(p->onHotkeyCheckBox->isChecked(), keyBefore);
        int notices = 0;
        QObject context;
        NotificationCenter::defaultCenter().observe(QString::fromLatin1(NotificationName::ActivateViaSettingsChanged), &context,
                                                    [&](const QVariantMap &) { ++notices; });
        (box == u"onHotkeyCheckBox" ? p->onHotkeyCheckBox : p->onClickCheckBox)->click();
        QCOMPARE(notices, 1);
        QCOMPARE(Utils::isShortcutEnabled(), shortcutEnabled);
        QCOMPARE(p->onHotkeyCheckBox->isChecked(), shortcutEnabled);
        QCOMPARE(p->onClickCheckBox->isChecked(), !shortcutEnabled); // never both, never neither
        QCOMPARE(p->shortcutView->isEnabled(), shortcutEnabled);
        // The key is grabbed or released to match.
        QCOMPARE(f.fakes->hotKey.bound, shortcutEnabled ? QStringLiteral("Ctrl+Alt+F") : QString());
        if (!shortcutEnabled)
            return;
        // A recorded key is stored, one combination, and taken instead.
        p->shortcutView->setFocus();
        p->shortcutView->setKeySequence(QKeySequence(QStringLiteral("Ctrl+Shift+D, Ctrl+X")));
        p->shortcutRecorded();
        QCOMPARE(Utils::showPanelHotKey(), QStringLiteral("Ctrl+Shift+D"));
        QCOMPARE(f.fakes->hotKey.bound, QStringLiteral("Ctrl+Shift+D"));
        // A key another program holds: said under the recorder.
        f.fakes->hotKey.refuse = true;
        p->shortcutView->setKeySequence(QKeySequence(QStringLiteral("Ctrl+Alt+K")));
        p->shortcutRecorded();
        QVERIFY(!p->hotKeyProblemLbl->isHidden());
        QVERIFY(p->hotKeyProblemLbl->text().contains(QStringLiteral("Ctrl+Alt+K")));
    }

    void switchesWriteTheirSettings()
    {
        PopMenuContentViewController *p = panel();
        QVERIFY(p->onOffSwitch->isOn()); // each start is switched on
        QTest::mouseClick(p->onOffSwitch, Qt::LeftButton);
        QVERIFY(!Utils::QuaydropIsOFFSate());
        QVERIFY(f.app->statusItem()->appearsDisabled());
        QVERIFY(p->enableUserNotificationsSwitch->isOn());
        QTest::mouseClick(p->enableUserNotificationsSwitch, Qt::LeftButton);
        QVERIFY(!Utils::enableUserNotifWhenDoneSwitchValue());
        QTest::mouseClick(p->launchAtLoginSwitch, Qt::LeftButton);
        QVERIFY(f.fakes->loginItems.enabled);
        // The panel reads back what is stored when it shows again.
        SettingsStore::shared().setBool(SettingsKey::EnableUserNotifWhenDoneSwitch, true);
        f.fakes->loginItems.enabled = false;
        NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::StatusItemWindowWillShow));
        QVERIFY(p->enableUserNotificationsSwitch->isOn());
        QVERIFY(!p->launchAtLoginSwitch->isOn());
        // With the desktop's autostart folder: the entry written, and removed again.
        XdgAutostart autostart(QStringLiteral("/opt/quay drop/quaydrop"));
        Platform services = f.fakes->services();
        services.loginItems = &autostart;
        Platform::install(services);
        PopMenuContentViewController withAutostart;
        QVERIFY(!QFile::exists(XdgAutostart::entryPath()));
        QTest::mouseClick(withAutostart.launchAtLoginSwitch, Qt::LeftButton);
        QFile entry(XdgAutostart::entryPath());
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const QByteArray text = entry.readAll();
        QVERIFY(text.contains("Exec=\"/opt/quay drop/quaydrop\""));
        QVERIFY(Utils::isLogInAtLaunch());
        QTest::mouseClick(withAutostart.launchAtLoginSwitch, Qt::LeftButton);
        QVERIFY(!QFile::exists(XdgAutostart::entryPath()));
        QVERIFY(!withAutostart.launchAtLoginSwitch->isOn());
        Platform::install(f.fakes->services());
    }

    void timeSavedAndTheShareThreshold_data()
    {
        QTest::addColumn<quint64>("seconds");
        QTest::addColumn<bool>("menu");
        QTest::newRow("1199: not yet") << quint64(1199) << false;
        QTest::newRow("1200: the menu") << quint64(1200) << true;
    }

    void timeSavedAndTheShareThreshold()
    {
        QFETCH(quint64, seconds);
        QFETCH(bool, menu);
        Utils::saveChangesToTimeSavedPlistByAddingSec(seconds);
        PopMenuContentViewController *p = panel();
        p->refresh();
        QCOMPARE(p->timeSavedTotalLbl->text(), relativeTime(seconds));
        auto *share = p->findChild<QPushButton *>(QStringLiteral("shareTimeBtn2"));
        QVERIFY(share);
        share->click();
        QTest::qWait(50);
        QCOMPARE(p->shareTimeSubMenu->isVisible(), menu);
        QCOMPARE(visibleAlert() != nullptr, !menu);
        if (menu) {
            QCOMPARE(p->postOnTwitterMenuItem->property("tag").toInt(), 2);
            p->shareTimeSubMenu->hide();
            p->postOnTwitterMenuItem->trigger();
            QCOMPARE(f.fakes->workspace.opened.size(), 1);
            QVERIFY(f.fakes->workspace.opened.first().startsWith(QStringLiteral("https://twitter.com/intent/tweet?text=")));
            QVERIFY(QUrl::fromPercentEncoding(f.fakes->workspace.opened.first().toUtf8()).contains(relativeTime(seconds)));
        }
    }

    void languageSwitchChangesVisibleTexts()
    {
        PopMenuContentViewController *p = panel();
        p->showExclusionList();
        const QString englishTitle = p->exclListWC()->windowTitle();
        QCOMPARE(p->onClickCheckBox->text(), QStringLiteral("When a drag starts"));
        p->languagePop->setCurrentIndex(p->languagePop->findData(2));
        p->changeLanguage(2);
        QCOMPARE(Texts::language(), QStringLiteral("de"));
        // Open windows hear of it through the event loop.
        QTRY_COMPARE(p->onClickCheckBox->text(), QStringLiteral("Sobald ein Ziehen beginnt"));
        QCOMPARE(p->optionsSubMenu->actions().first()->text(), Texts::localized("exclListMenuItem"));
        QVERIFY(p->optionsSubMenu->actions().first()->text() != QStringLiteral("Exclusion List…"));
        // Other open windows too: the resize overlay's title and buttons.
        QTRY_COMPARE(f.app->imgResizeVC->findChild<QPushButton *>(QStringLiteral("doneBtn"))->text(), QStringLiteral("Größe"));
        QTRY_VERIFY(p->exclListWC()->windowTitle() != englishTitle);
        QTRY_COMPARE(f.app->statusItem()->trayIcon()->contextMenu()->actions().at(2)->text(), QStringLiteral("Quaydrop beenden"));
        QCOMPARE(p->exclListWC()->windowTitle(), Texts::localized("exclListTitle"));
        // Kept for the next start.
        QCOMPARE(Texts::startupLanguage(), QStringLiteral("de"));
        p->changeLanguage(1);
        QTRY_COMPARE(p->onClickCheckBox->text(), QStringLiteral("When a drag starts"));
        QCOMPARE(p->languagePop->currentData().toInt(), 1);
        // A language without texts falls back to the system's, now and at the next start.
        QVERIFY(Texts::chooseLanguage(QStringLiteral("de")));
        QVERIFY(Texts::chooseLanguage(QStringLiteral("fr")));
        QCOMPARE(Texts::language(), Texts::preferredLanguage());
        QCOMPARE(Texts::startupLanguage(), Texts::preferredLanguage());
    }

    void statusWindowStaysOnScreen_data()
    {
        QTest::addColumn<QRectF>("icon");
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<bool>("above");
        QTest::newRow("panel at the top, in the middle") << QRectF(600, 0, 24, 24) << QRectF(462, 26, 300, 400) << false;
        QTest::newRow("top right corner: pushed in") << QRectF(1250, 0, 24, 24) << QRectF(980, 26, 300, 400) << false;
        QTest::newRow("panel at the bottom: above the icon") << QRectF(600, 776, 24, 24) << QRectF(462, 374, 300, 400) << true;
        QTest::newRow("bottom left corner") << QRectF(0, 776, 24, 24) << QRectF(0, 374, 300, 400) << true;
    }

    void statusWindowStaysOnScreen()
    {
        QFETCH(QRectF, icon);
        QFETCH(QRectF, frame);
        QFETCH(bool, above);
        bool wentAbove = false;
        QCOMPARE(StatusWindowGeometry::frameOnScreen(icon, QSizeF(300, 400), 2.0, QRectF(0, 0, 1280, 800), &wentAbove), frame);
        QCOMPARE(wentAbove, above);
    }

    void hidingTheIconAndTheWayBack()
    {
        PopMenuContentViewController *p = panel();
        p->hideMenuBarIcon();
        QMessageBox *alert = p->hideIconAlert();
        QVERIFY(alert && alert->isVisible());
        alert->buttons().at(1)->click(); // Cancel changes nothing
        QVERIFY(!f.app->statusItem()->isRemoved());
        QVERIFY(!Utils::shouldHideStatusBarItem());
        p->hideMenuBarIcon();
        QTRY_VERIFY(p->hideIconAlert());
        p->hideIconAlert()->buttons().at(0)->click();
        QVERIFY(f.app->statusItem()->isRemoved());
        QVERIFY(Utils::shouldHideStatusBarItem()); // a second start brings it back: e2e_tray
    }

    void statusWindowComesAndGoesAndWithoutATrayIsANormalWindow_data()
    {
        QTest::addColumn<QColor>("window");
        QTest::addColumn<QColor>("text");
        QTest::newRow("light") << QColor(239, 239, 239) << QColor(20, 20, 20);
        QTest::newRow("dark") << QColor(45, 45, 48) << QColor(230, 230, 230);
    }

    void statusWindowComesAndGoesAndWithoutATrayIsANormalWindow()
    {
        QFETCH(QColor, window);
        QFETCH(QColor, text);
        const QPalette before = QApplication::palette();
        QPalette theme = before;
        theme.setColor(QPalette::Window, window);
        theme.setColor(QPalette::WindowText, text);
        QApplication::setPalette(theme);
        // First as the panel under an icon, in its comings and goings, then as what a desktop without a
        // tray gets.
        CCNStatusItemWindowController *c = f.app->statusItem()->windowController();
        QStringList names = postedNames([&] {
            c->showStatusItemWindow(QRect(600, 0, 24, 24), QRect(0, 0, 1280, 800));
            QVERIFY(c->animationIsRunning());
            // A second toggle while it moves is ignored.
            c->dismissStatusItemWindow();
            QTRY_VERIFY(c->windowIsOpen());
        });
        QCOMPARE(names, QStringList({"CCNStatusItemWindowWillShowNotification", "CCNStatusItemWindowDidShowNotification"}));
        QVERIFY(c->window()->isVisible());
        QCOMPARE(c->window()->userContentView(), panel());
        QVERIFY(c->window()->geometry().top() >= 26);
        names = postedNames([&] {
            f.app->statusItem()->handleStatusItemButtonAction();
            QTRY_VERIFY(!c->windowIsOpen() && !c->animationIsRunning());
        });
        QCOMPARE(names, QStringList({"CCNStatusItemWindowWillDismissNotification", "CCNStatusItemWindowDidDismissNotification"}));
        QVERIFY(!c->window()->isVisible());
        // Escape puts it away.
        c->showStatusItemWindow(QRect(600, 0, 24, 24), QRect(0, 0, 1280, 800));
        QTRY_VERIFY(c->windowIsOpen());
        QTest::keyClick(c->window(), Qt::Key_Escape);
        QTRY_VERIFY(!c->windowIsOpen());
        c->showAsNormalWindow();
        QVERIFY(c->window()->isNormalWindow());
        // The window's own background, in the theme's colour, under labels in the theme's text colour.
        const QImage shot = c->window()->grab().toImage();
        QCOMPARE(QColor(shot.pixel(3, 3)), window);
        QCOMPARE(panel()->versionNumberTxtFld->window(), static_cast<QWidget *>(c->window()));
        QCOMPARE(panel()->findChild<QLabel *>()->palette().color(QPalette::WindowText), text);
        QApplication::setPalette(before);
    }

    void slidesNavigateTheTimerAndSwipesWrap()
    {
        QDIntroSlides slides;
        slides.sliderView->transitionAnimationDuration = 0;
        QCOMPARE(slides.sliderView->slides().size(), 4);
        slides.showPrevSlide(); // the first: nothing
        QCOMPARE(slides.sliderView->indexOfDisplayedSlide(), 0);
        QVERIFY(!slides.prevBtn->isEnabled());
        for (int i = 0; i < 5; ++i)
            slides.showNextSlide();
        QCOMPARE(slides.sliderView->indexOfDisplayedSlide(), 3); // the last: no further
        QCOMPARE(slides.sliderView->dotsControl()->indexOfHighlightedDot(), 3);
        QCOMPARE(slides.nextBtn->text(), Texts::localized("Done"));
        slides.sliderView->dotsControl()->dot(1)->click();
        QCOMPARE(slides.sliderView->indexOfDisplayedSlide(), 1);
        QCOMPARE(slides.sliderView->transitionStyle, MIHSliderView::PushFromLeft);
        slides.sliderView->dotViewSelected(2);
        QCOMPARE(slides.sliderView->transitionStyle, MIHSliderView::PushFromRight);
        slides.dontShowAgainCheck->setChecked(false);
        slides.dontShowAgainCheck->setChecked(true);
        QVERIFY(Utils::dontshowIntroSlides());
        // The timer and swipes wrap around.
        MIHSliderView *v = slides.sliderView;
        QVERIFY(v->transitionTimer()->isActive());
        v->displaySlideAtIndex(3);
        v->handleTimerTick();
        QCOMPARE(v->indexOfDisplayedSlide(), 0); // wraps

        auto swipeBy = [v](int dx) {
            swipe(v, Qt::ScrollBegin, 0);
            swipe(v, Qt::ScrollUpdate, dx);
            swipe(v, Qt::ScrollEnd, 0);
        };
        v->displaySlideAtIndex(0);
        swipeBy(50); // exactly the threshold: nothing
        QCOMPARE(v->indexOfDisplayedSlide(), 0);
        swipeBy(60); // back from the first wraps to the last
        QCOMPARE(v->indexOfDisplayedSlide(), 3);
        QCOMPARE(v->transitionStyle, MIHSliderView::PushFromLeft);
        swipeBy(-60);
        QCOMPARE(v->indexOfDisplayedSlide(), 0);
        QCOMPARE(v->transitionStyle, MIHSliderView::PushFromRight);
        // A plain mouse wheel is no swipe.
        QWheelEvent wheel(QPointF(10, 10), QPointF(10, 10), QPoint(), QPoint(-400, 0), Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(v, &wheel);
        QCOMPARE(v->indexOfDisplayedSlide(), 0);
    }

    void firstStartShowsSlidesThenAsksAboutLogin()
    {
        auto alerts = [] {
            QList<QMessageBox *> shown;
            for (QWidget *w : QApplication::topLevelWidgets())
                if (w->objectName() == QLatin1String("launchAtLoginAlert") && w->isVisible())
                    shown << qobject_cast<QMessageBox *>(w);
            return shown;
        };
        auto lastSlideSays = [](QWidget *slides) {
            QStringList texts;
            for (QLabel *l : static_cast<QDIntroSlides *>(slides)->slide4V->findChildren<QLabel *>())
                texts << l->text();
            return texts;
        };
        f.app.reset();
        SettingsStore::shared().resetAll();
        {
            AppDelegate first(f.fakes->services());
            first.applicationDidFinishLaunching();
            // The last slide says where the options are: here, with no tray, a second start opens them.
            QVERIFY(first.introSlidesWC && first.introSlidesWC->isVisible());
            QVERIFY(!first.livesInTray());
            QVERIFY(lastSlideSays(first.introSlidesWC).contains(Texts::localized("slide4TextNoTray")));
            QDIntroSlides inTray(true);
            QVERIFY(lastSlideSays(&inTray).contains(Texts::localized("slide4Text")));
            // Not on top of the slides: asked about login when they close, saying where Quaydrop is.
            QVERIFY(alerts().isEmpty());
            first.introSlidesWC->close();
            QCOMPARE(alerts().size(), 1);
            QCOMPARE(alerts().first()->informativeText(), Texts::localized("loginLaunchInfTXTNoTray"));
            alerts().first()->buttons().first()->click(); // "Yes"
            QVERIFY(f.fakes->loginItems.enabled);
        }
        QTRY_VERIFY(alerts().isEmpty());
        // Neither slides nor question again, even with login switched off meanwhile.
        f.fakes->loginItems.enabled = false;
        SettingsStore::shared().setBool(SettingsKey::DontShowIntroSlider, true);
        AppDelegate second(f.fakes->services());
        second.applicationDidFinishLaunching();
        QVERIFY(!second.introSlidesWC);
        QVERIFY(alerts().isEmpty());
    }

    void exclusionListNamesPicksAndAsksBeforeRemoving()
    {
        QDir().mkpath(Utils::QDappSupportPath());
        QVERIFY(Plist::writeFileAtomically(Utils::pathForExlAppsPlist(), QStringList{"org.kde.krita", "qd_dragsource"}).ok());
        ExclusionListWC window(entries());
        window.show();
        QCOMPARE(window.exclApps, (QStringList{"org.kde.krita", "qd_dragsource"}));
        // A window class without a desktop file shows as it is.
        QCOMPARE(shownNames(window), (QStringList{"Krita", "qd_dragsource"}));
        window.chooseApplication();
        auto *picker = qobject_cast<ApplicationPicker *>(window.picker());
        QVERIFY(picker);
        // Listed ones and hidden helpers are not offered; the rest by name.
        QStringList offered;
        for (int i = 0; i < picker->list()->count(); ++i)
            offered.append(picker->list()->item(i)->text());
        QCOMPARE(offered, (QStringList{"GIMP", "Inkscape"}));
        picker->filter()->setText(QStringLiteral("ink"));
        QVERIFY(picker->list()->item(0)->isHidden());
        QVERIFY(!picker->list()->item(1)->isHidden());
        picker->list()->item(0)->setSelected(true);
        picker->list()->item(1)->setSelected(true);
        picker->accept();
        QCOMPARE(Utils::exclBndlIDAppsArray(), (QStringList{"org.kde.krita", "qd_dragsource", "org.gimp.GIMP", "org.inkscape.Inkscape"}));
        QCOMPARE(shownNames(window), (QStringList{"Krita", "qd_dragsource", "GIMP", "Inkscape"}));
        QVERIFY(!window.picker());
        // Removing a row asks first, naming the application.
        const auto answer = [&window](int row, const QString &button) {
            window.exclTblView->itemWidget(window.exclTblView->item(row))->findChild<QToolButton *>()->click();
            QMessageBox *question = window.removalQuestion();
            QVERIFY(question);
            QCOMPARE(question->informativeText(), shownNames(window).at(row));
            for (QAbstractButton *b : question->buttons())
                if (b->text() == button)
                    b->click();
        };
        answer(2, Texts::localized("NO"));
        QTRY_VERIFY(!window.removalQuestion()); // answered, and gone
        QCOMPARE(Utils::exclBndlIDAppsArray().size(), 4);
        answer(1, Texts::localized("YES"));
        QCOMPARE(Utils::exclBndlIDAppsArray(), (QStringList{"org.kde.krita", "org.gimp.GIMP", "org.inkscape.Inkscape"}));
        QCOMPARE(shownNames(window), (QStringList{"Krita", "GIMP", "Inkscape"}));
    }

private:
    LaunchedFixture f;
    PopMenuContentViewController *panel() const { return f.app->optionsPanel(); }
    DesktopEntries entries() const { return DesktopEntries::load({m_apps.path()}); }
    static QStringList shownNames(const ExclusionListWC &window)
    {
        QStringList names;
        for (int i = 0; i < window.exclTblView->count(); ++i) {
            QWidget *cell = window.exclTblView->itemWidget(window.exclTblView->item(i));
            const QList<QLabel *> labels = cell->findChildren<QLabel *>();
            for (const QLabel *label : labels)
                if (!label->text().isEmpty())
                    names.append(label->text());
        }
        return names;
    }
    QTemporaryDir m_apps;
};

QTEST_MAIN(OptionsTest)
#include "tst_options.moc"
