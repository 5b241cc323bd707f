#include "Plist.h"

#include "core/fs/AtomicFile.h"

#include <QDateTime>
#include <QFile>
#include <QTimeZone>
#include <QXmlStreamReader>

#include <cmath>
#include <limits>

namespace {

constexpr int kMaxDepth = 256; // deeper nesting is hostile input, not a settings file

Error plistError(const QString &message, qint64 line = 0)
{
    QString text = message;
    if (line > 0)
        text += QStringLiteral(" (line %1)").arg(line);
    return Error{QString::fromLatin1(Plist::kErrorDomain), 1, text};
}

// ---------- reading ----------

class Reader
{
public:
    explicit Reader(const QByteArray &xml) : m_xml(xml) {}

    Result<QVariant> run()
    {
        if (!nextStartElement())
            return fail(QStringLiteral("no property list found"));
        if (m_xml.name() != u"plist") {
            // A bare value without the plist wrapper is accepted, as Apple's reader does.
            auto value = readValue(0);
            if (!value.ok())
                return value;
            return finish(value.value());
        }
        if (!nextStartElement())
            return fail(QStringLiteral("empty property list"));
        auto value = readValue(0);
        if (!value.ok())
            return value;
        if (nextStartElement())
            return fail(QStringLiteral("more than one value at the top"));
        return finish(value.value());
    }

private:
    Result<QVariant> finish(const QVariant &value)
    {
        while (!m_xml.atEnd())
            m_xml.readNext();
        if (m_xml.hasError() && m_xml.error() != QXmlStreamReader::PrematureEndOfDocumentError)
            return fail(m_xml.errorString());
        if (m_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError)
            return fail(QStringLiteral("the document ends early"));
        return value;
    }

    Error fail(const QString &message)
    {
        const QString text = m_xml.hasError() && message != m_xml.errorString()
                                 ? message + QStringLiteral(": ") + m_xml.errorString()
                                 : message;
        return plistError(text, m_xml.lineNumber());
    }

    // Moves to the next start element at this level; false at an end element or the end of input.
    bool nextStartElement()
    {
        while (!m_xml.atEnd()) {
            const auto token = m_xml.readNext();
            if (token == QXmlStreamReader::StartElement)
                return true;
            if (token == QXmlStreamReader::EndElement)
                return false;
            if (token == QXmlStreamReader::Characters && !m_xml.isWhitespace())
                return false;
        }
        return false;
    }

    Result<QVariant> readValue(int depth)
    {
        if (depth > kMaxDepth)
            return fail(QStringLiteral("nesting too deep"));
        const QStringView name = m_xml.name();
        if (name == u"dict")
            return readDict(depth);
        if (name == u"array")
            return readArray(depth);
        if (name == u"true" || name == u"false") {
            const bool v = name == u"true";
            if (!readText().ok())
                return fail(QStringLiteral("content inside a boolean"));
            return QVariant(v);
        }
        const QString elementName = name.toString();
        auto text = readText();
        if (!text.ok())
            return text.error();
        const QString t = text.value();
        if (elementName == u"string")
            return QVariant(t);
        if (elementName == u"integer")
            return parseInteger(t.trimmed());
        if (elementName == u"real")
            return parseReal(t.trimmed());
        if (elementName == u"date") {
            QDateTime d = QDateTime::fromString(t.trimmed(), Qt::ISODate);
            if (!d.isValid())
                return fail(QStringLiteral("bad date \"%1\"").arg(t));
            return QVariant(d.toUTC());
        }
        if (elementName == u"data") {
            QString compact = t;
            compact.remove(QChar(' ')).remove(QChar('\t')).remove(QChar('\n')).remove(QChar('\r'));
            auto decoded = QByteArray::fromBase64Encoding(compact.toLatin1());
            if (!decoded)
                return fail(QStringLiteral("bad base64 data"));
            return QVariant(*decoded);
        }
        return fail(QStringLiteral("unknown element <%1>").arg(elementName));
    }

    Result<QString> readText()
    {
        QString text;
        while (!m_xml.atEnd()) {
            const auto token = m_xml.readNext();
            if (token == QXmlStreamReader::Characters || token == QXmlStreamReader::EntityReference)
                text += m_xml.text();
            else if (token == QXmlStreamReader::EndElement)
                return text;
            else if (token == QXmlStreamReader::StartElement)
                return fail(QStringLiteral("element inside a scalar"));
        }
        return fail(QStringLiteral("the document ends early"));
    }

    Result<QVariant> readDict(int depth)
    {
        QVariantMap dict;
        while (nextStartElement()) {
            if (m_xml.name() != u"key")
                return fail(QStringLiteral("a dictionary entry without a key"));
            auto key = readText();
            if (!key.ok())
                return key.error();
            if (!nextStartElement())
                return fail(QStringLiteral("key \"%1\" has no value").arg(key.value()));
            auto value = readValue(depth + 1);
            if (!value.ok())
                return value;
            dict.insert(key.value(), value.value());
        }
        if (m_xml.hasError())
            return fail(QStringLiteral("malformed dictionary"));
        return QVariant(dict);
    }

    Result<QVariant> readArray(int depth)
    {
        QVariantList list;
        while (nextStartElement()) {
            auto value = readValue(depth + 1);
            if (!value.ok())
                return value;
            list.append(value.value());
        }
        if (m_xml.hasError())
            return fail(QStringLiteral("malformed array"));
        return QVariant(list);
    }

    Result<QVariant> parseInteger(const QString &t)
    {
        bool ok = false;
        const qlonglong s = t.toLongLong(&ok, 10);
        if (ok)
            return QVariant(s);
        const qulonglong u = t.toULongLong(&ok, 10);
        if (ok)
            return QVariant(u);
        return fail(QStringLiteral("bad integer \"%1\"").arg(t));
    }

    Result<QVariant> parseReal(const QString &t)
    {
        const QString lower = t.toLower();
        if (lower == u"nan")
            return QVariant(std::numeric_limits<double>::quiet_NaN());
        if (lower == u"+infinity" || lower == u"infinity" || lower == u"inf" || lower == u"+inf")
            return QVariant(std::numeric_limits<double>::infinity());
        if (lower == u"-infinity" || lower == u"-inf")
            return QVariant(-std::numeric_limits<double>::infinity());
        bool ok = false;
        const double d = t.toDouble(&ok);
        if (!ok)
            return fail(QStringLiteral("bad real \"%1\"").arg(t));
        return QVariant(d);
    }

    QXmlStreamReader m_xml;
};

// ---------- writing ----------

bool isXmlChar(char32_t c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
           (c >= 0x10000 && c <= 0x10FFFF);
}

class Writer
{
public:
    Status write(const QVariant &v, int indent)
    {
        const auto pad = QByteArray(indent, '\t');
        switch (v.metaType().id()) {
        case QMetaType::QVariantMap:
            return writeDict(v.toMap(), indent);
        case QMetaType::QVariantHash: {
            const auto hash = v.toHash();
            QVariantMap sorted;
            for (auto it = hash.begin(); it != hash.end(); ++it)
                sorted.insert(it.key(), it.value());
            return writeDict(sorted, indent);
        }
        case QMetaType::QVariantList:
        case QMetaType::QStringList:
            return writeArray(v.toList(), indent);
        case QMetaType::Bool:
            m_out += pad + (v.toBool() ? "<true/>\n" : "<false/>\n");
            return success();
        case QMetaType::Int:
        case QMetaType::Long:
        case QMetaType::LongLong:
        case QMetaType::Short:
            m_out += pad + "<integer>" + QByteArray::number(v.toLongLong()) + "</integer>\n";
            return success();
        case QMetaType::UInt:
        case QMetaType::ULong:
        case QMetaType::ULongLong:
        case QMetaType::UShort:
            m_out += pad + "<integer>" + QByteArray::number(v.toULongLong()) + "</integer>\n";
            return success();
        case QMetaType::Double:
        case QMetaType::Float:
            m_out += pad + "<real>" + formatReal(v.toDouble()) + "</real>\n";
            return success();
        case QMetaType::QDateTime: {
            const QDateTime d = v.toDateTime();
            if (!d.isValid())
                return plistError(QStringLiteral("invalid date"));
            m_out += pad + "<date>" + d.toUTC().toString(Qt::ISODate).toLatin1() + "</date>\n";
            return success();
        }
        case QMetaType::QByteArray:
            return writeData(v.toByteArray(), indent);
        case QMetaType::QString:
            return writeString("string", v.toString(), indent);
        default:
            return plistError(QStringLiteral("a %1 has no property list form")
                                  .arg(QString::fromLatin1(v.metaType().name() ? v.metaType().name() : "null")));
        }
    }

    QByteArray take() { return std::move(m_out); }

private:
    static QByteArray formatReal(double d)
    {
        if (std::isnan(d))
            return "nan";
        if (std::isinf(d))
            return d > 0 ? "+infinity" : "-infinity";
        if (d == std::floor(d) && std::fabs(d) < 1e15)
            return QByteArray::number(qint64(d));
        return QByteArray::number(d, 'g', 17);
    }

    Status writeString(const char *tag, const QString &s, int indent)
    {
        QByteArray escaped;
        const QByteArray utf8 = s.toUtf8();
        // Lone surrogates (bytes of a file name that are not UTF-8) and control characters have no XML form.
        for (qsizetype i = 0; i < s.size(); ++i) {
            const char16_t c = s.at(i).unicode();
            const bool pair = QChar::isHighSurrogate(c) && i + 1 < s.size() && QChar::isLowSurrogate(s.at(i + 1).unicode());
            if (pair) {
                ++i;
                continue;
            }
            if (QChar::isSurrogate(c) || !isXmlChar(c))
                return plistError(QStringLiteral("text with a character XML cannot carry (U+%1)")
                                      .arg(uint(c), 4, 16, QChar('0')));
        }
        escaped.reserve(utf8.size());
        for (char c : utf8) {
            switch (c) {
            case '&': escaped += "&amp;"; break;
            case '<': escaped += "&lt;"; break;
            case '>': escaped += "&gt;"; break;
            default: escaped += c;
            }
        }
        m_out += QByteArray(indent, '\t') + '<' + tag + '>' + escaped + "</" + tag + ">\n";
        return success();
    }

    Status writeData(const QByteArray &data, int indent)
    {
        const QByteArray pad(indent, '\t');
        m_out += pad + "<data>\n";
        const QByteArray b64 = data.toBase64();
        for (qsizetype i = 0; i < b64.size(); i += 68)
            m_out += pad + b64.mid(i, 68) + '\n';
        m_out += pad + "</data>\n";
        return success();
    }

    Status writeDict(const QVariantMap &dict, int indent)
    {
        const QByteArray pad(indent, '\t');
        if (dict.isEmpty()) {
            m_out += pad + "<dict/>\n";
            return success();
        }
        m_out += pad + "<dict>\n";
        for (auto it = dict.begin(); it != dict.end(); ++it) {
            if (auto s = writeString("key", it.key(), indent + 1); !s.ok())
                return s;
            if (auto s = write(it.value(), indent + 1); !s.ok())
                return s;
        }
        m_out += pad + "</dict>\n";
        return success();
    }

    Status writeArray(const QVariantList &list, int indent)
    {
        const QByteArray pad(indent, '\t');
        if (list.isEmpty()) {
            m_out += pad + "<array/>\n";
            return success();
        }
        m_out += pad + "<array>\n";
        for (const QVariant &item : list) {
            if (auto s = write(item, indent + 1); !s.ok())
                return s;
        }
        m_out += pad + "</array>\n";
        return success();
    }

    QByteArray m_out;
};

} // namespace

Result<QVariant> Plist::parse(const QByteArray &xml)
{
    if (xml.trimmed().isEmpty())
        return plistError(QStringLiteral("empty file"));
    return Reader(xml).run();
}

Result<QByteArray> Plist::serialize(const QVariant &root)
{
    Writer writer;
    if (auto s = writer.write(root, 0); !s.ok())
        return s.error();
    QByteArray out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                     "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                     "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                     "<plist version=\"1.0\">\n";
    out += writer.take();
    out += "</plist>\n";
    return out;
}

Result<QVariant> Plist::readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Error{QString::fromLatin1(kErrorDomain), 2, file.errorString()};
    return parse(file.readAll());
}

Status Plist::writeFileAtomically(const QString &path, const QVariant &root)
{
    auto xml = serialize(root);
    if (!xml.ok())
        return xml.error();
    // Every byte checked: on a full disk the old file stays, never an empty one in its place.
    return AtomicFile::writeFile(path, xml.value(), AtomicFile::Mode::Replace);
}
