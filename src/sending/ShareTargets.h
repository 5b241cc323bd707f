#pragma once

// The entries of the share menu, for dropped files or a dropped text: the mail program, the
// platform's targets (KDE Connect devices, Bluetooth, the applications that open the files), and
// what the program does itself. Each is listed only where it can work on this machine.

#include "platform/Platform.h"

#include <functional>

namespace ShareTargets {

inline const QString kMail = QStringLiteral("mail");
inline const QString kSaveAs = QStringLiteral("save-as");
inline const QString kCopyLinks = QStringLiteral("copy-links");
inline const QString kCopyText = QStringLiteral("copy-text");
inline const QString kSaveText = QStringLiteral("save-txt");
inline const QString kSearch = QStringLiteral("search");
inline const QString kWebX = QStringLiteral("web:x");
inline const QString kWebFacebook = QStringLiteral("web:facebook");

enum class Use {
    Window,     // the share menu: Save as… and copy as file links too
    CommandLine // only what needs no window and no clipboard that outlives the process
};

QList<ShareTarget> forFiles(const QStringList &paths, Use use);
QList<ShareTarget> forText();

// The files to a target that needs no window: the mail program or one of the platform's. `done`
// runs once, on the main thread.
void shareFiles(const QString &targetId, const QStringList &paths, std::function<void(Status)> done);

// The web page that starts a post of the text; for Facebook, which takes links only, the text's
// first link, or its home page when there is none.
QString webSharePage(const QString &targetId, const QString &text);

} // namespace ShareTargets
