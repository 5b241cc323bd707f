// Writes a PDF of N pages of the kind people cut into images: columns of text, rules, a chart of
// filled shapes with a gradient, and a photo-like picture. Input for bench/images.sh.
//   make_pdf OUT.pdf [PAGES]

#include <QGuiApplication>
#include <QLinearGradient>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRandomGenerator>

#include <cmath>

namespace {

QImage picture(int w, int h, quint32 seed)
{
    QImage img(w, h, QImage::Format_RGB32);
    QRandomGenerator rng(seed);
    for (int y = 0; y < h; ++y) {
        auto *line = reinterpret_cast<QRgb *>(img.scanLine(y));
        for (int x = 0; x < w; ++x) {
            const double v = std::sin(x * 0.031 + seed) * std::cos(y * 0.027) * 60 + 128;
            line[x] = qRgb(int(v + rng.bounded(20)), int(255 - v) % 256, int(x * 255 / w));
        }
    }
    return img;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc < 2)
        return 2;
    const int pages = argc > 2 ? std::atoi(argv[2]) : 50;
    QPdfWriter pdf(QString::fromLocal8Bit(argv[1]));
    pdf.setPageSize(QPageSize(QPageSize::Letter));
    pdf.setResolution(72);
    QPainter p(&pdf);
    const QString words = QStringLiteral(
        "Drag and drop is the oldest gesture of the desktop and still the least used one. A file lifted out of "
        "a window can go to a folder, a program or the trash; everything else needs a menu. ");
    for (int n = 0; n < pages; ++n) {
        if (n > 0)
            pdf.newPage();
        const QRect page(36, 36, 540, 720);
        p.setPen(Qt::black);
        QFont title(QStringLiteral("DejaVu Serif"), 20, QFont::Bold);
        p.setFont(title);
        p.drawText(page.left(), page.top() + 24, QStringLiteral("Chapter %1").arg(n + 1));
        p.drawLine(page.left(), page.top() + 34, page.right(), page.top() + 34);
        QFont body(QStringLiteral("DejaVu Sans"), 9);
        p.setFont(body);
        for (int col = 0; col < 2; ++col) {
            const QRect box(page.left() + col * 280, page.top() + 48, 260, 300);
            p.drawText(box, Qt::TextWordWrap, words.repeated(6));
        }
        QLinearGradient g(page.left(), 400, page.right(), 560);
        g.setColorAt(0, QColor(30, 90, 200));
        g.setColorAt(1, QColor(240, 160, 40));
        p.setBrush(g);
        for (int i = 0; i < 12; ++i)
            p.drawRect(page.left() + i * 44, 560 - (i * 37 + n * 11) % 150, 36, (i * 37 + n * 11) % 150);
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QPoint(460, 480), 60, 60);
        p.drawImage(QRect(page.left(), 590, 240, 150), picture(480, 300, quint32(n)));
        p.drawText(QRect(page.left() + 260, 590, 280, 150), Qt::TextWordWrap, words.repeated(3));
    }
    return 0;
}
