#pragma once

#include "fileops/ui/destinations/ManageDestinationsWC.h"
#include "menubar/ExclusionListWC.h"
#include "widgets/TranslatedTexts.h"

#include <QMessageBox>
#include <QPointer>
#include <QWidget>

class CCNStatusItem;
class ITSwitch;
class MXButton;
class QCheckBox;
class QComboBox;
class QKeySequenceEdit;
class QLabel;
class QMenu;
class RMBorderlessButton;

// The panel under the tray icon. Each control writes its setting at once and the rest of the program
// reads it there; the panel reads everything afresh each time it is about to show.
class PopMenuContentViewController : public QWidget
{
    Q_OBJECT
public:
    explicit PopMenuContentViewController(QWidget *parent = nullptr);
    ~PopMenuContentViewController() override;

    void setStatusItemForYos(CCNStatusItem *item) { m_statusItem = item; }
    // Reads every setting, the ledger and the login item into the controls.
    void refresh();

    ITSwitch *onOffSwitch;
    ITSwitch *launchAtLoginSwitch;
    ITSwitch *enableUserNotificationsSwitch;
    QCheckBox *onHotkeyCheckBox;
    QCheckBox *onClickCheckBox;
    QKeySequenceEdit *shortcutView;
    QLabel *hotKeyProblemLbl;
    QLabel *waylandNoteLbl;
    QLabel *timeSavedWeeklyLbl;
    QLabel *timeSavedTotalLbl;
    QLabel *versionNumberTxtFld;
    QComboBox *languagePop;
    MXButton *optionsBtn;
    MXButton *quitBtn;
    QMenu *optionsSubMenu;
    QMenu *shareTimeSubMenu;
    QAction *postOnFBmenuItem;
    QAction *postOnTwitterMenuItem;

    // The commands, by the names they have always had.
    void ONOFFBtnAction();
    void launchAtLogInCheckBoxAction();
    void enableUserNotifSwAction();
    void onHotkeyCheckBoxAction();
    void onClickCheckBoxAction();
    void shortcutRecorded();
    void changeLanguage(int tag); // 1 English, 2 German
    void showExclusionList();
    void showFavDestinationManagerWindow();
    void showHelpScreenshot();
    void HowIsThisCalculatedAction();
    void showShareTimeMenu(int tag, QWidget *sender); // 1 this week, 2 in total
    void shareTimeOnTwitter();
    void shareTimeOnFacebook();
    void tellaFriendViaMail();
    void contactSupport();
    void openAboutPageLink();
    void hideMenuBarIcon();
    void removeYosStatItem();
    void quitQuaydrop();

    ExclusionListWC *exclListWC() const { return m_exclList; }
    ManageDestinationsWC *destManagerWC() const { return m_destManager; }
    QMessageBox *hideIconAlert() const { return m_hideAlert; }
    // Whether the desktop session is Wayland, where drags of native windows cannot be watched.
    static bool isWaylandSession();

Q_SIGNALS:
    void quitRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void build();
    void retranslate();
    void applyPaletteColors();
    void applySummonState(bool shortcutEnabled);
    void setShortcutEnabled(bool enabled);
    void openUrl(const QString &url);
    QString sharedTimeText(bool facebook) const;

    QPointer<CCNStatusItem> m_statusItem;
    QPointer<ExclusionListWC> m_exclList;
    QPointer<ManageDestinationsWC> m_destManager;
    QPointer<QMessageBox> m_hideAlert;
    TranslatedTexts m_texts;
    QLabel *m_summonTitle = nullptr;
    QLabel *m_timeTitle = nullptr;
    RMBorderlessButton *m_howCalculated = nullptr;
    int m_shareTag = 1;
};
