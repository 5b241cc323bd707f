// The exclusion list window: rows from the list's file with the names of the desktop files, adding
// from the installed applications, removing after a question.

#include "core/plist/Plist.h"
#include "menubar/ExclusionListWC.h"
#include "utils/Utils.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

class ExclusionListTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        const QList<QPair<QString, QString>> apps = {{"org.gimp.GIMP", "GIMP"},
                                                     {"org.kde.krita", "Krita"},
                                                     {"org.inkscape.Inkscape", "Inkscape"},
                                                     {"helper", "Helper"}};
        for (const auto &[id, name] : apps) {
            QFile file(m_dir.path() + QLatin1Char('/') + id + QStringLiteral(".desktop"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("[Desktop Entry]\nType=Application\nName=" + name.toUtf8() + "\nExec=" + id.toUtf8() + "\n");
            if (id == QLatin1String("helper"))
                file.write("NoDisplay=true\n");
        }
    }

    void cleanup() { QFile::remove(Utils::QDappSupportPath() + QStringLiteral("/exclAppList.plist")); }

    void rowsShowNamesOfTheListedApplications()
    {
        QDir().mkpath(Utils::QDappSupportPath());
        QVERIFY(Plist::writeFileAtomically(Utils::pathForExlAppsPlist(), QStringList{"org.kde.krita", "qd_dragsource"}).ok());
        ExclusionListWC window(entries());
        QCOMPARE(window.exclApps, (QStringList{"org.kde.krita", "qd_dragsource"}));
        // A window class without a desktop file shows as it is.
        QCOMPARE(shownNames(window), (QStringList{"Krita", "qd_dragsource"}));
    }

    void pickerAddsInstalledApplications()
    {
        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("org.kde.krita"), false);
        ExclusionListWC window(entries());
        window.show();
        window.chooseApplication();
        auto *picker = qobject_cast<ApplicationPicker *>(window.picker());
        QVERIFY(picker);
        // Listed ones and hidden helpers are not offered; the rest by name.
        QStringList offered;
        for (int i = 0; i < picker->list()->count(); ++i)
            offered.append(picker->list()->item(i)->text());
        QCOMPARE(offered, (QStringList{"GIMP", "Inkscape"}));
        picker->filter()->setText(QStringLiteral("ink"));
        QVERIFY(picker->list()->item(0)->isHidden());
        QVERIFY(!picker->list()->item(1)->isHidden());
        picker->list()->item(0)->setSelected(true);
        picker->list()->item(1)->setSelected(true);
        picker->accept();
        QCOMPARE(Utils::exclBndlIDAppsArray(), (QStringList{"org.kde.krita", "org.gimp.GIMP", "org.inkscape.Inkscape"}));
        QCOMPARE(shownNames(window), (QStringList{"Krita", "GIMP", "Inkscape"}));
        QVERIFY(!window.picker());
    }

    void removingAsksFirst()
    {
        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("org.gimp.GIMP"), false);
        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("org.kde.krita"), false);
        ExclusionListWC window(entries());
        window.show();
        const auto answer = [&window](int row, const QString &button) {
            window.exclTblView->itemWidget(window.exclTblView->item(row))->findChild<QToolButton *>()->click();
            QMessageBox *question = window.removalQuestion();
            QVERIFY(question);
            QCOMPARE(question->informativeText(), window.exclTblView->item(row) ? shownNames(window).at(row) : QString());
            for (QAbstractButton *b : question->buttons())
                if (b->text() == button)
                    b->click();
        };
        answer(1, QStringLiteral("NO"));
        QTRY_VERIFY(!window.removalQuestion()); // answered, and gone
        QCOMPARE(Utils::exclBndlIDAppsArray(), (QStringList{"org.gimp.GIMP", "org.kde.krita"}));
        answer(1, QStringLiteral("YES"));
        QCOMPARE(Utils::exclBndlIDAppsArray(), QStringList{"org.gimp.GIMP"});
        QCOMPARE(shownNames(window), QStringList{"GIMP"});
    }

private:
    DesktopEntries entries() const { return DesktopEntries::load({m_dir.path()}); }
    static QStringList shownNames(const ExclusionListWC &window);
    QTemporaryDir m_dir;
};

QStringList ExclusionListTest::shownNames(const ExclusionListWC &window)
{
    QStringList names;
    for (int i = 0; i < window.exclTblView->count(); ++i) {
        QWidget *cell = window.exclTblView->itemWidget(window.exclTblView->item(i));
        const QList<QLabel *> labels = cell->findChildren<QLabel *>();
        for (const QLabel *label : labels)
            if (!label->text().isEmpty())
                names.append(label->text());
    }
    return names;
}

QTEST_MAIN(ExclusionListTest)
#include "tst_exclusionlist.moc"
