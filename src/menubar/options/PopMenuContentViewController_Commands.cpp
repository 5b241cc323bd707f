#include "PopMenuContentViewController.h"

#include "HelpPictures.h"
#include "OptionsRules.h"
#include "core/Endpoints.h"
#include "core/settings/SettingsStore.h"
#include "core/texts/Texts.h"
#include "menubar/statusitem/CCNStatusItem.h"
#include "platform/Platform.h"
#include "utils/Utils.h"
#include "widgets/Alert.h"

#include <QCursor>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSysInfo>
#include <QUrl>
#include <QUrlQuery>

// The panel's commands that reach outside it: other windows, help pictures, sharing, mail, the icon,
// and quitting.

void PopMenuContentViewController::openUrl(const QString &url)
{
    Workspace *workspace = Platform::current().workspace;
    if (!workspace) {
        qWarning("nothing to open %s with", qPrintable(url));
        return;
    }
    if (const Status s = workspace->openUrl(url); !s.ok())
        qWarning("cannot open %s: %s", qPrintable(url), qPrintable(s.error().message));
}

void PopMenuContentViewController::showExclusionList()
{
    if (!m_exclList)
        m_exclList = new ExclusionListWC(DesktopEntries::load());
    m_exclList->updTblViewData();
    m_exclList->show();
    m_exclList->raise();
    m_exclList->activateWindow();
}

void PopMenuContentViewController::showFavDestinationManagerWindow()
{
    if (!m_destManager)
        m_destManager = new ManageDestinationsWC;
    m_destManager->setAttribute(Qt::WA_DeleteOnClose);
    m_destManager->show();
    m_destManager->raise();
    m_destManager->activateWindow();
}

void PopMenuContentViewController::showHelpScreenshot()
{
    const QString path = HelpPictures::writeJpeg(HelpPictures::buttonsPicture(), QStringLiteral("QuaydropIcons"));
    if (!path.isEmpty())
        openUrl(QUrl::fromLocalFile(path).toString());
}

void PopMenuContentViewController::HowIsThisCalculatedAction()
{
    const QString path = HelpPictures::writeJpeg(HelpPictures::timeSavedPicture(), QStringLiteral("TimeSavedwithQuaydrop"));
    if (!path.isEmpty())
        openUrl(QUrl::fromLocalFile(path).toString());
}

void PopMenuContentViewController::showShareTimeMenu(int tag, QWidget *sender)
{
    const QVariantMap ledger = Utils::getTimeSavedDictionaryValues().value_or(QVariantMap{});
    const quint64 seconds = ledger.value(tag == 1 ? QStringLiteral("weeklySecSaved") : QStringLiteral("totalSecSaved")).toULongLong();
    if (!OptionsRules::canShareTime(seconds)) {
        showAlert(QMessageBox::Information, Texts::localized("SharingfeatureAlrtTitle"), Texts::localized("SharingfeatureAlrtInf"));
        return;
    }
    m_shareTag = tag;
    postOnFBmenuItem->setProperty("tag", tag);
    postOnTwitterMenuItem->setProperty("tag", tag);
    shareTimeSubMenu->popup(sender ? sender->mapToGlobal(QPoint(0, sender->height())) : QCursor::pos());
}

QString PopMenuContentViewController::sharedTimeText(bool facebook) const
{
    if (m_shareTag == 1)
        return (facebook ? Texts::localized("thisweekSavedTimeFB") : Texts::localized("thisweekSavedTime")).arg(timeSavedWeeklyLbl->text());
    return (facebook ? Texts::localized("totalTimeSavedFB") : Texts::localized("totalTimeSaved")).arg(timeSavedTotalLbl->text());
}

void PopMenuContentViewController::shareTimeOnTwitter()
{
    QUrl url(QString::fromLatin1(Endpoints::TwitterShare));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("text"), sharedTimeText(false));
    query.addQueryItem(QStringLiteral("url"), QString::fromLatin1(Endpoints::ProductPage));
    url.setQuery(query);
    openUrl(url.toString(QUrl::FullyEncoded));
}

void PopMenuContentViewController::shareTimeOnFacebook()
{
    QUrl url(QString::fromLatin1(Endpoints::FacebookShare));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("u"), QString::fromLatin1(Endpoints::ProductPage));
    query.addQueryItem(QStringLiteral("quote"), sharedTimeText(true));
    url.setQuery(query);
    openUrl(url.toString(QUrl::FullyEncoded));
}

void PopMenuContentViewController::tellaFriendViaMail()
{
    Utils::sendEmailTo(QString(), Texts::localized("tellFriendBody").arg(QString::fromLatin1(Endpoints::ProductPage)),
                       Texts::localized("tellFriendSubject"));
}

void PopMenuContentViewController::contactSupport()
{
    const QString body = QStringLiteral("\n\n\n\nQuaydrop %1\n%2")
                             .arg(QStringLiteral(QD_VERSION), QSysInfo::prettyProductName());
    Utils::sendEmailTo(QString::fromLatin1(Endpoints::SupportAddress), body, QStringLiteral("Quaydrop Support and Feedback"));
}

void PopMenuContentViewController::openAboutPageLink() { openUrl(QString::fromLatin1(Endpoints::AboutPage)); }

void PopMenuContentViewController::hideMenuBarIcon()
{
    if (m_statusItem)
        m_statusItem->dismissStatusItemWindow();
    if (m_hideAlert)
        return;
    m_hideAlert = new QMessageBox(QMessageBox::Warning, QStringLiteral("Quaydrop"), Texts::localized("IMPORTANT"));
    m_hideAlert->setObjectName(QStringLiteral("hideIconAlert"));
    m_hideAlert->setInformativeText(Texts::localized("makeQDMenuBarIconVisibleAlertText"));
    QPushButton *hide = m_hideAlert->addButton(Texts::localized("Hide"), QMessageBox::AcceptRole);
    m_hideAlert->addButton(Texts::localized("Cancel"), QMessageBox::RejectRole);
    m_hideAlert->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_hideAlert, &QMessageBox::buttonClicked, this, [this, hide](QAbstractButton *clicked) {
        if (clicked == hide)
            removeYosStatItem();
    });
    m_hideAlert->show();
}

void PopMenuContentViewController::removeYosStatItem()
{
    if (!m_statusItem) {
        Utils::shouldHideStatusBarItem(true);
        return;
    }
    m_statusItem->dismissStatusItemWindow();
    m_statusItem->removeStatusItem();
}

void PopMenuContentViewController::quitQuaydrop()
{
    SettingsStore::shared().synchronize();
    if (m_statusItem)
        m_statusItem->dismissStatusItemWindow();
    Q_EMIT quitRequested();
}
