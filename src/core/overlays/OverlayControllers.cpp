#include "OverlayControllers.h"

#include "core/texts/Texts.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

#include <cmath>

ImgShareOverlayVC::ImgShareOverlayVC(QWidget *parent) : OverlayController("Share", parent)
{
    setObjectName(QStringLiteral("imgShareVC"));
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
}

void ImgShareOverlayVC::setTargets(const QList<ShareTarget> &targets)
{
    qDeleteAll(m_targetButtons);
    m_targetButtons.clear();
    m_targets = targets;
    for (qsizetype i = 0; i < targets.size(); ++i) {
        auto *b = new QPushButton(QIcon::fromTheme(targets.at(i).iconName), targets.at(i).title, this);
        b->setObjectName(targets.at(i).id);
        connect(b, &QPushButton::clicked, this, [this, i] { fire(i); });
        body()->insertWidget(int(i), b);
        m_targetButtons.append(b);
    }
}

void ImgShareOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag);
}

