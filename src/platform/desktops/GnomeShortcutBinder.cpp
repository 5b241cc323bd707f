#include "GnomeShortcutBinder.h"

#include "platform/posix/OnDemandLibrary.h"

#include <gio/gio.h>

#include <QKeySequence>

namespace {

constexpr const char *kListSchema = "org.gnome.settings-daemon.plugins.media-keys";
constexpr const char *kEntrySchema = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
constexpr const char *kListKey = "custom-keybindings";

Error gnomeError(const QString &message) { return Error{QStringLiteral("GnomeShortcut"), 1, message}; }

// GSettings's calls, opened when a GNOME shortcut is first looked at: most sessions never need them,
// and linked they would stay mapped in the resident program.
struct Gio
{
    decltype(&g_settings_schema_source_get_default) schemaSource = nullptr;
    decltype(&g_settings_schema_source_lookup) lookupSchema = nullptr;
    decltype(&g_settings_schema_unref) unrefSchema = nullptr;
    decltype(&g_settings_new) open = nullptr;
    decltype(&g_settings_new_with_path) openAt = nullptr;
    decltype(&g_settings_get_strv) getStrv = nullptr;
    decltype(&g_settings_set_strv) setStrv = nullptr;
    decltype(&g_settings_set_string) setString = nullptr;
    decltype(&g_settings_reset) reset = nullptr;
    decltype(&g_settings_sync) sync = nullptr;
    decltype(&g_strfreev) freeStrv = nullptr;
    decltype(&g_object_unref) unref = nullptr;
    bool usable = false;
};

const Gio &gio()
{
    static const Gio calls = [] {
        Gio g;
        OnDemandLibrary library("gio-2.0", 0);
        g.usable = library.resolve(g.schemaSource, "g_settings_schema_source_get_default")
            && library.resolve(g.lookupSchema, "g_settings_schema_source_lookup")
            && library.resolve(g.unrefSchema, "g_settings_schema_unref") && library.resolve(g.open, "g_settings_new")
            && library.resolve(g.openAt, "g_settings_new_with_path") && library.resolve(g.getStrv, "g_settings_get_strv")
            && library.resolve(g.setStrv, "g_settings_set_strv") && library.resolve(g.setString, "g_settings_set_string")
            && library.resolve(g.reset, "g_settings_reset") && library.resolve(g.sync, "g_settings_sync")
            && library.resolve(g.freeStrv, "g_strfreev") && library.resolve(g.unref, "g_object_unref");
        if (!g.usable)
            qInfo("no GSettings for GNOME shortcuts: %s", qPrintable(library.errorString()));
        return g;
    }();
    return calls;
}

bool hasSchema(const char *id)
{
    GSettingsSchemaSource *source = gio().schemaSource();
    GSettingsSchema *schema = source ? gio().lookupSchema(source, id, TRUE) : nullptr;
    if (schema)
        gio().unrefSchema(schema);
    return schema != nullptr;
}

QStringList customPaths(GSettings *list)
{
    QStringList paths;
    gchar **values = gio().getStrv(list, kListKey);
    for (gchar **v = values; v && *v; ++v)
        paths << QString::fromUtf8(*v);
    gio().freeStrv(values);
    return paths;
}

void setCustomPaths(GSettings *list, const QStringList &paths)
{
    QList<QByteArray> bytes;
    std::vector<const gchar *> values;
    for (const QString &p : paths)
        bytes << p.toUtf8();
    for (const QByteArray &b : bytes)
        values.push_back(b.constData());
    values.push_back(nullptr);
    gio().setStrv(list, kListKey, values.data());
}

// Qt's key names where GNOME (GDK) names them otherwise.
QString gdkKeyName(const QString &qtName)
{
    static const QHash<QString, QString> names{
        {QStringLiteral("Esc"), QStringLiteral("Escape")},   {QStringLiteral("Del"), QStringLiteral("Delete")},
        {QStringLiteral("Ins"), QStringLiteral("Insert")},   {QStringLiteral("PgUp"), QStringLiteral("Page_Up")},
        {QStringLiteral("PgDown"), QStringLiteral("Page_Down")}, {QStringLiteral("Space"), QStringLiteral("space")},
        {QStringLiteral("Backspace"), QStringLiteral("BackSpace")}, {QStringLiteral("Enter"), QStringLiteral("KP_Enter")},
        {QStringLiteral("Return"), QStringLiteral("Return")}, {QStringLiteral("Tab"), QStringLiteral("Tab")},
        {QStringLiteral("Home"), QStringLiteral("Home")},     {QStringLiteral("End"), QStringLiteral("End")},
        {QStringLiteral("Left"), QStringLiteral("Left")},     {QStringLiteral("Right"), QStringLiteral("Right")},
        {QStringLiteral("Up"), QStringLiteral("Up")},         {QStringLiteral("Down"), QStringLiteral("Down")},
    };
    if (const auto known = names.constFind(qtName); known != names.constEnd())
        return *known;
    if (qtName.size() == 1 && qtName.at(0).isLetterOrNumber())
        return qtName.toLower();
    if (qtName.size() >= 2 && qtName.at(0) == u'F' && qtName.mid(1).toInt() > 0)
        return qtName; // F1 ... F35
    return {};
}

} // namespace

bool GnomeShortcutBinder::available() { return gio().usable && hasSchema(kListSchema) && hasSchema(kEntrySchema); }

QString GnomeShortcutBinder::accelerator(const QString &portableKeys)
{
    const QKeySequence sequence = QKeySequence::fromString(portableKeys, QKeySequence::PortableText);
    if (sequence.count() != 1)
        return {};
    const QKeyCombination combination = sequence[0];
    const Qt::KeyboardModifiers modifiers = combination.keyboardModifiers();
    QString accel;
    if (modifiers & Qt::ControlModifier)
        accel += QStringLiteral("<Control>");
    if (modifiers & Qt::AltModifier)
        accel += QStringLiteral("<Alt>");
    if (modifiers & Qt::ShiftModifier)
        accel += QStringLiteral("<Shift>");
    if (modifiers & Qt::MetaModifier)
        accel += QStringLiteral("<Super>");
    const QString key = gdkKeyName(QKeySequence(combination.key()).toString(QKeySequence::PortableText));
    return key.isEmpty() ? QString() : accel + key;
}

GnomeShortcutBinder::GnomeShortcutBinder(QString command, QObject *parent)
    : HotKeyBinder(parent), m_command(std::move(command))
{
}

Status GnomeShortcutBinder::bind(const QString &portableKeys)
{
    if (!available())
        return gnomeError(QStringLiteral("GNOME's settings for keyboard shortcuts are not installed"));
    const QString accel = accelerator(portableKeys);
    if (accel.isEmpty())
        return gnomeError(QStringLiteral("%1 cannot be a GNOME keyboard shortcut").arg(portableKeys));
    // The entry is complete before the list names it, so GNOME never sees half of it.
    GSettings *entry = gio().openAt(kEntrySchema, kPath);
    gio().setString(entry, "name", "Quaydrop");
    gio().setString(entry, "command", m_command.toUtf8().constData());
    gio().setString(entry, "binding", accel.toUtf8().constData());
    gio().unref(entry);
    GSettings *list = gio().open(kListSchema);
    const QStringList before = customPaths(list);
    // Ours once, where it stood (a list that already named it twice is mended), else at the end.
    QStringList paths = before;
    const qsizetype at = paths.indexOf(QLatin1String(kPath));
    paths.removeAll(QLatin1String(kPath));
    paths.insert(at < 0 ? paths.size() : at, QLatin1String(kPath));
    if (paths != before)
        setCustomPaths(list, paths);
    gio().unref(list);
    gio().sync();
    return success();
}

void GnomeShortcutBinder::unbind()
{
    if (!available())
        return;
    GSettings *list = gio().open(kListSchema);
    QStringList paths = customPaths(list);
    if (paths.removeAll(QLatin1String(kPath)) > 0)
        setCustomPaths(list, paths);
    gio().unref(list);
    GSettings *entry = gio().openAt(kEntrySchema, kPath);
    for (const char *key : {"name", "command", "binding"})
        gio().reset(entry, key);
    gio().unref(entry);
    gio().sync();
}
