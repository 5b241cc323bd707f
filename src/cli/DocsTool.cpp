// Build-time writer of what the installed program carries beside its binary: the manual page and the
// bash completion from the table of commands, and the icon's PNG sizes from its SVG.
//   qd_docs man OUT | qd_docs completion OUT | qd_docs icon SVG SIZE OUT

#include "BashCompletion.h"
#include "ManPage.h"

#include <QDateTime>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgRenderer>

#include <cstdio>

namespace {

bool save(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    std::fprintf(stderr, "qd_docs: cannot write %s: %s\n", qPrintable(path), qPrintable(file.errorString()));
    return false;
}

// The page's date: reproducible builds set SOURCE_DATE_EPOCH.
QString buildDate()
{
    bool ok = false;
    const qint64 epoch = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&ok);
    const QDateTime when = ok ? QDateTime::fromSecsSinceEpoch(epoch, Qt::UTC) : QDateTime::currentDateTimeUtc();
    return when.toString(QStringLiteral("yyyy-MM-dd"));
}

int renderIcon(const QString &svg, int size, const QString &out)
{
    QSvgRenderer renderer(svg);
    if (!renderer.isValid()) {
        std::fprintf(stderr, "qd_docs: %s is not a readable SVG\n", qPrintable(svg));
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    renderer.render(&painter);
    painter.end();
    image.setText(QStringLiteral("Software"), QStringLiteral("quaydrop build"));
    return image.save(out, "PNG") ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const QString what = args.value(1);
    if (what == u"man" && args.size() == 3)
        return save(args[2], ManPage::write(buildDate())) ? 0 : 1;
    if (what == u"completion" && args.size() == 3)
        return save(args[2], BashCompletion::write()) ? 0 : 1;
    if (what == u"icon" && args.size() == 5 && args[3].toInt() > 0)
        return renderIcon(args[2], args[3].toInt(), args[4]);
    std::fprintf(stderr, "usage: qd_docs man OUT | completion OUT | icon SVG SIZE OUT\n");
    return 2;
}
