#include "platform/Platform.h"
#include "utils/Utils.h"

#include <QUrl>

const QHash<QChar, QString> &Utils::percentForSpecialChars()
{
    static const QHash<QChar, QString> table = {
        {'!', "%21"}, {'#', "%23"}, {'$', "%24"}, {'&', "%26"}, {'\'', "%27"}, {'(', "%28"},
        {')', "%29"}, {'*', "%2A"}, {'+', "%2B"}, {',', "%2C"}, {'/', "%2F"}, {':', "%3A"},
        {';', "%3B"}, {'=', "%3D"}, {'?', "%3F"}, {'@', "%40"}, {'[', "%5B"}, {']', "%5D"},
    };
    return table;
}

QString Utils::percentEscapedString(const QString &string)
{
    // First what is never allowed in a URL: blanks, controls, quotes, "%", "<>\^`{|}" and every byte
    // beyond ASCII, as UTF-8; then the table's reserved characters.
    const QByteArray step1 = QUrl::toPercentEncoding(string, "!#$&'()*+,/:;=?@[]");
    QString escaped = QString::fromLatin1(step1);
    const auto &table = percentForSpecialChars();
    for (auto it = table.cbegin(); it != table.cend(); ++it)
        escaped.replace(it.key(), it.value());
    return escaped;
}

QString Utils::urlQueryFromDictionary(const QVariantMap &dictionary)
{
    QString query;
    for (auto it = dictionary.cbegin(); it != dictionary.cend(); ++it) {
        const QString separator = it == dictionary.cbegin() ? QString() : QStringLiteral("&");
        query += QStringLiteral("%1%2=%3").arg(separator, percentEscapedString(it.key()),
                                               percentEscapedString(it.value().toString()));
    }
    return query;
}

QString Utils::mailingAppName()
{
    MailService *mail = Platform::current().mail;
    return mail ? mail->defaultClient().desktopFile : QString();
}

bool Utils::openMailtoURL(const QString &url)
{
    Status s = Error{QStringLiteral("Mail"), MailService::NoMailProgram, QStringLiteral("no mail service")};
    if (MailService *mail = Platform::current().mail)
        s = mail->openMailto(url);
    else if (Workspace *workspace = Platform::current().workspace)
        s = workspace->openUrl(url);
    if (!s.ok())
        qWarning("the mail program did not open: %s", qPrintable(s.error().message));
    return s.ok();
}

void Utils::sendEmailTo(const QString &address, const QString &body, const QString &subject)
{
    // "mailto:ADDRESS?Subject=SUBJECT&body=BODY": the body is escaped as a query value; in the address
    // and the subject only the blanks are.
    const QString query = urlQueryFromDictionary({{QStringLiteral("body"), body}});
    QString url = QStringLiteral("mailto:%1?Subject=%2&%3").arg(address, subject, query);
    url.replace(QChar(' '), QStringLiteral("%20"));
    openMailtoURL(url);
}
