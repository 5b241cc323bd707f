#include "ExclusionListWC.h"

#include "core/texts/Texts.h"

#include <QEvent>
#include "utils/Utils.h"

#include <QApplication>
#include <QCursor>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

namespace {

constexpr int kRowHeight = 30;
constexpr int kIdRole = Qt::UserRole + 1;

QString shownName(const DesktopEntries &entries, const QString &id)
{
    const DesktopApplication *app = entries.byId(id);
    return app ? app->name : id; // a window class without a desktop file shows as it is
}

} // namespace

QIcon ExclusionListWC::iconFor(const DesktopApplication *app)
{
    QIcon icon;
    if (app && QFileInfo(app->iconName).isAbsolute())
        icon = QIcon(app->iconName);
    else if (app)
        icon = QIcon::fromTheme(app->iconName);
    if (icon.isNull())
        icon = QIcon::fromTheme(QStringLiteral("application-x-executable"));
    if (icon.isNull())
        icon = QApplication::style()->standardIcon(QStyle::SP_ComputerIcon);
    return icon;
}

ExclusionListWC::ExclusionListWC(DesktopEntries entries, QWidget *parent)
    : QWidget(parent, Qt::Window), m_entries(std::move(entries))
{
    setObjectName(QStringLiteral("exclusionList"));
    auto *layout = new QVBoxLayout(this);
    auto *intro = new QLabel;
    m_texts.add(intro, "exclListIntro");
    intro->setWordWrap(true);
    layout->addWidget(intro);

    exclTblView = new QListWidget;
    exclTblView->setObjectName(QStringLiteral("exclTblView"));
    exclTblView->setIconSize(QSize(22, 22));
    exclTblView->setUniformItemSizes(true);
    exclTblView->setSelectionMode(QAbstractItemView::NoSelection);
    layout->addWidget(exclTblView, 1);

    auto *buttons = new QHBoxLayout;
    auto *add = new QPushButton;
    m_texts.add(add, "exclAddApp");
    add->setObjectName(QStringLiteral("chooseApplicationBtn"));
    connect(add, &QPushButton::clicked, this, &ExclusionListWC::chooseApplication);
    hintBtn = new QToolButton;
    hintBtn->setObjectName(QStringLiteral("hintBtn"));
    hintBtn->setText(QStringLiteral("?"));
    connect(hintBtn, &QToolButton::clicked, this, &ExclusionListWC::showHint);
    buttons->addWidget(add);
    buttons->addStretch(1);
    buttons->addWidget(hintBtn);
    layout->addLayout(buttons);
    resize(380, 320);
    retranslate();
}

void ExclusionListWC::retranslate()
{
    setWindowTitle(Texts::localized("exclListTitle"));
    hintBtn->setToolTip(Texts::localized("exclHintBtnTxt"));
    m_texts.retranslate();
    updTblViewData(); // the rows' buttons carry texts too
}

void ExclusionListWC::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void ExclusionListWC::updTblViewData()
{
    exclApps = Utils::exclBndlIDAppsArray();
    exclTblView->clear();
    for (int row = 0; row < exclApps.size(); ++row) {
        const QString &id = exclApps.at(row);
        auto *item = new QListWidgetItem(exclTblView);
        item->setSizeHint(QSize(0, kRowHeight));
        item->setData(kIdRole, id);
        auto *cell = new QWidget;
        cell->setObjectName(QStringLiteral("exclCell"));
        auto *line = new QHBoxLayout(cell);
        line->setContentsMargins(6, 0, 4, 0);
        auto *icon = new QLabel;
        icon->setPixmap(iconFor(m_entries.byId(id)).pixmap(22, 22));
        auto *name = new QLabel(shownName(m_entries, id));
        name->setToolTip(id);
        auto *remove = new QToolButton;
        remove->setObjectName(QStringLiteral("removeAppBtn"));
        remove->setIcon(style()->standardIcon(QStyle::SP_DialogDiscardButton));
        remove->setToolTip(Texts::localized("exclRemoveBtn"));
        remove->setAutoRaise(true);
        connect(remove, &QToolButton::clicked, this, [this, item] { removeAppFromExclList(exclTblView->row(item)); });
        line->addWidget(icon);
        line->addWidget(name, 1);
        line->addWidget(remove);
        exclTblView->setItemWidget(item, cell);
    }
}

void ExclusionListWC::removeAppFromExclList(int row)
{
    if (row < 0 || row >= exclApps.size() || m_question)
        return;
    const QString id = exclApps.at(row);
    m_question = new QMessageBox(QMessageBox::Critical, windowTitle(), Texts::localized("exclListDeleteAlertTitle"),
                                 QMessageBox::NoButton, this);
    m_question->setInformativeText(shownName(m_entries, id));
    QPushButton *yes = m_question->addButton(Texts::localized("YES"), QMessageBox::AcceptRole);
    m_question->addButton(Texts::localized("NO"), QMessageBox::RejectRole);
    m_question->setDefaultButton(yes);
    m_question->setWindowModality(Qt::WindowModal);
    m_question->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_question, &QMessageBox::finished, this, [this, yes, id] {
        const bool confirmed = m_question->clickedButton() == yes;
        m_question = nullptr;
        if (!confirmed)
            return;
        Utils::updateExlAppsPlistWithBundleId(id, true);
        updTblViewData();
    });
    m_question->open();
}

void ExclusionListWC::chooseApplication()
{
    if (m_picker)
        return;
    auto *picker = new ApplicationPicker(m_entries, exclApps, this);
    m_picker = picker;
    picker->setAttribute(Qt::WA_DeleteOnClose);
    connect(picker, &QDialog::finished, this, [this, picker](int result) {
        m_picker = nullptr;
        if (result == QDialog::Accepted)
            addChosen(picker->chosenIds());
    });
    picker->open();
}

void ExclusionListWC::addChosen(const QStringList &ids)
{
    for (const QString &id : ids) {
        Utils::updateExlAppsPlistWithBundleId(id, false);
        updTblViewData();
    }
}

void ExclusionListWC::showHint()
{
    QToolTip::showText(QCursor::pos(), Texts::localized("exclHintBtnTxt"), hintBtn);
}

ApplicationPicker::ApplicationPicker(const DesktopEntries &entries, const QStringList &alreadyListed, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("applicationPicker"));
    setWindowTitle(Texts::localized("exclPickerTitle"));
    setWindowModality(Qt::WindowModal);
    auto *layout = new QVBoxLayout(this);
    m_filter = new QLineEdit;
    m_filter->setPlaceholderText(Texts::localized("exclFilterPlaceholder"));
    m_filter->setClearButtonEnabled(true);
    layout->addWidget(m_filter);
    m_list = new QListWidget;
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setIconSize(QSize(22, 22));
    QList<DesktopApplication> apps;
    for (const DesktopApplication &app : entries.applications())
        if (app.shown && !alreadyListed.contains(app.id))
            apps.append(app);
    std::sort(apps.begin(), apps.end(), [](const DesktopApplication &a, const DesktopApplication &b) {
        return QString::localeAwareCompare(a.name, b.name) < 0;
    });
    for (const DesktopApplication &app : apps) {
        auto *item = new QListWidgetItem(ExclusionListWC::iconFor(&app), app.name, m_list);
        item->setData(kIdRole, app.id);
        item->setToolTip(app.id);
    }
    layout->addWidget(m_list, 1);
    auto *box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QPushButton *ok = box->button(QDialogButtonBox::Ok);
    ok->setEnabled(false);
    connect(m_list, &QListWidget::itemSelectionChanged, this, [this, ok] { ok->setEnabled(!m_list->selectedItems().isEmpty()); });
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(box);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &text) {
        for (int i = 0; i < m_list->count(); ++i) {
            QListWidgetItem *item = m_list->item(i);
            item->setHidden(!item->text().contains(text, Qt::CaseInsensitive) &&
                            !item->data(kIdRole).toString().contains(text, Qt::CaseInsensitive));
        }
    });
    resize(360, 420);
}

QStringList ApplicationPicker::chosenIds() const
{
    QStringList ids;
    for (int i = 0; i < m_list->count(); ++i)
        if (m_list->item(i)->isSelected())
            ids.append(m_list->item(i)->data(kIdRole).toString());
    return ids;
}
