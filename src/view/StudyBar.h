// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The bar above the page: the name of the open file and the commands of the study window. What a command does is the
// window's; their keys are here.
#pragma once

#include "widgets/CommandBar.h"
#include "widgets/PaintedIcon.h"

class BarCheckBox;
class QAction;
struct PageColours;

class StudyBar : public CommandBar
{
    Q_OBJECT

  public:
    explicit StudyBar(QWidget *window);

    /// Shows the name of the open file; none if it is empty.
    void ShowFile(const QString &name);

    /// Enables what works with an open file only, apart from the commands about hard blanks.
    void EnableFileControls(bool isEnabled);

    /// Shows the number of blanks marked as hard, whether only these are studied, and whether there is one to mark.
    void ShowHard(int count, bool isOnlyHard, bool canMark);

    /// Sets the colours of the commands about hard blanks; null leaves them to the palette.
    void SetHardColours(const PageColours *colours);

    BarButton *const cmdFile;
    BarButton *const cmdReRead;
    BarButton *const cmdEdit;
    BarButton *const cmdSearch;
    BarCheckBox *const chkOnlyHard;
    BarButton *const cmdHard;
    BarCheckBox *const chkSpeak;
    BarButton *const cmdIni;
    BarButton *const cmdDispHowToUse;

    // Only in the menu of the bar; the window gives them their keys.
    QAction *const actPageOnly;
    QAction *const actWrite;
    QAction *const actPrint;
    QAction *const actExport;
    QAction *const actLarger;
    QAction *const actSmaller;
    QAction *const actUsualSize;

  private:
    void AddCommands();
    void AddSpeechMenu();

    BarButton *cmdSpeak; // opens the menu of what is read aloud
};
