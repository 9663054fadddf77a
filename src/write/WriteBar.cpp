// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/WriteBar.h"

#include "base/modFile.h"
#include "widgets/BarButton.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NamedControls.h"

#include <QAction>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

WriteBar::WriteBar(QWidget *window)
    : CommandBar(u"lblFile"_s, window), cmdSave(NewCommand<BarButton>(u"cmdSave"_s, Icon::Save, u"保存"_s, u"Alt+S"_s,
                                                                      u"学習ファイルを保存します (Ctrl+S)"_s)),
      cmdUndo(NewCommand<BarButton>(u"cmdUndo"_s, Icon::Undo, u"元に戻す"_s, u"Alt+Z"_s,
                                    u"直前の変更を取り消します (Ctrl+Z)"_s)),
      cmdRedo(NewCommand<BarButton>(u"cmdRedo"_s, Icon::Redo, u"やり直す"_s, u"Alt+Y"_s,
                                    u"取り消した変更をもう一度行います (Ctrl+Y)"_s)),
      cmdPen(NewCommand<BarButton>(
          u"cmdPen"_s, Icon::Write, u"ペン"_s, u"Alt+P"_s,
          u"押している間は，なぞった言葉やダブルクリックした言葉がすぐに空欄になります (Alt+P)"_s)),
      cmdPicture(NewCommand<BarButton>(u"cmdPicture"_s, Icon::Picture, u"図を入れる…"_s, u"Alt+I"_s,
                                       u"図のファイルをコピーして，その名前を ｢ ｣ で入れます (Alt+I)"_s)),
      cmdFind(NewCommand<BarButton>(u"cmdFind"_s, Icon::Search, u"検索"_s, u"Alt+F"_s,
                                    u"この文章の中の言葉を探します (Ctrl+F)"_s)),
      cmdMend(NewCommand<BarButton>(u"cmdMend"_s, Icon::Check, u"直す"_s, u"Alt+C"_s,
                                    u"気になる所のうち，直せる所をまとめて直します (Alt+C)"_s)),
      actBlank(NewEntry(u"actBlank"_s, u"空欄にする・外す"_s)),
      actPasteTable(NewEntry(u"actPasteTable"_s, u"表として貼り付け"_s)),
      actJoin(NewEntry(u"actJoin"_s, u"行をつなぐ"_s)), actLine(NewEntry(u"actLine"_s, u"行へ移る…"_s)),
      actProblem(NewEntry(u"actProblem"_s, u"次の気になる所"_s)), actLarger(NewEntry(u"actLarger"_s, u"大きく"_s)),
      actSmaller(NewEntry(u"actSmaller"_s, u"小さく"_s)), actUsualSize(NewEntry(u"actUsualSize"_s, u"100 %"_s)),
      actHelp(NewEntry(u"actHelp"_s, u"使い方"_s)), lblUnsaved(AddRemark(u"lblUnsaved"_s, u"未保存"_s))
{
    cmdPen->setCheckable(true);
    cmdMend->SetCount(0);
    StartGroup();
    Add(cmdSave);
    StartGroup();
    Add(cmdUndo);
    Add(cmdRedo);
    StartGroup();
    Add(cmdPen);
    StartGroup();
    Add(cmdPicture);
    Add(cmdFind);
    StartGroup();
    Add(cmdMend);
    SetLeavingOrder({cmdFind, cmdPicture, cmdRedo, cmdUndo, cmdMend});
    for (QAction *const entry : {actBlank, static_cast<QAction *>(nullptr), actPasteTable, actJoin,
                                 static_cast<QAction *>(nullptr), actLine, actProblem, static_cast<QAction *>(nullptr),
                                 actLarger, actSmaller, actUsualSize, static_cast<QAction *>(nullptr), actHelp})
        AddToMenu(entry);
}

void WriteBar::ShowFile(const QString &name)
{
    Title()->setText(NameInLine(QFileInfo(name).completeBaseName()));
    SetPlainToolTip(Title(), NameInLine(name));
}

void WriteBar::ShowUnsaved(bool isUnsaved)
{
    lblUnsaved->setVisible(isUnsaved);
}

void WriteBar::ShowRemedies(int count)
{
    cmdMend->SetCount(count);
    cmdMend->setEnabled(count > 0);
}
