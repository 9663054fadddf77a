// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/RewardLabel.h"

#include "widgets/Contrast.h"
#include "widgets/PageColours.h"

#include <QEvent>

using namespace Qt::Literals::StringLiterals;

RewardLabel::RewardLabel(QWidget *parent) : QLabel(parent)
{
    setObjectName(u"lblReward"_s);
    setTextFormat(Qt::RichText); // none of it comes from a file
}

void RewardLabel::Show(const Reward &reward)
{
    m_reward = reward;
    ShowText();
}

void RewardLabel::SetNarrow(bool isNarrow, int partCount)
{
    m_isNarrow = isNarrow;
    m_partCount = isNarrow ? partCount : AllRewardParts;
    ShowText();
}

void RewardLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ShowText();
}

void RewardLabel::ShowText()
{
    constexpr double streakSize = 1.75;
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const auto coloured = [](const QString &each, const QColor &colour) -> QString {
        return u"<span style=\"color:"_s + colour.name() + u"\">"_s + each + u"</span>"_s;
    };
    const QColor accent = WithContrast(ColoursOn(palette()).accent, base, text, TextContrast);
    const int numberPx = qRound((m_isNarrow ? 1 : streakSize) * fontInfo().pixelSize());
    QStringList parts;
    for (const RewardPart &part : PartsOf(m_reward, m_partCount)) {
        const QString large =
            u"<span style=\"font-size:"_s + QString::number(numberPx) + u"px\">"_s + part.number + u"</span>"_s;
        if (part.isStreak)
            parts += coloured(u"<b>"_s + large + part.caption + u"</b>"_s, accent);
        else
            parts += coloured(part.caption, Dimmed(text, base)) + u" <b>"_s + part.number + u"</b>"_s;
    }
    QFont number = font();
    number.setBold(true);
    number.setPixelSize(numberPx);
    setMinimumHeight(QFontMetrics(number).height()); // so that a number that appears moves nothing
    setText(parts.join(u"&nbsp;&nbsp;&nbsp;&nbsp; "_s));
    setAccessibleName(RewardText(m_reward));
}
