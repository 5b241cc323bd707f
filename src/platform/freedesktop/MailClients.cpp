#include "MailClients.h"

#include "DesktopExec.h"

#include <QUrl>

namespace {

bool names(const DesktopApplication &app, std::initializer_list<const char *> words)
{
    // Flatpak's desktop files run "flatpak": the id then tells which program it is.
    const QString id = app.id.toLower();
    const QString program = app.executable.toLower();
    for (const char *w : words)
        if (id.contains(QLatin1String(w)) || program.contains(QLatin1String(w)))
            return true;
    return false;
}

QString listSafe(QString uri)
{
    uri.replace(QLatin1Char(','), QLatin1String("%2C"));
    uri.replace(QLatin1Char('\''), QLatin1String("%27"));
    return uri;
}

} // namespace

MailClients::Form MailClients::formOf(const DesktopApplication &app)
{
    if (names(app, {"thunderbird", "icedove", "betterbird"}))
        return Form::ThunderbirdCompose;
    if (names(app, {"kmail"}))
        return Form::KMailAttach;
    if (names(app, {"evolution", "geary"}))
        return Form::MailtoAttach;
    if (names(app, {"claws-mail", "sylpheed"}))
        return Form::AttachList;
    return Form::None;
}

QString MailClients::thunderbirdAttachment(const QStringList &fileUris)
{
    QStringList safe;
    for (const QString &uri : fileUris)
        safe.append(listSafe(uri));
    return QStringLiteral("attachment='%1'").arg(safe.join(QLatin1Char(',')));
}

QString MailClients::mailtoAttaching(const QStringList &fileUris)
{
    QStringList fields;
    for (const QString &uri : fileUris)
        fields.append(QStringLiteral("attach=") + QString::fromLatin1(QUrl::toPercentEncoding(uri)));
    return QStringLiteral("mailto:?") + fields.join(QLatin1Char('&'));
}

std::optional<Spawn::Argv> MailClients::composeCommand(const DesktopApplication &app, const QStringList &fileUris)
{
    const Form form = formOf(app);
    if (form == Form::None)
        return std::nullopt;
    auto argv = DesktopExec::baseCommand(app);
    if (!argv)
        return std::nullopt;
    switch (form) {
    case Form::ThunderbirdCompose:
        *argv << QByteArray("-compose") << thunderbirdAttachment(fileUris).toLatin1();
        break;
    case Form::MailtoAttach:
        argv->append(mailtoAttaching(fileUris).toLatin1());
        break;
    case Form::KMailAttach:
        argv->append(QByteArray("--composer"));
        for (const QString &uri : fileUris)
            *argv << QByteArray("--attach") << uri.toLatin1();
        break;
    case Form::AttachList:
        // "--compose [ADDRESS]" would take the option after it for an address.
        argv->removeAll(QByteArray("--compose"));
        argv->append(QByteArray("--attach"));
        for (const QString &uri : fileUris)
            argv->append(uri.toLatin1());
        break;
    case Form::None:
        break;
    }
    return argv;
}
