// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The bar above the page of the writing window: the name of the file, whether it has unsaved changes, and the commands.
// What a command does is the window's; the letters of Alt are here.
#pragma once

#include "widgets/CommandBar.h"

class QLabel;

class WriteBar : public CommandBar
{
    Q_OBJECT

  public:
    explicit WriteBar(QWidget *window);

    /// Shows the name of the file.
    void ShowFile(const QString &name);

    void ShowUnsaved(bool isUnsaved);

    /// Shows how many problems there is a remedy for.
    void ShowRemedies(int count);

    BarButton *const cmdSave;
    BarButton *const cmdUndo;
    BarButton *const cmdRedo;
    BarButton *const cmdPen; ///< checkable
    BarButton *const cmdPicture;
    BarButton *const cmdFind;
    BarButton *const cmdMend;

    // Only in the menu of the bar; the window gives them their keys.
    QAction *const actBlank;
    QAction *const actPasteTable;
    QAction *const actJoin;
    QAction *const actLine;
    QAction *const actProblem;
    QAction *const actLarger;
    QAction *const actSmaller;
    QAction *const actUsualSize;
    QAction *const actHelp;

  private:
    QLabel *lblUnsaved;
};
