#pragma once

#include "platform/Platform.h"

#include <QTimer>

#include <optional>

#include <xcb/xcb.h>

class X11Connection;
class X11PointerMonitor;

// The system-wide drag on X11: each new owner of the XdndSelection selection is a new drag (XFixes
// tells at once), unless the owner is one of the program's own windows. What it offers is learnt
// afterwards, by events, never by waiting: from the XdndTypeList of the source's window (written
// when the drag starts, sometimes just after the new owner, and left over from the last drag until
// then), and by converting the selection to the types the drop window knows.
class X11DragPasteboard : public DragPasteboard, public PromisedFileReceiver
{
    Q_OBJECT
public:
    X11DragPasteboard(X11Connection *x, const X11PointerMonitor *pointer, QObject *parent = nullptr);
    ~X11DragPasteboard() override;
    qint64 changeCount() const override { return m_count; }
    void learnContent() override;
    QStringList types() const override { return m_types; }
    QStringList filePaths() const override;
    // X Direct Save: the file URI goes into the source window's XdndDirectSave0 property, then a
    // request for that target tells the source to write; "S" is its success, "F" leaves the writing
    // to the target, from application/octet-stream.
    Result<PromisedFiles> namesOfPromisedFilesDroppedAtDestination(const QString &folder, quintptr dropTargetWindow) override;
    void handle(xcb_generic_event_t *event);
    void noteMotionTime(quint32 time) { m_lastMotionTime = time; }

private:
    enum class Phase { Idle, Learning, Learnt };
    void newOwner(quint32 owner, quint32 timestamp);
    QList<quint32> sourceWindows() const; // the owner, then the windows the button went down in
    std::optional<QStringList> typeListOf(quint32 window) const;
    std::optional<QStringList> typeList() const; // of the first source window that has one
    QList<quint32> candidateTimes() const;
    void askNext();
    void answered(bool refused, const QByteArray &data);
    void freshTypeList(const QStringList &types);
    void finishLearning();
    void stopWatching();

    X11Connection *m_x;
    const X11PointerMonitor *m_pointer;
    qint64 m_count = 0;
    quint32 m_lastMotionTime = 0;
    quint32 m_owner = 0;
    quint32 m_ownedSince = 0; // server time of the drag's start
    QList<quint32> m_sources;  // the source's windows of this drag, as found at its start

    // Learning, one drag at a time.
    Phase m_phase = Phase::Idle;
    quint32 m_requestor = 0; // a window of ours that receives the answers
    QTimer m_budget;
    QList<quint32> m_watched;
    std::optional<QStringList> m_listAtStart; // possibly the last drag's
    bool m_freshList = false;
    QStringList m_answeredTypes; // by conversion
    int m_typeIndex = 0, m_timeIndex = 0;
    bool m_asking = false;
    quint32 m_askedTarget = 0, m_askedTime = 0;
    QStringList m_types;
    std::optional<QByteArray> m_uriList;
};
