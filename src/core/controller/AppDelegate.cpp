#include "AppDelegate.h"

#include "core/NotificationCenter.h"
#include "core/settings/SettingsStore.h"
#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "editor/ui/CropImgWC.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "menubar/options/PopMenuContentViewController.h"
#include "menubar/statusitem/CCNStatusItem.h"
#include "menubar/tutorial/QDIntroSlides.h"
#include "utils/Utils.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <QMessageBox>
#include <QPushButton>
#include <QStyleHints>

AppDelegate::AppDelegate(const Platform &platform, QObject *parent) : QObject(parent), m_platform(platform)
{
    connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::applicationWillTerminate);
    buildWindow();
}

AppDelegate::~AppDelegate()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    if (modalOverlay)
        modalOverlay->delegate = nullptr;
    delete statusItemForYos; // its window lets go of the panel first
    statusItemForYos = nullptr;
    delete m_options;
    delete introSlidesWC;
    delete m_cropEditor;
    delete window;
}

void AppDelegate::applicationDidFinishLaunching()
{
    // 1. Clicks on delivered notifications come back here.
    if (m_platform.notifications)
        connect(m_platform.notifications, &NotificationService::activated, this,
                [this](const QVariantMap &info) { userNotificationCenterDidActivate(info, 1); });
    // 2.-4. The job list, the progress table and the drop views were wired when the window was built.
    // 5.
    Utils::cleanUPTepmFileOperationsFolder();
    // 6. Each launch starts switched on, whatever the last run left.
    Utils::resetkQuaydropIsOffKeyToON();
    // 7. A drag that finished before launch does not raise the window.
    myPbrdChangeCount = m_platform.dragPasteboard ? m_platform.dragPasteboard->changeCount() : 0;
    // 8.
    registerObservers();
    // 9. The hot key's defaults stand even when the icon, and with it the options panel, stays away.
    SettingsStore::shared().registerHotKeyDefaults();
    if (!Utils::shouldHideStatusBarItem())
        createStatusItem(1);
    // 10. Without a pointer monitor, only the hot key opens the window.
    installDragWatcher();
    // 11. The overlays come with the first action that needs one (installOverlayCompletions).
    // 12.
    showSliderTutorial();
    // 13. Not on top of the slides: asked when they close.
    if (introSlidesWC && introSlidesWC->isVisible())
        connect(static_cast<QDIntroSlides *>(introSlidesWC.data()), &QDIntroSlides::closed, this,
                &AppDelegate::launchAtLogInAlertIfNeeded, Qt::SingleShotConnection);
    else
        launchAtLogInAlertIfNeeded();
}

bool AppDelegate::livesInTray() const
{
    return statusItemForYos && !statusItemForYos->isRemoved() && CCNStatusItem::isTrayAvailable();
}

QRect AppDelegate::trayIconGeometry() const
{
    return livesInTray() && statusItemForYos->trayIcon() ? statusItemForYos->trayIcon()->geometry() : QRect();
}

void AppDelegate::registerObservers()
{
    NotificationCenter &center = NotificationCenter::defaultCenter();
    center.observe(QString::fromLatin1(NotificationName::ActivateViaSettingsChanged), this,
                   [this](const QVariantMap &) { mouseDraggedBool = false; });
    if (m_platform.windowSystem)
        connect(m_platform.windowSystem, &WindowSystem::applicationActivated, this, &AppDelegate::foremostAppActivated);
    if (m_platform.power)
        connect(m_platform.power, &PowerEvents::didWake, this, [] {
            Utils::cleanUPTepmFileOperationsFolder();
            qInfo("woke from sleep: temp folder emptied");
        });
    center.observe(QString::fromLatin1(NotificationName::CropWindowClosed), this,
                   [this](const QVariantMap &) { cropRotateWC = nullptr; });
    center.observe(QString::fromLatin1(NotificationName::ShowPanelHK), this,
                   [this](const QVariantMap &) { showPanelHKNotif(); });
    center.observe(QString::fromLatin1(NotificationName::OpenPanelHasJustClosed), this,
                   [this](const QVariantMap &info) { NSOpenPanelHasJustClosed(info); });
    center.observe(QString::fromLatin1(NotificationName::ShouldNotCloseYet), this,
                   [this](const QVariantMap &info) { shouldNotCloseYet = info.value(QStringLiteral("closeYet")).toBool(); });
}

void AppDelegate::foremostAppActivated(const QString &applicationId)
{
    const bool isUs = applicationId == QLatin1String(QD_BUNDLE_ID);
    if (!isUs)
        prevFrontMostAppBndlID = applicationId;
    // In drag mode a click on the file manager dismisses a panel; other applications do not.
    if (!isUs && !emptyContviewIsShown && !Utils::isShortcutEnabled() && isFinderFrontMostAndOwnesMenuBar() &&
        oneofThePanelsIsShown)
        orderOutTheWindow();
}

void AppDelegate::createStatusItem(int presentationTransition)
{
    static bool toldNoTray = false;
    if (!CCNStatusItem::isTrayAvailable() && !toldNoTray) {
        toldNoTray = true;
        qWarning("no system tray is running; Quaydrop stays resident without an icon, and starting it again "
                 "opens its options");
    }
    if (!m_options) {
        m_options = new PopMenuContentViewController;
        connect(m_options, &PopMenuContentViewController::quitRequested, this, &AppDelegate::quitQuaydrop);
    }
    statusItemForYos = new CCNStatusItem(this);
    statusItemForYos->setPresentationTransition(presentationTransition);
    connect(statusItemForYos, &CCNStatusItem::quitRequested, this, &AppDelegate::quitQuaydrop);
    statusItemForYos->presentStatusItemWithImage(QIcon(QStringLiteral(":/icons/bw_menuBarIcon.svg")), m_options);
    m_options->setStatusItemForYos(statusItemForYos);
}

bool AppDelegate::applicationShouldHandleReopen()
{
    qInfo("already running; a second start was passed to this process");
    if (statusItemForYos && !statusItemForYos->isRemoved()) {
        // Without a tray there is no icon to click: a second start is the way to the options.
        if (!CCNStatusItem::isTrayAvailable())
            statusItemForYos->showStatusItemWindow();
        return false;
    }
    // The way back to a hidden status item.
    delete statusItemForYos;
    statusItemForYos = nullptr;
    createStatusItem(2);
    Utils::shouldHideStatusBarItem(false);
    statusItemForYos->showStatusItemWindow();
    return false;
}

void AppDelegate::userNotificationCenterDidActivate(const QVariantMap &userInfo, int activationType)
{
    if (activationType != 1 && activationType != 2)
        return;
    if (userInfo.value(QString::fromLatin1(NotificationService::kActivationActionKey)).toString() ==
        QLatin1String(NotificationService::kUndoAction)) {
        undoFileOperation(userInfo.value(QStringLiteral("undoID")).toString());
        return;
    }
    const QStringList paths = userInfo.value(QStringLiteral("filePaths")).toStringList();
    if (!paths.isEmpty() && m_platform.workspace)
        if (const Status s = m_platform.workspace->revealItems(paths); !s.ok())
            qWarning("cannot show the files: %s", qPrintable(s.error().message));
    const QString openPath = userInfo.value(QStringLiteral("OpenPath")).toString();
    if (!openPath.isEmpty() && m_platform.workspace)
        if (const Status s = m_platform.workspace->openPath(openPath); !s.ok())
            qWarning("cannot open %s: %s", qPrintable(openPath), qPrintable(s.error().message));
}

void AppDelegate::showSliderTutorial()
{
    // The access the program asks for on other systems has no counterpart here: with the slides
    // turned off, nothing happens.
    if (Utils::dontshowIntroSlides())
        return;
    if (!introSlidesWC)
        introSlidesWC = new QDIntroSlides(livesInTray());
    introSlidesWC->show();
    introSlidesWC->raise();
    introSlidesWC->activateWindow();
}

void AppDelegate::launchAtLogInAlertIfNeeded()
{
    if (Utils::isLogInAtLaunch())
        return;
    if (Utils::showLoginAtLaunchUserDefaultsValue())
        return;
    auto *alert = new QMessageBox(QMessageBox::Question, QStringLiteral("Quaydrop"), Texts::localized("LaunchAtLogin"));
    alert->setObjectName(QStringLiteral("launchAtLoginAlert"));
    alert->setInformativeText(livesInTray() ? Texts::localized("loginLaunchInfTXT") : Texts::localized("loginLaunchInfTXTNoTray"));
    QPushButton *yes = alert->addButton(Texts::localized("YES"), QMessageBox::AcceptRole);
    alert->addButton(Texts::localized("NO"), QMessageBox::RejectRole);
    alert->setDefaultButton(yes);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    connect(alert, &QMessageBox::buttonClicked, this, [yes](QAbstractButton *clicked) {
        if (clicked == yes)
            Utils::setLogInAtLaunch(true);
        else
            Utils::showLoginAtLaunchSetUserDefVal(true);
    });
    alert->show();
}

bool AppDelegate::isThisaDoubleClick()
{
    const QDateTime now = QDateTime::currentDateTime();
    const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
    if (clickDate.isValid() && now <= clickDate.addMSecs(interval))
        return false;
    clickDate = now;
    return true;
}

void AppDelegate::quitQuaydrop()
{
    SettingsStore::shared().synchronize();
    if (statusItemForYos)
        statusItemForYos->dismissStatusItemWindow();
    QCoreApplication::quit();
}

void AppDelegate::applicationWillTerminate()
{
    if (m_terminated)
        return;
    m_terminated = true;
    Utils::cleanUPTepmFileOperationsFolder();
}
