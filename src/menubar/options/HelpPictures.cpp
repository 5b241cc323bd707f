#include "HelpPictures.h"

#include "core/fs/AtomicFile.h"
#include "core/panels/PanelCatalog.h"
#include "core/texts/Texts.h"
#include "widgets/ButtonImages.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QPainter>
#include <QPalette>
#include <QSet>
#include <QStandardPaths>

namespace {

constexpr int kWidth = 720;
constexpr int kMargin = 32;

// The ledger's main credits, in seconds, as the actions earn them.
struct Credit
{
    const char *action;
    int seconds;
};
const Credit kCredits[] = {
    {QT_TRANSLATE_NOOP("Quaydrop", "creditMove"), 15},      {QT_TRANSLATE_NOOP("Quaydrop", "creditResize"), 150},   {QT_TRANSLATE_NOOP("Quaydrop", "creditConvert"), 30}, {QT_TRANSLATE_NOOP("Quaydrop", "creditPdfPage"), 10},
    {QT_TRANSLATE_NOOP("Quaydrop", "creditSaveAsPdf"), 40}, {QT_TRANSLATE_NOOP("Quaydrop", "creditCopyPath"), 10},  {QT_TRANSLATE_NOOP("Quaydrop", "creditMail"), 10},    {QT_TRANSLATE_NOOP("Quaydrop", "creditAlias"), 5},
    {QT_TRANSLATE_NOOP("Quaydrop", "creditSize"), 5},       {QT_TRANSLATE_NOOP("Quaydrop", "creditZip"), 2},
};

QImage canvas(int height)
{
    QImage image(kWidth, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

void title(QPainter &p, const QString &text)
{
    QFont f = p.font();
    f.setPointSize(20);
    f.setBold(true);
    p.setFont(f);
    p.setPen(QColor(30, 30, 40));
    p.drawText(QRect(kMargin, kMargin, kWidth - 2 * kMargin, 40), Qt::AlignLeft | Qt::AlignVCenter, text);
    f.setPointSize(12);
    f.setBold(false);
    p.setFont(f);
}

} // namespace

QImage HelpPictures::buttonsPicture()
{
    // One row per button image of the panels, each once, with the title it carries.
    QList<QPair<QString, QString>> rows;
    QSet<QString> seen;
    for (const DropPanel panel : {DropPanelImage, DropPanelDocument, DropPanelDefault, DropPanelString,
                                  DropPanelOtherAppImage, DropPanelMultiFiles}) {
        for (const PanelButtonSpec &spec : PanelCatalog::buttonsOf(panel)) {
            const QString stem = QString::fromLatin1(spec.imageStem ? spec.imageStem : "");
            if (stem.isEmpty() || seen.contains(stem) || !ButtonImages::hasBundledImage(stem))
                continue;
            seen.insert(stem);
            rows.append({stem, Texts::localized(spec.labelKey)});
        }
    }
    const int rowHeight = 44;
    const int columns = 2;
    const int height = kMargin * 2 + 56 + ((int(rows.size()) + 1) / columns) * rowHeight;
    QImage image = canvas(height);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    title(p, Texts::localized("helpIconsTitle"));
    QPalette ink;
    ink.setColor(QPalette::WindowText, QColor(40, 40, 50));
    ink.setColor(QPalette::ButtonText, QColor(40, 40, 50));
    for (int i = 0; i < rows.size(); ++i) {
        const int x = kMargin + (i % columns) * (kWidth - 2 * kMargin) / columns;
        const int y = kMargin + 56 + (i / columns) * rowHeight;
        const QPixmap icon = ButtonImages::forStem(rows[i].first, 28, ink).normal;
        p.drawPixmap(x, y + (rowHeight - 28) / 2, icon);
        p.drawText(QRect(x + 40, y, (kWidth - 2 * kMargin) / columns - 44, rowHeight), Qt::AlignVCenter, rows[i].second);
    }
    return image;
}

QImage HelpPictures::timeSavedPicture()
{
    const int rowHeight = 30;
    const int count = int(std::size(kCredits));
    QImage image = canvas(kMargin * 2 + 56 + 60 + count * rowHeight);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    title(p, Texts::localized("helpTimeTitle"));
    p.setPen(QColor(70, 70, 80));
    p.drawText(QRect(kMargin, kMargin + 48, kWidth - 2 * kMargin, 52), Qt::TextWordWrap, Texts::localized("helpTimeText"));
    const int top = kMargin + 56 + 60;
    for (int i = 0; i < count; ++i) {
        const QRect row(kMargin, top + i * rowHeight, kWidth - 2 * kMargin, rowHeight);
        if (i % 2 == 0)
            p.fillRect(row, QColor(244, 246, 250));
        p.setPen(QColor(40, 40, 50));
        p.drawText(row.adjusted(10, 0, -120, 0), Qt::AlignVCenter, Texts::localized(kCredits[i].action));
        p.drawText(row.adjusted(0, 0, -10, 0), Qt::AlignVCenter | Qt::AlignRight,
                   Texts::localized("%1 s").arg(kCredits[i].seconds));
    }
    return image;
}

QString HelpPictures::writeJpeg(const QImage &picture, const QString &name)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/help");
    if (!QDir().mkpath(folder))
        return {};
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "JPG", 92))
        return {};
    const QString path = folder + QChar('/') + name + QStringLiteral(".jpg");
    if (const Status s = AtomicFile::writeFile(path, jpeg, AtomicFile::Mode::Replace); !s.ok()) {
        qWarning("%s", qPrintable(s.error().message));
        return {};
    }
    return path;
}
