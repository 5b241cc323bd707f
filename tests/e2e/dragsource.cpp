// A window that starts a drag when pressed: files (--files PATH...) or text (--text TEXT), as a file
// manager or an editor would. Prints "dropped" with the action once the drag ends.

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

#include <cstdio>

class DragSource : public QWidget
{
public:
    explicit DragSource(QMimeData *(*make)(const QStringList &), QStringList args) : m_make(make), m_args(std::move(args))
    {
        setWindowTitle(QStringLiteral("drag source"));
        setFixedSize(120, 120);
    }

protected:
    void mousePressEvent(QMouseEvent *) override
    {
        auto *drag = new QDrag(this);
        drag->setMimeData(m_make(m_args));
        const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction);
        std::printf("dropped %d\n", int(action));
        std::fflush(stdout);
    }

private:
    QMimeData *(*m_make)(const QStringList &);
    QStringList m_args;
};

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    if (args.isEmpty())
        return 2;
    const QString kind = args.takeFirst();
    auto files = [](const QStringList &paths) {
        auto *data = new QMimeData;
        QList<QUrl> urls;
        for (const QString &p : paths)
            urls.append(QUrl::fromLocalFile(p));
        data->setUrls(urls);
        return data;
    };
    auto text = [](const QStringList &words) {
        auto *data = new QMimeData;
        data->setText(words.join(QLatin1Char(' ')));
        return data;
    };
    DragSource source(kind == QLatin1String("--files") ? +files : +text, args);
    source.move(40, 40);
    source.show();
    std::printf("ready\n");
    std::fflush(stdout);
    return app.exec();
}
