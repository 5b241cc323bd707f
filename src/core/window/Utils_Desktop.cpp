#include "core/texts/Texts.h"
#include "utils/Utils.h"
#include "widgets/Alert.h"

#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>

void Utils::copyStringToClipboard(const QString &text)
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(text);
}

bool Utils::copyTXTfileContentsToClipboardFromPath(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("cannot read %s: %s", qPrintable(path), qPrintable(file.errorString()));
        return false;
    }
    copyStringToClipboard(QString::fromUtf8(file.readAll()));
    return true;
}

void Utils::showBasicAlertwithTitle(const QString &title, const QString &informativeText)
{
    showAlert(QMessageBox::Information, title, informativeText);
}

void Utils::openSavePanelWithCurrentFilePath(const QString &path, const QString &allowedFileType,
                                             const QString &defFileName, std::function<void(QString)> done)
{
    const QString folder = existingStartFolder(getSavePanelURL());
    QString suffix = QFileInfo(path).suffix();
    if (suffix.isEmpty() && allowedFileType != QLatin1String("img"))
        suffix = allowedFileType;
    auto *dialog = new QFileDialog(nullptr, Texts::localized("Save"), folder + QLatin1Char('/') + defFileName +
                                                                       (suffix.isEmpty() ? QString() : QLatin1Char('.') + suffix));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowFlag(Qt::WindowStaysOnTopHint);
    if (!suffix.isEmpty()) {
        dialog->setDefaultSuffix(suffix);
        dialog->setNameFilter(QStringLiteral("*.%1").arg(suffix));
    }
    QObject::connect(dialog, &QFileDialog::finished, dialog, [dialog, path, done](int result) {
        if (result != QDialog::Accepted || dialog->selectedFiles().isEmpty()) {
            done(QString());
            return;
        }
        const QString target = dialog->selectedFiles().first();
        overWriteSavePanelLastSaveURL(QFileInfo(target).absolutePath());
        QFile source(path);
        QSaveFile out(target);
        // Read whole and written atomically: the chosen name never holds half a file.
        if (!source.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly) || out.write(source.readAll()) < 0 ||
            !out.commit()) {
            qWarning("could not save %s as %s: %s", qPrintable(path), qPrintable(target),
                     qPrintable(source.error() != QFile::NoError ? source.errorString() : out.errorString()));
            showBasicAlertwithTitle(Texts::localized("Could not save the file"), out.errorString());
            done(QString());
            return;
        }
        done(target);
    });
    dialog->open();
}
