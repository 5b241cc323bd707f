#pragma once

#include <QColor>
#include <QString>

// How the panel under the tray icon looks and comes and goes.
struct StatusItemWindowConfiguration
{
    enum Transition { None = 0, Fade = 1, SlideAndFade = 2 };

    double windowToStatusItemMargin = 2.0;
    double animationDuration = 0.21; // seconds
    QString toolTip;
    QColor backgroundColor; // invalid: the theme's window colour
    bool pinned = false;    // stays open when another window takes the focus

    int presentationTransition() const { return m_transition; }
    // None comes and goes at once; the others take 0.21 seconds.
    void setPresentationTransition(int transition)
    {
        if (transition == m_transition)
            return;
        m_transition = transition;
        animationDuration = transition == None ? 0.0 : 0.21;
    }

private:
    int m_transition = Fade;
};
