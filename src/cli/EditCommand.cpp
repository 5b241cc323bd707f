#include "EditCommand.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "CommandTable.h"
#include "Console.h"
#include "editor/ui/CropImgWC.h"

#include <QApplication>

int runEditCommand(const Invocation &invocation, Console &console)
{
    const QString path = CliPaths::absolute(invocation.arguments.first());
    if (const auto missing = CliPaths::missing(path)) {
        console.fail(*missing);
        return Cli::kFailed;
    }
    if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
        console.fail(QStringLiteral("edit: no display to show the editor on (DISPLAY is not set)"));
        return Cli::kFailed;
    }
    CropImgWC editor;
    bool failed = false;
    QObject::connect(&editor, &CropImgWC::openFailed, [&](const QString &message) {
        console.fail(message);
        failed = true;
    });
    QObject::connect(&editor, &CropImgWC::saved, [&console](const QString &written) { console.out << written << '\n'; });
    // The program ends with its last window: the editor, or the alert that says why it did not open.
    QApplication::setQuitOnLastWindowClosed(true);
    editor.openImage(path, false, false);
    QApplication::exec();
    return failed ? Cli::kFailed : 0;
}
