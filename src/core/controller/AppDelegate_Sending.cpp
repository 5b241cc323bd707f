#include "AppDelegate.h"

#include "core/texts/Texts.h"
#include "utils/Utils.h"

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
    Utils::openMailtoURL(url);
}
