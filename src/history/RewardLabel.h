// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What the user has achieved, on one line with the number of days in a row large.
#pragma once

#include "history/modReward.h"

#include <QLabel>

class RewardLabel : public QLabel
{
    Q_OBJECT

  public:
    explicit RewardLabel(QWidget *parent);

    void Show(const Reward &reward);

    /// Shows the number as small as the rest, and only the first parts, beside tabs.
    void SetNarrow(bool isNarrow, int partCount);

  protected:
    void changeEvent(QEvent *event) override;

  private:
    void ShowText();

    Reward m_reward;
    bool m_isNarrow = false;
    int m_partCount = AllRewardParts; // how many of them are shown
};
