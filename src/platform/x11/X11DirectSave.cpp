#include "X11DragPasteboard.h"

#include "X11Connection.h"

#include <QElapsedTimer>
#include <QFile>
#include <QScopeGuard>
#include <QSysInfo>
#include <QUrl>

namespace {

// A source writes a promised file in the time it takes to write a file.
constexpr int kSaveBudgetMs = 5000;

} // namespace

Result<PromisedFiles> X11DragPasteboard::namesOfPromisedFilesDroppedAtDestination(const QString &folder,
                                                                                 quintptr dropTargetWindow)
{
    const auto error = [](int code, const QString &message) { return Error{QStringLiteral("XdndDirectSave"), code, message}; };
    const quint32 property = m_x->atom("XdndDirectSave0");
    // The name sits on the window the drag came from: the selection's owner, or (a browser's) the
    // window the button went down in.
    quint32 source = 0;
    QByteArray offered;
    for (const quint32 window : std::as_const(m_sources)) {
        offered = m_x->property(window, property, XCB_GET_PROPERTY_TYPE_ANY).value_or(QByteArray());
        if (!offered.isEmpty()) {
            source = window;
            break;
        }
    }
    if (!source)
        return error(1, QStringLiteral("the drag source names no file to save"));
    // A name, never a path: the source must not be steered out of the folder.
    const QString name = QFile::decodeName(offered).section(QLatin1Char('/'), -1);
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
        return error(2, QStringLiteral("the drag source named no usable file"));
    QUrl target = QUrl::fromLocalFile(folder + QLatin1Char('/') + name);
    target.setHost(QSysInfo::machineHostName());
    const QByteArray uri = target.toEncoded();
    xcb_change_property(m_x->connection(), XCB_PROP_MODE_REPLACE, source, property, m_x->atom("text/plain"), 8,
                        quint32(uri.size()), uri.constData());
    // Asked from inside the window the drop landed on: once the drag is over, that is how a Qt source
    // finds the drop the request belongs to.
    const quint32 requestor = dropTargetWindow ? m_x->createHiddenChild(quint32(dropTargetWindow)) : 0;
    const auto cleanUp = qScopeGuard([this, requestor] {
        if (requestor)
            m_x->destroyWindow(requestor);
    });
    QElapsedTimer clock;
    clock.start();
    for (const quint32 time : candidateTimes()) {
        const int left = int(kSaveBudgetMs - clock.elapsed());
        if (left <= 0)
            break;
        const auto answer = m_x->convertSelection(m_x->atom("XdndSelection"), property, time, left, requestor);
        if (!answer)
            continue;
        if (answer->startsWith('S'))
            return PromisedFiles{{name}, {}};
        // "F": the source would rather hand over the bytes (browsers do so).
        if (answer->startsWith('F'))
            return PromisedFiles{{name}, QStringLiteral("application/octet-stream")};
        return error(3, QStringLiteral("the drag source could not write %1 (answer \"%2\")")
                            .arg(name, QString::fromLatin1(answer->left(1))));
    }
    return error(4, QStringLiteral("the drag source did not write %1").arg(name));
}
