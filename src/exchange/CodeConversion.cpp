// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/CodeConversion.h"

#include "base/modFile.h"
#include "exchange/modStudyFromText.h"
#include "text/modReadText.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"

using namespace Qt::Literals::StringLiterals;

bool AskQuestions(frmMsg &msg, QWidget *owner, StudyFromText *made)
{
    while (frmWait(u"学習ファイルを作っています。"_s, owner).Run(*made)) {
        const QString question = made->Question();
        if (question.isEmpty())
            return true;
        const MsgResult answer = msg.Ask(owner, question);
        if (answer == MsgResult::None)
            return false;
        made->Answer(answer == MsgResult::Ok);
    }
    return false;
}

bool OfferWriting(frmMsg &msg, QWidget *owner, const QString &report)
{
    return msg.DispFrmMsg(owner, report + u"\r\n\r\n「書く」で開きますか？"_s, MsgStyle::YesNo, u"start.wav"_s) ==
           MsgResult::Ok;
}

bool ConvertToShiftJis(SystemServices &services, frmMsg &msg, QWidget *owner, const Editor &editor, const QString &path)
{
    QByteArray before;
    if (const FileFault fault = ReadWholeFile(path, &before))
        return msg.Refuse(owner, UnreadableFileMessage(GetFileTitle(path), fault.reason));
    StudyFromText made(before);
    if (!CanConvertFrom(made.CodeName())) // changed since it was listed
        return msg.Refuse(owner, NotConvertibleMessage(GetFileTitle(path), made.CodeName()));
    if (!AskQuestions(msg, owner, &made))
        return false;
    QByteArray bytes;
    if (const TextRefusal refusal = made.Encode(&bytes)) {
        if (msg.Ask(owner, refusal.message + u"\r\n\r\nこのファイルをテキストエディタで開きますか？"_s) ==
            MsgResult::Ok)
            OpenInEditor(services, editor, path, refusal.line);
        return false;
    }
    QString keptPath;
    if (const FileFault fault = ReplaceConverted(path, before, bytes, &keptPath))
        return msg.Refuse(owner, FaultMessage(u"変換したファイルを書き込めません。ファイルは元のままです。"_s, fault));
    const QString heading = made.CodeName() + u"からShift_JISに変換しました。"_s;
    return OfferWriting(msg, owner, made.Report(heading, path, keptPath));
}
