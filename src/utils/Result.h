#pragma once

#include <QString>
#include <QVariantMap>

#include <utility>
#include <variant>

// Errors travel as values across module boundaries; nothing here throws.
struct Error
{
    QString domain;
    int code = 0;
    QString message;
    QVariantMap info = {}; // extra entries, such as the name of the file that failed
};

template <typename T>
class Result
{
public:
    Result(T value) : m_state(std::move(value)) {}
    Result(Error error) : m_state(std::move(error)) {}

    bool ok() const { return std::holds_alternative<T>(m_state); }
    explicit operator bool() const { return ok(); }
    const T &value() const { return std::get<T>(m_state); }
    T &value() { return std::get<T>(m_state); }
    T valueOr(T fallback) const { return ok() ? value() : std::move(fallback); }
    const Error &error() const { return std::get<Error>(m_state); }

private:
    std::variant<T, Error> m_state;
};

struct Done
{
};
using Status = Result<Done>;
inline Status success() { return Done{}; }
