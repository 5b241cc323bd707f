#pragma once

#include <QLibrary>
#include <QString>

// A shared library opened when a feature first needs it rather than linked: the resident program
// then maps the printing system (libcups and its TLS and Kerberos stack) or GSettings only on the
// machines and at the moment they are used. It stays loaded once opened.
class OnDemandLibrary
{
public:
    OnDemandLibrary(const char *name, int version) : m_library(QString::fromLatin1(name), version) {}

    // Points `function` at `symbol`, whose type it must have (declare it with decltype of the
    // library's own declaration). False, with errorString() saying why, when it is not there.
    template <typename Function>
    bool resolve(Function &function, const char *symbol)
    {
        function = reinterpret_cast<Function>(m_library.resolve(symbol));
        if (!function && m_error.isEmpty())
            m_error = m_library.isLoaded() ? QStringLiteral("%1 lacks %2").arg(m_library.fileName(), QLatin1String(symbol))
                                           : m_library.errorString();
        return function != nullptr;
    }
    QString errorString() const { return m_error; }

private:
    QLibrary m_library;
    QString m_error;
};
