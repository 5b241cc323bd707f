#pragma once

// What every test of the editor's window starts from: fake services that offer one share target, a
// photo of four coloured quarters, and the editor open on it, left open after a save.

#include "EditorWindowFixtures.h"
#include "ImageFixtures.h"
#include "LaunchedProgram.h"

#include "editor/ui/CropImgWC.h"

#include <QCheckBox>
#include <QLineEdit>

namespace EditorWindowFixtures {

inline void typeInto(QLineEdit *field, const QString &text)
{
    field->setFocus();
    field->selectAll();
    if (text.isEmpty())
        QTest::keyClick(field, Qt::Key_Backspace);
    else
        QTest::keyClicks(field, text);
}

inline QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

inline void closeAlerts()
{
    while (QMessageBox *box = visibleAlert())
        box->done(0);
}

// Saves what the editor shows and waits for it; the path written, empty when nothing was.
inline QString savedAndWaited(CropImgWC &editor)
{
    QSignalSpy saved(&editor, &CropImgWC::saved);
    editor.saveCropRotateResult();
    return saved.wait(10000) ? saved.first().first().toString() : QString();
}

struct EditorCase
{
    QTemporaryDir dir;
    std::unique_ptr<FakePlatform> fakes;
    std::unique_ptr<CropImgWC> editor;
    QString photo;

    QString image(const QString &name, const QImage &picture, const char *format = "png") const
    {
        return writtenFile(dir.filePath(name), ImageFixtures::encoded(picture, format, 72, 95));
    }
    bool open()
    {
        fakes = std::make_unique<FakePlatform>(dir.filePath(QStringLiteral(".trash")));
        fakes->share.targets = {{QStringLiteral("kdeconnect:abc"), QStringLiteral("Pixel 7"), {}}};
        Platform::install(fakes->services());
        for (const QString &f : filesIn(dir.path()))
            QFile::remove(dir.filePath(f));
        photo = image(QStringLiteral("photo.png"), ImageFixtures::quarters(800, 600));
        editor = std::make_unique<CropImgWC>();
        editor->closeWindafterSaveCheckbox->setChecked(false);
        return openAndWait(*editor, photo);
    }
    void close()
    {
        closeAlerts();
        editor.reset();
        Platform::install({});
        fakes.reset();
    }
};

} // namespace EditorWindowFixtures
