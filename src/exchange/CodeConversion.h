// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Converts a study file to Shift_JIS interactively: asks all questions first, writes only when each is answered, and
// reports what was done. Closing a question without an answer cancels the conversion before anything is written.
#pragma once

#include "exchange/modConvertText.h"
#include "platform/modSystemServices.h"
#include "settings/modEditor.h"
#include "text/modCharCode.h"

#include <QByteArray>
#include <QString>

class frmMsg;
class QWidget;

class CodeConversion
{
  public:
    /// @param owner  parent window of the questions
    CodeConversion(SystemServices &services, frmMsg &msg, QWidget *owner, const Editor &editor, const QString &path);

    /// @return whether the file was converted
    bool Run();

  private:
    bool Read();
    bool SettleEuc();
    bool ReplaceCharacters();
    bool SettleBrackets();
    bool SettleLongLines();
    bool Write();

    bool Ask(const QString &question, bool *isYes);
    bool Refuse(const QString &message);
    void OfferEditor(const QString &question, int line);

    SystemServices &m_services;
    frmMsg &m_msg;
    QWidget *m_owner;
    Editor m_editor;
    QString m_path;
    QString m_title;

    QByteArray m_before;
    CharCode m_code = CharCode::None;
    ConvertedText m_converted;
    int m_unbreakableLine = 0; // 1-based line that stays too long
};
