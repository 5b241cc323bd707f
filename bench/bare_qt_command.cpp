// A Qt command's start: a QCoreApplication that prints how many arguments it got and ends; given a
// file, it prints the file's type by name as Qt's type database finds it (what `quaydrop type` would
// cost through Qt). bench/startup.sh times it beside stat and quaydrop.

#include <QCoreApplication>
#include <QMimeDatabase>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc > 1) {
        const QMimeType type = QMimeDatabase().mimeTypeForFile(app.arguments().at(1), QMimeDatabase::MatchExtension);
        std::printf("%s\n", qPrintable(type.name()));
        return 0;
    }
    std::printf("%lld\n", static_cast<long long>(app.arguments().size()));
    return 0;
}
