#include "UriList.h"

namespace UriList {

QList<QByteArray> localPathBytes(const QByteArray &uriList)
{
    QList<QByteArray> paths;
    for (QByteArray line : uriList.split('\n')) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith('#') || !line.startsWith("file://"))
            continue;
        const QByteArray rest = line.mid(7);
        const qsizetype slash = rest.indexOf('/');
        if (slash < 0)
            continue;
        const QByteArray host = rest.left(slash);
        if (!host.isEmpty() && host != "localhost")
            continue; // a file of another machine is no local path
        paths.append(QByteArray::fromPercentEncoding(rest.mid(slash)));
    }
    return paths;
}

} // namespace UriList
