#pragma once

// The overlay controllers whose content belongs to the image, file and sending actions. Each holds
// the fields the window reads or fills, and one completion handler.

#include "FileOverlays.h"
#include "OverlayController.h"
#include "platform/Platform.h"

#include <QSize>

#include <functional>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSlider;
class QLabel;

// The share targets as a list of buttons, each tagged with its place in `targets()`.
class ImgShareOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64)>;
    explicit ImgShareOverlayVC(QWidget *parent = nullptr);
    void setShareCompletion(Completion c) { m_completion = std::move(c); }
    void setTargets(const QList<ShareTarget> &targets);
    const QList<ShareTarget> &targets() const { return m_targets; }

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
    QList<ShareTarget> m_targets;
    QList<QPushButton *> m_targetButtons;
};

