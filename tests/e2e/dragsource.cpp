// A window that starts a drag when pressed, as a file manager, an editor or an archive viewer would:
//   --files PATH...   file names
//   --text TEXT...    text
//   --promise NAME    a file it writes only once the drop target says where (X Direct Save)
// Prints "ready" when shown, "dropped" with the action once the drag ends, and "wrote PATH" for a
// promised file.

#include <QApplication>
#include <QDrag>
#include <QFile>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>

namespace {

xcb_connection_t *xcb() { return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection(); }

xcb_atom_t atom(const char *name)
{
    auto *reply = xcb_intern_atom_reply(xcb(), xcb_intern_atom(xcb(), 0, quint16(strlen(name)), name), nullptr);
    const xcb_atom_t value = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    free(reply);
    return value;
}

// The window the drag runs from is the owner of XdndSelection.
xcb_window_t dragWindow()
{
    auto *reply = xcb_get_selection_owner_reply(xcb(), xcb_get_selection_owner(xcb(), atom("XdndSelection")), nullptr);
    const xcb_window_t owner = reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
    free(reply);
    return owner;
}

// X Direct Save, the source's part: the file name on the drag window, then, once the target has put
// a file URI there and asks for XdndDirectSave0, the file is written and "S" is the answer.
class PromisedFile : public QMimeData
{
public:
    explicit PromisedFile(QString name) : m_name(std::move(name)) {}
    QStringList formats() const override { return {QStringLiteral("XdndDirectSave0")}; }
    bool hasFormat(const QString &type) const override { return type == QLatin1String("XdndDirectSave0"); }
    void announce() const
    {
        const QByteArray name = m_name.toUtf8();
        xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, dragWindow(), atom("XdndDirectSave0"), atom("text/plain"), 8,
                            quint32(name.size()), name.constData());
        xcb_flush(xcb());
    }

protected:
    QVariant retrieveData(const QString &type, QMetaType) const override
    {
        if (type != QLatin1String("XdndDirectSave0"))
            return {};
        auto *reply = xcb_get_property_reply(
            xcb(), xcb_get_property(xcb(), 0, dragWindow(), atom("XdndDirectSave0"), XCB_GET_PROPERTY_TYPE_ANY, 0, 4096), nullptr);
        const QByteArray uri = reply ? QByteArray(static_cast<const char *>(xcb_get_property_value(reply)),
                                                  xcb_get_property_value_length(reply))
                                     : QByteArray();
        free(reply);
        const QUrl url = QUrl::fromEncoded(uri);
        if (url.scheme() != QLatin1String("file"))
            return QByteArray("E"); // asked before a place was given
        QFile file(url.path());
        if (!file.open(QIODevice::WriteOnly) || file.write("written by the drag source\n") <= 0)
            return QByteArray("F");
        file.close();
        std::printf("wrote %s\n", qPrintable(url.path()));
        std::fflush(stdout);
        return QByteArray("S");
    }

private:
    QString m_name;
};

} // namespace

class DragSource : public QWidget
{
public:
    DragSource(QString kind, QStringList args) : m_kind(std::move(kind)), m_args(std::move(args))
    {
        setWindowTitle(QStringLiteral("drag source"));
        setFixedSize(120, 120);
    }

protected:
    // As applications do: the drag starts once the pressed pointer has moved a little.
    void mousePressEvent(QMouseEvent *event) override { m_pressedAt = event->position().toPoint(); }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (!(event->buttons() & Qt::LeftButton) || m_pressedAt.x() < 0 ||
            (event->position().toPoint() - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
            return;
        m_pressedAt = QPoint(-1, -1);
        startDrag();
    }

private:
    void startDrag()
    {
        auto *drag = new QDrag(this);
        if (m_kind == QLatin1String("--promise")) {
            auto *promise = new PromisedFile(m_args.value(0));
            drag->setMimeData(promise);
            // The selection is ours once the drag has started.
            QTimer::singleShot(0, promise, [promise] { promise->announce(); });
        } else {
            auto *data = new QMimeData;
            if (m_kind == QLatin1String("--files")) {
                QList<QUrl> urls;
                for (const QString &p : std::as_const(m_args))
                    urls.append(QUrl::fromLocalFile(p));
                data->setUrls(urls);
            } else {
                data->setText(m_args.join(QLatin1Char(' ')));
            }
            drag->setMimeData(data);
        }
        const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction);
        std::printf("dropped %d\n", int(action));
        std::fflush(stdout);
    }

    QString m_kind;
    QStringList m_args;
    QPoint m_pressedAt{-1, -1};
};

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    if (args.isEmpty())
        return 2;
    const QString kind = args.takeFirst();
    DragSource source(kind, args);
    source.move(40, 40);
    source.show();
    std::printf("ready\n");
    std::fflush(stdout);
    return app.exec();
}
