// The floor of a command's start: a QCoreApplication that prints how many arguments it got and ends.
// bench/startup.sh times it beside stat and quaydrop.

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    std::printf("%lld\n", static_cast<long long>(app.arguments().size()));
    return 0;
}
