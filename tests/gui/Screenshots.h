#pragma once

// What the programs that render the README's pictures share: the folder and language from the command
// line ([OUT-FOLDER [LANGUAGE]]), time for the event loop to settle, a window or an area of the screen
// saved as PNG, and a dark theme.

#include "core/texts/Texts.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPalette>
#include <QScreen>
#include <QStyleFactory>
#include <QWidget>

namespace Screenshots {

inline void settle(int ms = 150)
{
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

struct Shots
{
    QString out, language, suffix; // "-de" for pictures in a language other than English

    Shots(int argc, char **argv)
        : out(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("docs/screenshots")),
          language(argc > 2 ? QString::fromLatin1(argv[2]) : QStringLiteral("en")),
          suffix(language == u"en" ? QString() : QLatin1Char('-') + language)
    {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        Texts::setLanguage(language);
        QDir().mkpath(out);
    }
    QString file(const QString &name) const { return out + QLatin1Char('/') + name + suffix + QStringLiteral(".png"); }
    void save(QWidget *w, const QString &name, int wait = 150) const
    {
        settle(wait);
        w->grab().save(file(name));
    }
    // What the screen shows over a window and the popups beside it.
    void saveScreenArea(const QRect &area, const QString &name) const
    {
        settle(300);
        QGuiApplication::primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).save(file(name));
    }
};

inline QPalette darkPalette()
{
    QPalette p;
    p.setColor(QPalette::Window, QColor(45, 45, 48));
    p.setColor(QPalette::WindowText, QColor(230, 230, 230));
    p.setColor(QPalette::Base, QColor(30, 30, 32));
    p.setColor(QPalette::Text, QColor(230, 230, 230));
    p.setColor(QPalette::Button, QColor(60, 60, 64));
    p.setColor(QPalette::ButtonText, QColor(230, 230, 230));
    p.setColor(QPalette::Highlight, QColor(90, 150, 240));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::PlaceholderText, QColor(160, 160, 160));
    p.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(120, 120, 120));
    p.setColor(QPalette::Disabled, QPalette::WindowText, QColor(120, 120, 120));
    return p;
}

} // namespace Screenshots
