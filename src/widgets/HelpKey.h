// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Opens the page of the help that is about what has the focus, when F1 is pressed. One object serves all windows; where
// F1 is a shortcut, as in the study window, that comes first.
#pragma once

#include "platform/modSystemServices.h"

#include <QObject>

class HelpKey : public QObject
{
    Q_OBJECT

  public:
    /// Watches the application until it is destroyed. @param applicationFolder  has the pages in "htm"
    HelpKey(SystemServices &services, const QString &applicationFolder);

  protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

  private:
    SystemServices &m_services;
    QString m_applicationFolder;
};
