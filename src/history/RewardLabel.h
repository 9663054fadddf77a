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

    /// Leaves out what has no room beside tabs: the ended session and the size of the number.
    void SetNarrow(bool isNarrow);

  protected:
    void changeEvent(QEvent *event) override;

  private:
    void ShowText();

    Reward m_reward;
    bool m_isNarrow = false;
};
