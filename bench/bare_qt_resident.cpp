// The floor of the resident program at rest: a QApplication with a tray icon and one small native
// window, hidden, until it is killed. Prints "bare_qt_resident: running" once up; bench/startup.sh
// reads its resident memory beside Quaydrop's.

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QSystemTrayIcon>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QSystemTrayIcon tray(QIcon::fromTheme(QStringLiteral("edit-copy")));
    tray.show();
    QLabel window(QStringLiteral("Drop here"));
    window.resize(90, 90);
    window.winId();
    std::fprintf(stderr, "bare_qt_resident: running\n");
    std::fflush(stderr);
    return app.exec();
}
