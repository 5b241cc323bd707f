#include "AppDelegate.h"

#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "sending/ui/PrintPanel.h"
#include "utils/Utils.h"

#include <QScreen>

namespace {

// A mailto: link travels as one command-line argument, which the kernel caps at 128 KiB.
constexpr qsizetype kLongestMailtoLink = 120 * 1024;

} // namespace

void AppDelegate::mailFileBtnAction(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(droppedImageFromOtherApp ? 20 : 10);
    Utils::mailFile(filePathsArr.value(0));
}

void AppDelegate::mailMultipleFilesAvtion(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(15);
    Utils::emailMultiFilesViaDefaultMailApp(filePathsArr);
}

void AppDelegate::newMailWithDroppedString(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(15);
    const QString text = Utils::readDroppedString();
    const QString url = QStringLiteral("mailto:?") + Utils::urlQueryFromDictionary({{QStringLiteral("body"), text}});
    if (url.size() > kLongestMailtoLink) {
        qWarning("the text is too long for a mail link (%lld characters)", static_cast<long long>(text.size()));
        Utils::showBasicAlertwithTitle(Texts::localized("MailTextTooLong"), Texts::localized("MailTextTooLongText"));
        return;
    }
    if (!Utils::openMailtoURL(url))
        Utils::showBasicAlertwithTitle(Texts::localized("NoMailApp"), Texts::localized("NoMailAppText"));
}

void AppDelegate::printFileAction(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(10);
    doPrintPDF(filePathsArr.value(0), {});
}

void AppDelegate::printPDFFileAction(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(15);
    const QString path = filePathsArr.value(0);
    openPdfAskingPassword(path, [this, path](const QByteArray &password) { doPrintPDF(path, password); });
}

void AppDelegate::doPrintPDF(const QString &path, const QByteArray &password)
{
    Utils::postShouldNotCloseWindowYetNotif(true);
    // The dialog opens over the window, which moves to the middle of its screen first.
    if (const QScreen *screen = window->screen()) {
        const QRect area = screen->geometry();
        window->move(area.x() + area.width() / 2 - window->width() / 2, area.y() + area.height() / 2 - window->height() / 2);
    }
    auto *panel = new PrintPanel(path, password, window);
    connect(panel, &PrintPanel::finished, this, [panel](bool) {
        Utils::postShouldNotCloseWindowYetNotif(false);
        panel->deleteLater();
    });
    panel->open();
}
