#include "PopMenuContentViewController.h"

#include "OptionsRules.h"
#include "core/NotificationCenter.h"
#include "core/ledger/TimeSavedLedger.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "core/texts/Texts.h"
#include "menubar/ExclusionListWC.h"
#include "menubar/statusitem/CCNStatusItem.h"
#include "platform/desktops/ShortcutHost.h"
#include "platform/Platform.h"
#include "utils/Utils.h"
#include "widgets/controls/ITSwitch.h"
#include "widgets/controls/MXButton.h"
#include "widgets/controls/RMBorderlessButton.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QFrame *rule(QWidget *parent)
{
    auto *line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setStyleSheet(QStringLiteral("color: palette(mid);"));
    return line;
}

QLabel *sectionTitle(QWidget *parent)
{
    auto *label = new QLabel(parent);
    QFont f = label->font();
    f.setBold(true);
    label->setFont(f);
    return label;
}

} // namespace

PopMenuContentViewController::PopMenuContentViewController(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("PopMenuContentViewController"));
    // The panel loads the hot-key defaults, as the recorder needs them.
    SettingsStore::shared().registerHotKeyDefaults();
    build();
    retranslate();
    refresh();
    NotificationCenter &center = NotificationCenter::defaultCenter();
    for (const char *name : {NotificationName::StatusItemWindowWillShow, NotificationName::StatusItemPopupShown})
        center.observe(QString::fromLatin1(name), this, [this](const QVariantMap &) { refresh(); });
    center.observe(QString::fromLatin1(NotificationName::HotKeyUnavailable), this, [this](const QVariantMap &info) {
        hotKeyProblemLbl->setText(Texts::localized("hotKeyTaken").arg(info.value(QStringLiteral("keys")).toString()));
        hotKeyProblemLbl->setToolTip(info.value(QStringLiteral("message")).toString());
        hotKeyProblemLbl->show();
    });
}

PopMenuContentViewController::~PopMenuContentViewController()
{
    delete m_exclList;
    delete optionsSubMenu;
    delete shareTimeSubMenu;
}

bool PopMenuContentViewController::isWaylandSession()
{
    return qEnvironmentVariable("XDG_SESSION_TYPE") == u"wayland" || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void PopMenuContentViewController::build()
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(16, 14, 16, 14);
    outer->setSpacing(8);
    auto remember = [this](QWidget *w, const char *key) { m_texts.add(w, key); };

    // The program, its version, and the switch that turns it on and off.
    auto *head = new QGridLayout;
    auto *icon = new QLabel(this);
    icon->setPixmap(QIcon(QStringLiteral(":/icons/bw_menuBarIcon.svg")).pixmap(32));
    auto *name = new QLabel(QStringLiteral("Quaydrop"), this);
    QFont big = name->font();
    big.setPointSizeF(big.pointSizeF() * 1.3);
    big.setBold(true);
    name->setFont(big);
    versionNumberTxtFld = new QLabel(this);
    versionNumberTxtFld->setObjectName(QStringLiteral("versionNumberTxtFld"));
    versionNumberTxtFld->setForegroundRole(QPalette::PlaceholderText);
    onOffSwitch = new ITSwitch(this);
    onOffSwitch->setObjectName(QStringLiteral("onOffSwitch"));
    head->addWidget(icon, 0, 0, 2, 1);
    head->addWidget(name, 0, 1);
    head->addWidget(versionNumberTxtFld, 1, 1);
    head->addWidget(onOffSwitch, 0, 2, 2, 1, Qt::AlignRight | Qt::AlignVCenter);
    head->setColumnStretch(1, 1);
    outer->addLayout(head);
    outer->addWidget(rule(this));

    // How the drop window is opened.
    m_summonTitle = sectionTitle(this);
    remember(m_summonTitle, QT_TRANSLATE_NOOP("Quaydrop", "summonTitle"));
    outer->addWidget(m_summonTitle);
    onClickCheckBox = new QCheckBox(this);
    onClickCheckBox->setObjectName(QStringLiteral("onClickCheckBox"));
    remember(onClickCheckBox, QT_TRANSLATE_NOOP("Quaydrop", "onClickCheckBox"));
    outer->addWidget(onClickCheckBox);
    auto *keyRow = new QHBoxLayout;
    onHotkeyCheckBox = new QCheckBox(this);
    onHotkeyCheckBox->setObjectName(QStringLiteral("onHotkeyCheckBox"));
    remember(onHotkeyCheckBox, QT_TRANSLATE_NOOP("Quaydrop", "onHotkeyCheckBox"));
    shortcutView = new QKeySequenceEdit(this);
    shortcutView->setObjectName(QStringLiteral("shortcutView"));
    shortcutView->setClearButtonEnabled(false);
    keyRow->addWidget(onHotkeyCheckBox);
    keyRow->addWidget(shortcutView, 1);
    outer->addLayout(keyRow);
    hotKeyProblemLbl = new QLabel(this);
    hotKeyProblemLbl->setObjectName(QStringLiteral("hotKeyProblemLbl"));
    hotKeyProblemLbl->setStyleSheet(QStringLiteral("color: #c0392b;"));
    hotKeyProblemLbl->setWordWrap(true);
    hotKeyProblemLbl->hide();
    outer->addWidget(hotKeyProblemLbl);
    waylandNoteLbl = new QLabel(this);
    waylandNoteLbl->setObjectName(QStringLiteral("waylandNoteLbl"));
    waylandNoteLbl->setWordWrap(true);
    waylandNoteLbl->setForegroundRole(QPalette::PlaceholderText);
    // GNOME and Plasma hold the key for us on Wayland; elsewhere the user binds the command.
    remember(waylandNoteLbl, ShortcutHosts::detect() == ShortcutHost::None
                                 ? QT_TRANSLATE_NOOP("Quaydrop", "waylandNoteBindCommand")
                                 : QT_TRANSLATE_NOOP("Quaydrop", "waylandNote"));
    waylandNoteLbl->setVisible(isWaylandSession());
    outer->addWidget(waylandNoteLbl);
    outer->addWidget(rule(this));

    // Two switches.
    auto *switches = new QGridLayout;
    auto *loginLbl = new QLabel(this);
    remember(loginLbl, QT_TRANSLATE_NOOP("Quaydrop", "launchAtLoginSwitch"));
    launchAtLoginSwitch = new ITSwitch(this);
    launchAtLoginSwitch->setObjectName(QStringLiteral("launchAtLoginSwitch"));
    auto *notifyLbl = new QLabel(this);
    remember(notifyLbl, QT_TRANSLATE_NOOP("Quaydrop", "notifySwitch"));
    enableUserNotificationsSwitch = new ITSwitch(this);
    enableUserNotificationsSwitch->setObjectName(QStringLiteral("enableUserNotificationsSwitch"));
    loginLbl->setBuddy(launchAtLoginSwitch);
    notifyLbl->setBuddy(enableUserNotificationsSwitch);
    switches->addWidget(loginLbl, 0, 0);
    switches->addWidget(launchAtLoginSwitch, 0, 1, Qt::AlignRight);
    switches->addWidget(notifyLbl, 1, 0);
    switches->addWidget(enableUserNotificationsSwitch, 1, 1, Qt::AlignRight);
    outer->addLayout(switches);
    outer->addWidget(rule(this));

    // The time saved, and the way to share it.
    m_timeTitle = sectionTitle(this);
    remember(m_timeTitle, QT_TRANSLATE_NOOP("Quaydrop", "timeSavedTitle"));
    outer->addWidget(m_timeTitle);
    auto *times = new QGridLayout;
    const struct
    {
        const char *key;
        int tag;
        QLabel **value;
    } rows[] = {{QT_TRANSLATE_NOOP("Quaydrop", "thisWeek"), 1, &timeSavedWeeklyLbl},
                {QT_TRANSLATE_NOOP("Quaydrop", "inTotal"), 2, &timeSavedTotalLbl}};
    for (int i = 0; i < 2; ++i) {
        auto *label = new QLabel(this);
        remember(label, rows[i].key);
        *rows[i].value = new QLabel(this);
        (*rows[i].value)->setObjectName(i == 0 ? QStringLiteral("timeSavedWeeklyLbl") : QStringLiteral("timeSavedTotalLbl"));
        QFont mono = (*rows[i].value)->font();
        mono.setStyleHint(QFont::Monospace);
        mono.setFamily(QStringLiteral("monospace"));
        (*rows[i].value)->setFont(mono);
        auto *share = new RMBorderlessButton(QString(), this);
        share->setObjectName(QStringLiteral("shareTimeBtn%1").arg(rows[i].tag));
        share->setProperty("tag", rows[i].tag);
        remember(share, QT_TRANSLATE_NOOP("Quaydrop", "Share"));
        connect(share, &QPushButton::clicked, this, [this, share, tag = rows[i].tag] { showShareTimeMenu(tag, share); });
        times->addWidget(label, i, 0);
        times->addWidget(*rows[i].value, i, 1);
        times->addWidget(share, i, 2, Qt::AlignRight);
    }
    times->setColumnStretch(1, 1);
    outer->addLayout(times);
    m_howCalculated = new RMBorderlessButton(QString(), this);
    m_howCalculated->setObjectName(QStringLiteral("howCalculatedBtn"));
    QFont small = m_howCalculated->font();
    small.setBold(false);
    small.setPointSizeF(small.pointSizeF() * 0.9);
    m_howCalculated->setFont(small);
    remember(m_howCalculated, QT_TRANSLATE_NOOP("Quaydrop", "howCalculated"));
    outer->addWidget(m_howCalculated, 0, Qt::AlignLeft);
    outer->addWidget(rule(this));

    // Language, further commands, quit.
    auto *language = new QHBoxLayout;
    auto *languageLbl = new QLabel(this);
    remember(languageLbl, QT_TRANSLATE_NOOP("Quaydrop", "Language"));
    languagePop = new QComboBox(this);
    languagePop->setObjectName(QStringLiteral("languagePop"));
    languagePop->addItem(QStringLiteral("English"), 1);
    languagePop->addItem(QStringLiteral("Deutsch"), 2);
    languageLbl->setBuddy(languagePop);
    language->addWidget(languageLbl);
    language->addWidget(languagePop, 1);
    outer->addLayout(language);

    auto *bottom = new QHBoxLayout;
    optionsBtn = new MXButton(QString(), this);
    optionsBtn->setObjectName(QStringLiteral("optionsBtn"));
    remember(optionsBtn, QT_TRANSLATE_NOOP("Quaydrop", "Options"));
    quitBtn = new MXButton(QString(), this);
    quitBtn->setObjectName(QStringLiteral("quitBtn"));
    remember(quitBtn, QT_TRANSLATE_NOOP("Quaydrop", "Quit"));
    bottom->addWidget(optionsBtn);
    bottom->addStretch(1);
    bottom->addWidget(quitBtn);
    outer->addLayout(bottom);

    optionsSubMenu = new QMenu();
    optionsSubMenu->setObjectName(QStringLiteral("optionsSubMenu"));
    const struct
    {
        const char *key;
        void (PopMenuContentViewController::*command)();
    } commands[] = {
        {QT_TRANSLATE_NOOP("Quaydrop", "exclListMenuItem"), &PopMenuContentViewController::showExclusionList},
        {QT_TRANSLATE_NOOP("Quaydrop", "favDestMenuItem"), &PopMenuContentViewController::showFavDestinationManagerWindow},
        {QT_TRANSLATE_NOOP("Quaydrop", "helpIconsMenuItem"), &PopMenuContentViewController::showHelpScreenshot},
        {QT_TRANSLATE_NOOP("Quaydrop", "supportMenuItem"), &PopMenuContentViewController::contactSupport},
        {QT_TRANSLATE_NOOP("Quaydrop", "tellFriendMenuItem"), &PopMenuContentViewController::tellaFriendViaMail},
        {QT_TRANSLATE_NOOP("Quaydrop", "hideIconMenuItem"), &PopMenuContentViewController::hideMenuBarIcon},
        {QT_TRANSLATE_NOOP("Quaydrop", "aboutMenuItem"), &PopMenuContentViewController::openAboutPageLink},
    };
    for (const auto &c : commands) {
        // Groups: the program's windows and help, then people, then the icon and the program.
        if (qstrcmp(c.key, "supportMenuItem") == 0 || qstrcmp(c.key, "hideIconMenuItem") == 0)
            optionsSubMenu->addSeparator();
        QAction *a = optionsSubMenu->addAction(QString());
        a->setObjectName(QString::fromLatin1(c.key));
        a->setData(QByteArray(c.key));
        connect(a, &QAction::triggered, this, c.command);
    }
    shareTimeSubMenu = new QMenu();
    shareTimeSubMenu->setObjectName(QStringLiteral("shareTimeSubMenu"));
    postOnTwitterMenuItem = shareTimeSubMenu->addAction(QString());
    postOnTwitterMenuItem->setData(QByteArray(QT_TRANSLATE_NOOP("Quaydrop", "shareOnX")));
    postOnFBmenuItem = shareTimeSubMenu->addAction(QString());
    postOnFBmenuItem->setData(QByteArray(QT_TRANSLATE_NOOP("Quaydrop", "shareOnFacebook")));
    connect(postOnTwitterMenuItem, &QAction::triggered, this, &PopMenuContentViewController::shareTimeOnTwitter);
    connect(postOnFBmenuItem, &QAction::triggered, this, &PopMenuContentViewController::shareTimeOnFacebook);

    connect(onOffSwitch, &ITSwitch::switched, this, &PopMenuContentViewController::ONOFFBtnAction);
    connect(launchAtLoginSwitch, &ITSwitch::switched, this, &PopMenuContentViewController::launchAtLogInCheckBoxAction);
    connect(enableUserNotificationsSwitch, &ITSwitch::switched, this, &PopMenuContentViewController::enableUserNotifSwAction);
    connect(onHotkeyCheckBox, &QCheckBox::clicked, this, &PopMenuContentViewController::onHotkeyCheckBoxAction);
    connect(onClickCheckBox, &QCheckBox::clicked, this, &PopMenuContentViewController::onClickCheckBoxAction);
    connect(shortcutView, &QKeySequenceEdit::editingFinished, this, &PopMenuContentViewController::shortcutRecorded);
    connect(languagePop, &QComboBox::activated, this, [this](int index) { changeLanguage(languagePop->itemData(index).toInt()); });
    connect(m_howCalculated, &QPushButton::clicked, this, &PopMenuContentViewController::HowIsThisCalculatedAction);
    connect(optionsBtn, &QPushButton::clicked, this,
            [this] { optionsSubMenu->popup(optionsBtn->mapToGlobal(QPoint(0, optionsBtn->height()))); });
    connect(quitBtn, &QPushButton::clicked, this, &PopMenuContentViewController::quitQuaydrop);
    applyPaletteColors();
}

void PopMenuContentViewController::retranslate()
{
    m_texts.retranslate();
    for (QMenu *menu : {optionsSubMenu, shareTimeSubMenu})
        for (QAction *a : menu->actions())
            if (!a->isSeparator())
                a->setText(Texts::localized(a->data().toByteArray().constData()));
    const int index = languagePop->findData(Texts::language() == u"de" ? 2 : 1);
    const QSignalBlocker quiet(languagePop);
    languagePop->setCurrentIndex(index);
}

void PopMenuContentViewController::applyPaletteColors()
{
    // Links must read on a dark panel too, where the usual link blue is too dark.
    QColor link = palette().color(QPalette::Link);
    if (palette().color(QPalette::Window).lightness() < 128 && link.lightness() < 150)
        link = QColor(120, 170, 255);
    for (auto *button : findChildren<RMBorderlessButton *>())
        button->setColor(link);
    for (MXButton *b : {optionsBtn, quitBtn}) {
        b->setBackgroundColor(palette().color(QPalette::Button));
        b->setHighlightColor(palette().color(QPalette::Midlight));
        b->setTextColor(palette().color(QPalette::ButtonText));
        b->setHighlightTextColor(palette().color(QPalette::PlaceholderText));
    }
}

void PopMenuContentViewController::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        applyPaletteColors();
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void PopMenuContentViewController::refresh()
{
    onOffSwitch->setOn(Utils::QuaydropIsOFFSate());
    applySummonState(Utils::isShortcutEnabled());
    versionNumberTxtFld->setText(QStringLiteral("v. %1").arg(QStringLiteral(QD_VERSION)));
    const QSignalBlocker quiet(shortcutView);
    shortcutView->setKeySequence(QKeySequence::fromString(Utils::showPanelHotKey(), QKeySequence::PortableText));
    const QVariantMap ledger = Utils::getTimeSavedDictionaryValues().value_or(QVariantMap{});
    timeSavedWeeklyLbl->setText(relativeTime(ledger.value(QStringLiteral("weeklySecSaved")).toULongLong()));
    timeSavedTotalLbl->setText(relativeTime(ledger.value(QStringLiteral("totalSecSaved")).toULongLong()));
    launchAtLoginSwitch->setOn(Utils::isLogInAtLaunch());
    enableUserNotificationsSwitch->setOn(Utils::enableUserNotifWhenDoneSwitchValue());
    launchAtLoginSwitch->setEnabled(Platform::current().loginItems != nullptr);
}

void PopMenuContentViewController::applySummonState(bool shortcutEnabled)
{
    const auto state = OptionsRules::fromShortcutEnabled(shortcutEnabled);
    onHotkeyCheckBox->setChecked(state.hotkeyBox);
    onClickCheckBox->setChecked(state.clickBox);
    shortcutView->setEnabled(state.recorderEnabled);
    if (!state.recorderEnabled)
        hotKeyProblemLbl->hide();
}

void PopMenuContentViewController::setShortcutEnabled(bool enabled)
{
    if (enabled == Utils::isShortcutEnabled())
        return;
    SettingsStore::shared().setBool(SettingsKey::ShowPanelHKEnabled, enabled);
    SettingsStore::shared().synchronize();
}

void PopMenuContentViewController::ONOFFBtnAction()
{
    SettingsStore::shared().setBool(SettingsKey::QuaydropIsOff, onOffSwitch->isOn());
    SettingsStore::shared().synchronize();
    if (m_statusItem)
        m_statusItem->setAppearsDisabled(!onOffSwitch->isOn());
}

void PopMenuContentViewController::launchAtLogInCheckBoxAction()
{
    Utils::setLogInAtLaunch(launchAtLoginSwitch->isOn());
    // What the desktop now says, in case the entry could not be written.
    launchAtLoginSwitch->setOn(Utils::isLogInAtLaunch());
}

void PopMenuContentViewController::enableUserNotifSwAction()
{
    SettingsStore::shared().setBool(SettingsKey::EnableUserNotifWhenDoneSwitch, enableUserNotificationsSwitch->isOn());
    SettingsStore::shared().synchronize();
}

void PopMenuContentViewController::onHotkeyCheckBoxAction()
{
    const auto state = OptionsRules::afterHotkeyBox(onHotkeyCheckBox->isChecked());
    // The setting first: the key's binding reads it when the notice arrives.
    setShortcutEnabled(state.shortcutEnabled);
    applySummonState(state.shortcutEnabled);
    NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::ActivateViaSettingsChanged));
}

void PopMenuContentViewController::onClickCheckBoxAction()
{
    const auto state = OptionsRules::afterClickBox(onClickCheckBox->isChecked());
    setShortcutEnabled(state.shortcutEnabled);
    applySummonState(state.shortcutEnabled);
    NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::ActivateViaSettingsChanged));
}

void PopMenuContentViewController::shortcutRecorded()
{
    const QKeySequence recorded = shortcutView->keySequence();
    if (recorded.isEmpty())
        return;
    // One combination: the first the user pressed.
    const QKeySequence key(recorded[0]);
    const QSignalBlocker quiet(shortcutView);
    shortcutView->setKeySequence(key);
    hotKeyProblemLbl->hide();
    SettingsStore::shared().setString(SettingsKey::ShowPanelHK, key.toString(QKeySequence::PortableText));
    SettingsStore::shared().synchronize();
    NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::ActivateViaSettingsChanged));
}

void PopMenuContentViewController::changeLanguage(int tag)
{
    if (tag == 1)
        Texts::chooseLanguage(QStringLiteral("en"));
    else if (tag == 2)
        Texts::chooseLanguage(QStringLiteral("de"));
}

