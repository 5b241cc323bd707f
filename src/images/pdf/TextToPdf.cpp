#include "TextToPdf.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "utils/Utils.h"

#include <QBuffer>
#include <QLocale>
#include <QMimeDatabase>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QStringDecoder>
#include <QTextDocument>


namespace {

constexpr qint64 kMaxTextBytes = qint64(64) << 20; // a text larger than this is no document to lay out

Error failure(const QString &path, const QString &what)
{
    return Error{QStringLiteral("PDF"), 1, QStringLiteral("%1: %2").arg(NativePath::forDisplay(path), what)};
}

QString decoded(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    if (!utf8.hasError())
        return text;
    // Not UTF-8: the one-byte encoding most older texts on Linux desktops were written in.
    return QString::fromLatin1(bytes);
}

} // namespace

QPageLayout TextToPdf::defaultLayout()
{
    const QLocale::Territory t = QLocale().territory();
    const bool letter = t == QLocale::UnitedStates || t == QLocale::Canada || t == QLocale::Mexico;
    return QPageLayout(QPageSize(letter ? QPageSize::Letter : QPageSize::A4), QPageLayout::Portrait,
                       QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter);
}

Result<QByteArray> TextToPdf::layOut(const QString &sourcePath, const QPageLayout &layout)
{
    const auto read = FsCalls::readWholeFile(sourcePath, kMaxTextBytes);
    if (!read.ok())
        return Error{QStringLiteral("PDF"), 1, read.error().message};
    const QByteArray &bytes = read.value();

    QTextDocument document;
    const QMimeType type = QMimeDatabase().mimeTypeForFileNameAndData(PathParts::lastComponent(sourcePath), bytes);
    if (type.inherits(QStringLiteral("text/html")))
        document.setHtml(decoded(bytes));
    else if (type.inherits(QStringLiteral("text/markdown")))
        document.setMarkdown(decoded(bytes));
    else if (type.inherits(QStringLiteral("text/plain")) || bytes.isEmpty())
        document.setPlainText(decoded(bytes));
    else
        return failure(sourcePath, QStringLiteral("%1 is not a text this program can lay out").arg(type.comment()));

    QByteArray pdf;
    {
        QBuffer buffer(&pdf);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setCreator(QStringLiteral("Quaydrop"));
        writer.setTitle(PathParts::splitExtension(PathParts::lastComponent(sourcePath)).name);
        writer.setPageLayout(layout);
        document.print(&writer);
    }
    if (pdf.isEmpty())
        return failure(sourcePath, QStringLiteral("nothing could be laid out"));
    return pdf;
}

Status TextToPdf::saveAsPDF(const QString &sourcePath, const QString &destPath)
{
    const auto pdf = layOut(sourcePath, defaultLayout());
    if (!pdf.ok())
        return pdf.error();
    return AtomicFile::writeFile(destPath, pdf.value(), AtomicFile::Mode::KeepExisting);
}

bool Utils::saveAsPDF(const QString &sourcePath, const QString &destPath)
{
    const Status s = TextToPdf::saveAsPDF(sourcePath, destPath);
    if (!s.ok())
        qWarning("%s", qPrintable(s.error().message));
    return s.ok();
}
